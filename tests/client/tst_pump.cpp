#include "deck/CPaneDeck.h"
#include "decode/FramePool.h"
#include "panes/FramePump.h"
#include "source/SourceThread.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "support/SignalLog.h"
#include "synthetic/SyntheticCamera.h"

#include <QScreen>

#include <cstring>

namespace {

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
    void keepsWhatShows();
    void playsInAPaneInUse();
    void survives();
};

void tst_pump::cleanup()
{
    QVERIFY(waitForSourceThreads(PatienceMs));
    DeckTestCase::cleanup();
}

void tst_pump::keepsWhatShows()
{
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 1);
    FramePump pump(&deck, 0);
    std::shared_ptr<Frame> first = plainFrame({64, 48}, 10);
    const std::weak_ptr<Frame> held = first;
    pump.show(std::move(first));
    QVERIFY(!held.expired());
    pump.show(plainFrame({33, 48}, 20));
    QVERIFY(held.expired());
    QCOMPARE(deck.PaneWidget(0)->grab().toImage().pixelColor(9, 9), QColor(20, 20, 20));
    pump.clear();
    QVERIFY(deck.PaneWidget(0)->grab().toImage().pixelColor(9, 9) != QColor(20, 20, 20));
}

void tst_pump::playsInAPaneInUse()
{
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 1);
    deck.resize(200, 160);
    deck.SetShowWndNo(1);
    deck.show();
    QVERIFY(QTest::qWaitForWindowExposed(&deck));
    deck.EnableRefresh(0, false);
    const auto screen = [&deck] { return deck.screen()->grabWindow(deck.winId()).toImage(); };
    SyntheticCamera source(SourceAddress::synthetic(1));
    FramePump pump(&deck, 0);
    pump.setSource(&source);
    source.start();
    QTRY_VERIFY(pump.frame());
    const QImage before = screen();
    QTRY_VERIFY(screen() != before);
}

void tst_pump::survives()
{
    SyntheticCamera source(SourceAddress::synthetic(1));
    auto deck = std::make_unique<CPaneDeck>(nullptr, WND_TYPE_ALARM, 1);
    FramePump pump(deck.get(), 0);
    pump.setSource(&source);
    source.start();
    QTRY_VERIFY(pump.frame());
    deck.reset();
    const FramePtr last = pump.frame();
    QTRY_VERIFY(pump.frame() != last);

    auto* other = new CPaneDeck(nullptr, WND_TYPE_ALARM, 1);
    auto* second = new FramePump(other, 0);
    SignalLog log;
    log.Watch(other->PaneWidget(0), SIGNAL(sig_VideoResize(int,int)));
    log.onSignal = [second](const QString&) { delete second; };
    second->show(plainFrame({8, 8}, 1));
    QCOMPARE(log.Take().size(), 1);
    delete other;
}

int main(int argc, char** argv)
{
    return RunTests<tst_pump>(argc, argv);
}

#include "tst_pump.moc"
