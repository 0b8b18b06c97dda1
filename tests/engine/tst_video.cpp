#include "engine/TestVideo.h"
#include "source/RetryPause.h"
#include "source/SourceThread.h"
#include "source/VideoSource.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "synthetic/SyntheticCamera.h"

#include <cstring>
#include <memory>

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

using Kind = SourceAddress::Kind;
Q_DECLARE_METATYPE(Kind)

namespace {

/// Takes connections on a port of its own and never says a word.
class SilentServer
{
public:
    SilentServer()
    {
        m_socket = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof place;
        ::bind(m_socket, reinterpret_cast<sockaddr*>(&place), size);
        ::getsockname(m_socket, reinterpret_cast<sockaddr*>(&place), &size);
        ::listen(m_socket, 1);
        m_port = ntohs(place.sin_port);
    }
    ~SilentServer()
    {
        ::close(m_client);
        ::close(m_socket);
    }
    bool hasClient()
    {
        if (m_client < 0)
            m_client = ::accept(m_socket, nullptr, nullptr);
        return m_client >= 0;
    }
    /// True once the client has said something, so that it now waits for an answer.
    bool wasAsked() { return hasClient() && ::recv(m_client, m_word, 1, MSG_DONTWAIT | MSG_PEEK) == 1; }
    int port() const { return m_port; }

private:
    int m_socket = -1;
    int m_client = -1;
    int m_port = 0;
    char m_word[1];
};

} // namespace

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
    void fileLoops();
    void pausedFileHoldsItsPlace();
    void tellsTheReason_data();
    void tellsTheReason();
    void lostSourceComesBack();
    void pausesGrow();
    void leavesStuckServer_data();
    void leavesStuckServer();
    void leavesStuckPipe();
    void goesInItsOwnSignal();
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
        sources.push_back(std::make_unique<SyntheticCamera>(SourceAddress::synthetic(number, "Same name")));
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
    SyntheticCamera source(SourceAddress::synthetic(1));
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
    SyntheticCamera source(SourceAddress::synthetic(2));
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

