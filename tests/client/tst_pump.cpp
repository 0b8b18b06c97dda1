#include "decode/FramePool.h"
#include "panes/FramePump.h"
#include "panes/QMyLabel.h"
#include "source/SourceThread.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "synthetic/SyntheticCamera.h"

#include <cstring>

namespace {

/// Takes frames as a pane's label does, opaque while it has one, and reads all their pixels at each paint.
class TestLabel : public QWidget
{
    Q_OBJECT

public:
    QStringList log;
    int paints = 0;
    int sum = 0;
    quintptr address = 0;

public Q_SLOTS:
    void slot_BufferChange(ulong buffer, int width, int height)
    {
        address = buffer;
        m_size = {width, height};
        setAttribute(Qt::WA_OpaquePaintEvent, buffer != 0);
        log.append(QString("buffer %1x%2").arg(width).arg(height));
        update();
    }

Q_SIGNALS:
    void sig_VideoResize(int width, int height);

protected:
    void paintEvent(QPaintEvent*) override
    {
        ++paints;
        const auto* pixels = reinterpret_cast<const uchar*>(address);
        for (int i = 0; pixels && i < Frame::rowBytes(m_size.width()) * m_size.height(); ++i)
            sum += pixels[i];
    }

private:
    QSize m_size;
};

std::shared_ptr<Frame> plainFrame(QSize size, int grey)
{
    FramePool pool;
    const std::shared_ptr<Frame> frame = pool.take(size.width(), size.height());
    std::memset(frame->row(0), grey, size_t(frame->rowBytes()) * size_t(size.height()));
    return frame;
}

} // namespace

class tst_pump : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void keepsTheFrame();
    void paintsWhileUpdatesAreOff();
    void feedsTheDecksLabel();
    void outlivesItsLabel();
    void goesInTheLabelsSignal();
};

void tst_pump::cleanup()
{
    QVERIFY(waitForSourceThreads(1000));
    DeckTestCase::cleanup();
}

void tst_pump::keepsTheFrame()
{
    TestLabel label;
    connect(&label, &TestLabel::sig_VideoResize, this,
            [&](int width, int height) { label.log.append(QString("resize %1x%2").arg(width).arg(height)); });
    FramePump pump(&label);
    std::shared_ptr<Frame> first = plainFrame({64, 48}, 10);
    const std::weak_ptr<Frame> held = first;
    pump.show(std::move(first));
    QVERIFY(!held.expired());
    QCOMPARE(label.address, quintptr(held.lock()->pixels()));
    pump.show(plainFrame({64, 48}, 20));
    QVERIFY(held.expired());
    pump.show(plainFrame({33, 48}, 30));
    pump.clear();
    QCOMPARE(label.address, quintptr(0));
    pump.show(plainFrame({33, 48}, 30));
    pump.show(nullptr);
    QCOMPARE(label.log,
             QStringList({"resize 64x48", "buffer 64x48", "buffer 64x48", "resize 33x48", "buffer 33x48",
                          "buffer 0x0", "resize 33x48", "buffer 33x48", "buffer 0x0"}));
}

void tst_pump::paintsWhileUpdatesAreOff()
{
    QWidget window;
    TestLabel label;
    label.setParent(&window);
    label.resize(100, 100);
    window.resize(100, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_VERIFY(label.paints > 0);
    label.setUpdatesEnabled(false);

    SyntheticCamera source(SourceAddress::synthetic(1));
    {
        FramePump pump(&label);
        pump.setSource(&source);
        source.start();
        QTRY_VERIFY(pump.frame() != nullptr);
        const int paints = label.paints;
        QTRY_VERIFY(label.paints > paints + 3);
        QVERIFY(!label.updatesEnabled());
        QCOMPARE(label.address, quintptr(pump.frame()->pixels()));

        pump.setSource(nullptr);
        QCoreApplication::processEvents();
        const int still = label.paints;
        label.update();
        QCoreApplication::processEvents();
        QCOMPARE(label.paints, still);
        pump.show(plainFrame({8, 8}, 1));
        QTRY_COMPARE(label.paints, still + 1);
        QVERIFY(label.sum != 0);
    }
    QCOMPARE(label.address, quintptr(0));
    label.setUpdatesEnabled(true);
    FramePump pump(&label);
    pump.show(plainFrame({8, 8}, 1));
    QVERIFY(label.updatesEnabled());
}

void tst_pump::feedsTheDecksLabel()
{
    QWidget parent;
    QMyLabel label(&parent);
    label.resize(20, 20);
    QSignalSpy resized(&label, SIGNAL(sig_VideoResize(int,int)));
    FramePump pump(&label);
    label.setUpdatesEnabled(false);
    pump.show(plainFrame({32, 24}, 77));
    QCOMPARE(resized.takeFirst(), QVariantList({32, 24}));
    QVERIFY(!label.updatesEnabled());
    QCOMPARE(label.grab().toImage().pixelColor(10, 10), QColor(77, 77, 77));
    pump.clear();
    QVERIFY(label.grab().toImage().pixelColor(10, 10) != QColor(77, 77, 77));
}

void tst_pump::outlivesItsLabel()
{
    SyntheticCamera source(SourceAddress::synthetic(1));
    auto label = std::make_unique<TestLabel>();
    FramePump pump(label.get());
    pump.setSource(&source);
    source.start();
    QTRY_VERIFY(label->address != 0);
    label.reset();
    const FramePtr last = pump.frame();
    QTRY_VERIFY(pump.frame() != last);
    pump.clear();

    FramePump nobody(nullptr);
    nobody.show(plainFrame({8, 8}, 1));
}

void tst_pump::goesInTheLabelsSignal()
{
    auto* label = new TestLabel;
    auto* pump = new FramePump(label);
    connect(label, &TestLabel::sig_VideoResize, this, [=] { delete pump; });
    pump->show(plainFrame({8, 8}, 1));
    QCOMPARE(label->address, quintptr(0));
    auto* second = new FramePump(label);
    label->disconnect(this);
    connect(label, &TestLabel::sig_VideoResize, this, [=] { delete label; });
    second->show(plainFrame({8, 8}, 1));
    delete second;
}

int main(int argc, char** argv)
{
    return RunTests<tst_pump>(argc, argv);
}

#include "tst_pump.moc"
