#include "panes/DragRule.h"
#include "panes/GuardedFrame.h"
#include "panes/QMyLabel.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"
#include "support/PaintCounter.h"
#include "support/Pixels.h"

#include <QTreeWidgetItem>

#include <climits>

namespace {

const QColor IDLE(249, 249, 249);

/// A frame of one colour; it stays valid to the end of the program.
ulong FrameOf(const QSize& size, const QColor& color)
{
    static QList<QImage> s_frames;
    s_frames.append(QImage(size, QImage::Format_RGB888));
    s_frames.last().fill(color);
    return reinterpret_cast<ulong>(s_frames.last().constBits());
}

/// The rectangle of the pixels in which a picture is not of its idle colour.
QRect Drawn(const QImage& image)
{
    QRect drawn;
    CountPixels(image, [&](int x, int y) {
        if (image.pixelColor(x, y) != IDLE)
            drawn |= QRect(x, y, 1, 1);
        return true;
    });
    return drawn;
}

} // namespace

class tst_label : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void showsTheFirstOfFrameTextBackground();
    void writesText();
    void repaintsWhenItMust();
    void survivesFrames();
    void loadsTheBackgroundOnce();
    void judgesRows();

private:
    QImage Shown() { return m_pLabel->grab().toImage(); }

    QMyLabel* m_pLabel = nullptr;
};

void tst_label::init()
{
    DeckTestCase::init();
    m_pLabel = new QMyLabel(nullptr);
    m_pLabel->setPalette(QPalette(IDLE));
    m_pLabel->resize(160, 120);
}

void tst_label::cleanup()
{
    delete m_pLabel;
    delete QMyLabel::s_pBackground;
    QMyLabel::s_pBackground = nullptr;
    QMyLabel::s_bBackgroundLoaded = false;
    DeckTestCase::cleanup();
}

void tst_label::showsTheFirstOfFrameTextBackground()
{
    QCOMPARE(Drawn(Shown()), QRect());
    QMyLabel::s_pBackground = new QImage(4, 4, QImage::Format_ARGB32);
    QMyLabel::s_pBackground->fill(Qt::blue);
    QCOMPARE(Shown().pixelColor(159, 119), QColor(Qt::blue));
    m_pLabel->SetText("No video");
    QVERIFY(CountColor(Shown(), Qt::red) > 0);
    QCOMPARE(CountColor(Shown(), Qt::blue), 0);
    // Whoever holds the handle knows no class, only names.
    QVERIFY(QMetaObject::invokeMethod(m_pLabel, "slot_BufferChange",
                                      Q_ARG(ulong, FrameOf(QSize(8, 8), Qt::green)),
                                            Q_ARG(int, 8), Q_ARG(int, 8)));
    QCOMPARE(CountColor(Shown(), Qt::green), 160 * 120);
    m_pLabel->slot_BufferChange(0, 8, 8);
    QVERIFY(CountColor(Shown(), Qt::red) > 0);
    m_pLabel->SetText(QString());
    QCOMPARE(Shown().pixelColor(0, 0), QColor(Qt::blue));
}

void tst_label::writesText()
{
    const std::tuple<QSize, const char*, int> rows[] = {{{300, 120}, "Connecting", 1},
                                                        {{60, 160}, "No signal here", 3},
                                                        {{300, 8}, "Connecting", 1},
                                                        {{300, 7}, "Connecting", 0}};
    for (const auto& [size, text, lines] : rows) {
        m_pLabel->resize(size);
        m_pLabel->SetText(text);
        m_pLabel->SetKind(0);
        const QRect drawn = Drawn(Shown());
        m_pLabel->SetKind(1);
        QCOMPARE(Drawn(Shown()).isNull(), lines == 0);
        QCOMPARE(drawn.isNull(), lines == 0);
        QCOMPARE(CountColor(Shown(), Qt::red), 0);
        const QPoint off = drawn.center() - QRect(QPoint(), size).center();
        const int lineHeight = size.height() / 8;
        QVERIFY2(lines == 0 || (qAbs(off.x()) <= 3 && qAbs(off.y()) <= lineHeight), "not in the middle");
        QVERIFY(drawn.height() >= (lines - 1) * lineHeight && drawn.height() < (lines + 1) * lineHeight + 1);
    }
}

