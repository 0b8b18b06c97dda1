#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "video/SourceThread.h"
#include "video/VideoSource.h"

#include <cstring>
#include <memory>

using Kind = SourceAddress::Kind;
Q_DECLARE_METATYPE(Kind)

class tst_video : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void readsAddresses_data();
    void readsAddresses();
    void refusesAddresses_data();
    void refusesAddresses();
    void camerasDiffer();
    void missesFramesWhileBusy();
    void startsAnew();
};

/// No source leaves a thread behind.
void tst_video::cleanup()
{
    QVERIFY(waitForSourceThreads(1000));
    DeckTestCase::cleanup();
}

void tst_video::readsAddresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("location");
    QTest::addColumn<bool>("live");
    QTest::newRow("path") << "Gate=/a b/c.mkv" << Kind::File << "Gate"
                          << "/a b/c.mkv" << false;
    QTest::newRow("file URL") << "Gate=file:///a%20b.mkv" << Kind::File << "Gate"
                              << "/a b.mkv" << false;
    QTest::newRow("stream") << "A=rtsp://u:p@h:554/s?x=1" << Kind::Url << "A"
                            << "rtsp://u:p@h:554/s?x=1" << true;
    QTest::newRow("scheme in capitals") << "A=RTSP://h/s" << Kind::Url << "A"
                                        << "RTSP://h/s" << true;
    QTest::newRow("file on a server") << "A=http://h/a=b.mp4" << Kind::Url << "A"
                                      << "http://h/a=b.mp4" << false;
    QTest::newRow("device") << "A=v4l2:/dev/video1" << Kind::Device << "A"
                            << "/dev/video1" << true;
    QTest::newRow("bare device") << "A=/dev/video0" << Kind::Device << "A"
                                 << "/dev/video0" << true;
    QTest::newRow("graph") << "A=lavfi:testsrc=s=64x48" << Kind::Graph << "A"
                           << "testsrc=s=64x48" << false;
    QTest::newRow("synthetic") << " A  b =synthetic:7" << Kind::Synthetic << "A b"
                               << "" << true;
}

void tst_video::readsAddresses()
{
    QFETCH(QString, text);
    QFETCH(Kind, kind);
    QFETCH(QString, name);
    QFETCH(QString, location);
    QFETCH(bool, live);
    QString error;
    const auto address = SourceAddress::parse(text, &error);
    QVERIFY2(address, qPrintable(error));
    QVERIFY(error.isEmpty());
    QCOMPARE(address->kind(), kind);
    QCOMPARE(address->name(), name);
    QCOMPARE(address->location(), location);
    QCOMPARE(address->isLive(), live);
    QCOMPARE(address->number(), kind == Kind::Synthetic ? 7 : 0);
    QVERIFY(SourceAddress::parse(address->toString()) == address);
}

void tst_video::refusesAddresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("reason");
    QTest::newRow("nothing") << ""
                             << "NAME=URL expected";
    QTest::newRow("no name") << " =x"
                             << "the name before \"=\" is missing";
    QTest::newRow("no URL") << "A= "
                            << "nothing follows the \"=\"";
    QTest::newRow("no graph") << "A=lavfi:"
                              << "nothing follows \"lavfi:\"";
    QTest::newRow("no path") << "A=file:"
                             << "no path follows \"file:\"";
    QTest::newRow("camera 0") << "A=synthetic:0"
                              << "\"0\" is no camera from 1 to 9999";
    QTest::newRow("camera of words") << "A=synthetic:x\ny"
                                     << "\"x\ny\" is no camera from 1 to 9999";
}

void tst_video::refusesAddresses()
{
    QFETCH(QString, text);
    QFETCH(QString, reason);
    QString error;
    QVERIFY(!SourceAddress::parse(text, &error));
    QCOMPARE(error, QString("source \"%1\": %2").arg(text.simplified(), reason.simplified()));
    QVERIFY(!SourceAddress::parse(text));
}

void tst_video::camerasDiffer()
{
    std::vector<std::unique_ptr<VideoSource>> sources;
    for (const int number : {1, 2, 17, 33, 65}) {
        sources.push_back(std::make_unique<VideoSource>(SourceAddress::synthetic(number, "Same name")));
        sources.back()->start();
    }
    QSet<QByteArray> pictures;
    for (const auto& source : sources) {
        QTRY_COMPARE(source->state(), SourceState::Playing);
        QTRY_VERIFY(source->frame());
        const FramePtr frame = source->frame();
        QCOMPARE(frame->size(), QSize(704, 576));
        const QImage below = frame->image().copy(0, 40, frame->width, frame->height - 40);
        pictures.insert(
            QByteArray(reinterpret_cast<const char*>(below.constBits()), int(below.sizeInBytes())));
        // The picture goes on moving, if only by its clock.
        QTRY_VERIFY(source->frame()->image() != frame->image());
    }
    QCOMPARE(pictures.size(), int(sources.size()));
}

void tst_video::missesFramesWhileBusy()
{
    VideoSource source(SourceAddress::synthetic(1));
    QSignalSpy ready(&source, SIGNAL(frameReady()));
    source.start();
    QTRY_VERIFY(ready.count() > 0);
    ready.clear();
    const FramePtr held = source.frame();
    const QByteArray before(reinterpret_cast<const char*>(held->pixels()), held->rowBytes() * held->height);
    QDeadlineTimer deadline(5000);
    while (source.frame()->serial < held->serial + 8 && !deadline.hasExpired())
        QThread::yieldCurrentThread();
    QVERIFY(source.frame()->serial >= held->serial + 8);
    QCoreApplication::sendPostedEvents(&source);
    QVERIFY(ready.count() == 1 || ready.count() == 2);
    // A frame that is held is not written again.
    QVERIFY(std::memcmp(held->pixels(), before.constData(), size_t(before.size())) == 0);
}

void tst_video::startsAnew()
{
    VideoSource source(SourceAddress::synthetic(2));
    QSignalSpy changed(&source, SIGNAL(stateChanged()));
    QCOMPARE(source.state(), SourceState::Stopped);
    source.start();
    source.start();
    QCOMPARE(changed.count(), 1);
    QTRY_VERIFY(source.frame());
    source.stop();
    QCOMPARE(source.state(), SourceState::Stopped);
    QVERIFY(!source.frame());
    source.start();
    QTRY_VERIFY(source.frame());
}

int main(int argc, char** argv)
{
    return RunTests<tst_video>(argc, argv);
}

#include "tst_video.moc"