void tst_video::fileLoops()
{
    QTemporaryDir directory;
    const QString path = directory.filePath("ten #1.mkv");
    QVERIFY(TestVideo::write(path));
    VideoSource source(TestVideo::player(path));
    QVector<QPair<qint64, int>> seen;
    connect(&source, &VideoSource::frameReady, this, [&] {
        const FramePtr frame = source.frame();
        seen.append({frame->pts, TestVideo::number(frame->image())});
    });
    source.start();
    QTRY_VERIFY(!seen.isEmpty() && seen.last().first > 900'000);
    for (int i = 0; i < seen.size(); ++i) {
        QCOMPARE(seen.at(i).second, int(seen.at(i).first / 40'000 % 10));
        QVERIFY(i == 0 || seen.at(i).first > seen.at(i - 1).first);
    }
    QCOMPARE(source.state(), SourceState::Playing);
}

void tst_video::pausedFileHoldsItsPlace()
{
    QTemporaryDir directory;
    QVERIFY(TestVideo::write(directory.filePath("a.mkv")));
    VideoSource file(TestVideo::player(directory.filePath("a.mkv")));
    SyntheticCamera clock(SourceAddress::synthetic(3));
    file.start();
    clock.start();
    QTRY_VERIFY(file.frame() && clock.frame());
    file.setPaused(true);
    const auto wait = [&clock] {
        const quint64 until = clock.frame()->serial + 5;
        QTRY_VERIFY(clock.frame()->serial >= until);
    };
    wait();
    const qint64 place = file.frame()->pts;
    wait();
    QCOMPARE(file.frame()->pts, place);

    QVector<qint64> seen;
    connect(&file, &VideoSource::frameReady, this, [&] { seen.append(file.frame()->pts); });
    file.setPaused(false);
    QTRY_VERIFY(!seen.isEmpty() && seen.last() > place);
    QVERIFY(seen.last() <= place + 120'000);
    clock.setPaused(true);
    QTRY_COMPARE(file.frame()->pts > place + 400'000, true);
}

void tst_video::tellsTheReason_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no file") << "DIR/none.mkv"
                             << "cannot open: No such file or directory";
    QTest::newRow("a directory") << "DIR"
                                 << "cannot open: Is a directory";
    QTest::newRow("an empty file") << "DIR/empty"
                                   << "cannot open: ";
    QTest::newRow("not a video") << "DIR/text"
                                 << "cannot open: Invalid data";
    QTest::newRow("sound only") << "lavfi:sine"
                                << "no pictures in it";
    QTest::newRow("a short graph") << "lavfi:testsrc=s=16x16:d=0.1"
                                   << "the stream has ended";
    QTest::newRow("no graph") << "lavfi:nosuchfilter"
                              << "cannot open: ";
    QTest::newRow("no protocol") << "foo://bar"
                                 << "cannot open: Protocol not found";
    QTest::newRow("no device") << "/dev/video999"
                               << "cannot open: ";
    QTest::newRow("nobody there") << "http://127.0.0.1:1/x"
                                  << "cannot open: Connection refused";
}

void tst_video::tellsTheReason()
{
    QFETCH(QString, url);
    QFETCH(QString, reason);
    QTemporaryDir directory;
    QFile empty(directory.filePath("empty"));
    QVERIFY(empty.open(QIODevice::WriteOnly));
    QFile text(directory.filePath("text"));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write(QByteArray("No pictures, only words. ").repeated(100));
    text.close();

    VideoSource source(TestVideo::player(url.replace("DIR", directory.path())));
    source.start();
    QTRY_COMPARE(source.state(), SourceState::Lost);
    QVERIFY2(source.reason().startsWith(reason), qPrintable(source.reason()));
    QVERIFY(source.reason().length() > 10);
    QVERIFY(!source.reason().contains('\n'));
}

void tst_video::lostSourceComesBack()
{
    QTemporaryDir directory;
    const QString path = directory.filePath("late.mkv");
    VideoSource source(TestVideo::player(path));
    source.start();
    QTRY_COMPARE(source.state(), SourceState::Lost);
    QVERIFY(TestVideo::write(path));
    QTRY_COMPARE(source.state(), SourceState::Playing);
    QCOMPARE(source.reason(), QString());
    QVERIFY(source.frame());
}

void tst_video::pausesGrow()
{
    RetryPause pause;
    for (const int expected : {1000, 2000, 4000, 8000, 16000, 30000, 30000})
        QCOMPARE(pause.next(), expected);
    pause.reset();
    QCOMPARE(pause.next(), 1000);
}

void tst_video::leavesStuckServer_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<bool>("asks");
    QTest::newRow("http") << "http://127.0.0.1:%1/x" << true;
    QTest::newRow("rtsp") << "rtsp://127.0.0.1:%1/x" << true;
    QTest::newRow("tcp") << "tcp://127.0.0.1:%1" << false;
}

void tst_video::leavesStuckServer()
{
    QFETCH(QString, url);
    QFETCH(bool, asks);
    SilentServer server;
    VideoSource source(TestVideo::player(url.arg(server.port())));
    source.start();
    if (asks)
        QTRY_VERIFY(server.wasAsked());
    else
        QTRY_VERIFY(server.hasClient());
    QCOMPARE(source.state(), SourceState::Connecting);
    QElapsedTimer timer;
    timer.start();
    source.stop();
    QVERIFY(timer.elapsed() < 500);
    QCOMPARE(source.state(), SourceState::Stopped);
    QVERIFY(waitForSourceThreads(1000));
}

/// Nothing can break off the opening of a pipe that nobody writes to.
void tst_video::leavesStuckPipe()
{
    QTemporaryDir directory;
    const QByteArray path = directory.filePath("pipe").toUtf8();
    QCOMPARE(::mkfifo(path.constData(), 0600), 0);
    auto source = std::make_unique<VideoSource>(TestVideo::player(path));
    source->start();
    QElapsedTimer timer;
    timer.start();
    source.reset();
    QVERIFY(timer.elapsed() < 500);
    // Somebody who writes sets the thread free, once it is there.
    int writer = -1;
    QTRY_VERIFY(waitForSourceThreads(0) || (writer = ::open(path.constData(), O_WRONLY | O_NONBLOCK)) >= 0);
    QVERIFY(waitForSourceThreads(1000));
    ::close(writer);
}

void tst_video::goesInItsOwnSignal()
{
    for (const bool atFrame : {false, true}) {
        const QPointer<VideoSource> source(new SyntheticCamera(SourceAddress::synthetic(1)));
        source->start();
        const auto destroy = [source] { delete source.data(); };
        if (atFrame)
            connect(source, &VideoSource::frameReady, this, destroy);
        else
            connect(source, &VideoSource::stateChanged, this, destroy);
        QTRY_VERIFY(!source);
    }
}

int main(int argc, char** argv)
{
    return RunTests<tst_video>(argc, argv);
}

#include "tst_video.moc"
