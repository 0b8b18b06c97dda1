#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "deck/CPaneDeck.h"
#include "panes/DeckStreams.h"
#include "source/SourceThread.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "synthetic/SyntheticCamera.h"

class tst_streams : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void letsGoDuringATour();
    void takesTheLargerStreamAfterAReplay();
};

void tst_streams::cleanup()
{
    DeckTestCase::cleanup();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(waitForSourceThreads(PatienceMs));
}

/// Pages that turn faster than the hub looks around don't keep what nobody sees.
void tst_streams::letsGoDuringATour()
{
    CameraList cameras;
    cameras.addSynthetic(2);
    CameraHub hub(cameras, nullptr, 300);
    const QPointer<VideoSource> first(hub.watch(cameras.at(0)).data());
    QVERIFY(first);
    QTimer turns;
    connect(&turns, &QTimer::timeout, this, [&] { hub.watch(cameras.at(1)); });
    turns.start(5);
    QTRY_VERIFY(!first);
}

void tst_streams::takesTheLargerStreamAfterAReplay()
{
    CameraRecord camera;
    camera.name = "Gate";
    camera.address = SourceAddress::parse("Gate=rtsp://gate/main|rtsp://gate/small");
    QSharedPointer<VideoSource> small(new SyntheticCamera(SourceAddress::synthetic(1)));
    QSharedPointer<VideoSource> main(new SyntheticCamera(SourceAddress::synthetic(2)));
    SyntheticCamera replay(SourceAddress::synthetic(3));
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 1);
    deck.resize(2000, 1200);
    deck.show();
    deck.SetShowWndNo(1);
    DeckStreams streams(&deck, 1, nullptr, &deck);
    bool isAsked = false;
    streams.setSourceMaker([&](int, const CameraRecord&, StreamKind kind) {
        isAsked = isAsked || kind == StreamKind::Main;
        return kind == StreamKind::Main ? main : small;
    });
    small->start();
    streams.assign(0, camera);
    QTRY_VERIFY(isAsked);
    streams.setReplay(0, &replay);
    QSignalSpy comes(main.data(), &VideoSource::frameReady);
    main->start();
    QTRY_VERIFY(comes.count() > 0);
    QCOMPARE(streams.sourceAt(0), small.data());
    streams.setReplay(0, nullptr);
    QTRY_COMPARE(streams.sourceAt(0), main.data());
}

int main(int argc, char** argv)
{
    return RunTests<tst_streams>(argc, argv);
}

#include "tst_streams.moc"