void tst_label::repaintsWhenItMust()
{
    PaintCounter counter;
    m_pLabel->installEventFilter(&counter);
    m_pLabel->show();
    const auto paintsOf = [&](auto step) {
        QApplication::processEvents();
        counter.paints = 0;
        step();
        QApplication::processEvents();
        return counter.paints;
    };
    const ulong address = FrameOf(QSize(8, 8), Qt::green);
    QCOMPARE(paintsOf([&] { m_pLabel->SetText("A"); }), 1);
    QCOMPARE(paintsOf([&] { m_pLabel->SetText("A"); }), 0);
    QCOMPARE(paintsOf([&] { m_pLabel->slot_BufferChange(address, 8, 8); }), 1);
    QCOMPARE(paintsOf([&] { m_pLabel->slot_BufferChange(address, 8, 8); }), 1);
    QCOMPARE(paintsOf([&] { m_pLabel->slot_BufferChange(0, 0, 0); }), 1);
    QCOMPARE(paintsOf([&] { m_pLabel->slot_BufferChange(0, 0, 0); }), 1);
    m_pLabel->setUpdatesEnabled(false);
    QCOMPARE(paintsOf([&] { m_pLabel->slot_BufferChange(address, 8, 8); }), 0);
}

/// A size that no frame can have clears what was there, and nothing is read.
void tst_label::survivesFrames()
{
    QRandomGenerator random(1);
    const GuardedFrame frame(QSize(8, 8), random);
    for (const QSize& size : {QSize(0, 0), QSize(8, 0), QSize(-8, 8), QSize(-8, -8), QSize(INT_MIN, INT_MIN),
                              QSize(INT_MAX, 1), QSize(INT_MAX / 24, INT_MAX / 24)}) {
        m_pLabel->slot_BufferChange(frame.Address(), 8, 8);
        m_pLabel->slot_BufferChange(frame.Address(), size.width(), size.height());
        QCOMPARE(Drawn(Shown()), QRect());
        QVERIFY(!m_pLabel->testAttribute(Qt::WA_OpaquePaintEvent));
    }
}

void tst_label::loadsTheBackgroundOnce()
{
    const Installation installation;
    installation.Write("Resources/broken.png", "no picture");
    installation.WritePicture("Resources/picture.png", 3, 2, Qt::blue);
    for (const char* file : {"missing.png", "broken.png"}) {
        QMyLabel::SetBackground(installation.Root() + "/Resources/" + file);
        QVERIFY(QMyLabel::s_bBackgroundLoaded);
        QCOMPARE(Drawn(Shown()), QRect());
    }
    for (const char* file : {"picture.png", "missing.png"}) {
        QMyLabel::SetBackground(installation.Root() + "/Resources/" + file);
        QCOMPARE(Shown().pixelColor(80, 60), QColor(Qt::blue));
    }
}

void tst_label::judgesRows()
{
    // The drag's text, the label's kind, and the row's record type, subtype and tour type, -1 for none:
    // devices, what is no device, and tours, which belong on tour panes alone.
    const std::tuple<const char*, int, int, int, int, bool> rows[] = {
        {"0", 0, 2, -1, -1, true},  {"0", 1, 2, -1, -1, true},  {"0", 0, 1, 3, -1, true},
        {"0", 1, 1, 0, 2, false},   {"0", 0, -1, 3, -1, false}, {"2", 1, -1, -1, 2, true},
        {"2", 0, -1, -1, 2, false}, {"2", 2, 2, 3, 2, false},   {"2", 1, 2, 3, 1, false},
        {"1", 1, 2, 3, 2, false},   {"", 1, 2, 3, 2, false},    {"00", 1, 2, 3, 2, false}};
    for (const auto& [text, kind, type, subtype, tourType, taken] : rows) {
        QTreeWidgetItem item;
        if (type >= 0)
            item.setData(0, 33, reinterpret_cast<qlonglong>(&type));
        if (subtype >= 0)
            item.setData(0, 34, subtype);
        if (tourType >= 0)
            item.setData(0, 35, tourType);
        QCOMPARE(AcceptsRow(item, text, kind), taken);
    }
}

QTEST_MAIN(tst_label)

#include "tst_label.moc"
