#include "engine/TestVideo.h"
#include "source/MediaFeed.h"
#include "source/Pacer.h"
#include "source/RelayPatience.h"
#include "source/RetryPause.h"
#include "source/SourceThread.h"
#include "source/VideoSource.h"
#include "support/DeckTestCase.h"
#include "support/LocalPort.h"
#include "support/RunTests.h"
#include "synthetic/SyntheticCamera.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <cstring>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

/// Takes connections on a port of its own and never says a word.
class SilentServer
{
public:
    SilentServer()
    {
        m_socket = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
        m_port = bindLocalPort(m_socket);
        ::listen(m_socket, 1);
    }
    ~SilentServer()
    {
        ::close(m_client);
        ::close(m_socket);
    }
    /// True once the client has said something, so that it now waits for an answer.
    bool wasAsked()
    {
        if (m_client < 0)
            m_client = ::accept(m_socket, nullptr, nullptr);
        return m_client >= 0 && ::recv(m_client, m_word, 1, MSG_DONTWAIT | MSG_PEEK) == 1;
    }
    int port() const { return m_port; }

private:
    int m_socket = -1;
    int m_client = -1;
    int m_port = 0;
    char m_word[1];
};

/// The beginning of a PNG with 15,000 pixels a side, which are two thirds of a gigabyte.
QByteArray hugePicture()
{
    return QByteArray::fromHex("89504e470d0a1a0a"
                               "0000000d4948445200003a9800003a98080200000051765ef2"
                               "0000000c49444154789c6360201f0000003c0001efd2ee52"
                               "0000000049454e44ae426082");
}

} // namespace

class tst_source : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void missesFramesWhileBusy();
    void startsAnew();
    void fileLoops();
    void pausedFileHoldsItsPlace();
    void tellsTheReason_data();
    void tellsTheReason();
    void lostSourceComesBack();
    void paces();
    void pausesGrow();
    void leavesStuckServer();
    void keepsThePassword_data();
    void keepsThePassword();
    void leavesASilentRelay();
    void leavesStuckPipe();
    void goesInItsOwnSignal();
};

/// No source leaves a thread behind.
void tst_source::cleanup()
{
    QVERIFY(waitForSourceThreads(PatienceMs));
    DeckTestCase::cleanup();
}

void tst_source::missesFramesWhileBusy()
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

void tst_source::startsAnew()
{
    SyntheticCamera source(SourceAddress::synthetic(2));
    QSignalSpy changed(&source, SIGNAL(stateChanged()));
    QCOMPARE(source.state(), SourceState::Stopped);
    source.start();
    source.start();
    QCOMPARE(changed.count(), 1);
    QTRY_VERIFY(source.frame());
    changed.clear();
    source.stop();
    QCOMPARE(changed.count(), 1);
    QCOMPARE(source.state(), SourceState::Stopped);
    QVERIFY(!source.frame());
    source.start();
    QTRY_VERIFY(source.frame());
}

void tst_source::fileLoops()
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

void tst_source::pausedFileHoldsItsPlace()
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

void tst_source::tellsTheReason_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no file") << "DIR/none.mkv"
                             << "cannot open: No such file or directory";
    QTest::newRow("not a video") << "DIR/text"
                                 << "cannot open: Invalid data";
    QTest::newRow("a huge picture") << "DIR/huge.png"
                                    << "its pictures are too large: 15000 x 15000";
    QTest::newRow("sound only") << "lavfi:sine"
                                << "no pictures in it";
    QTest::newRow("a short graph") << "lavfi:testsrc=s=16x16:d=0.1"
                                   << "the stream has ended";
    QTest::newRow("no device") << "/dev/video999"
                               << "cannot open: ";
    QTest::newRow("nobody there") << "http://127.0.0.1:1/x"
                                  << "cannot open: refused";
}

void tst_source::tellsTheReason()
{
    QFETCH(QString, url);
    QFETCH(QString, reason);
    QTemporaryDir directory;
    QFile text(directory.filePath("text"));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write(QByteArray("No pictures, only words. ").repeated(100));
    text.close();
    QFile huge(directory.filePath("huge.png"));
    QVERIFY(huge.open(QIODevice::WriteOnly));
    huge.write(hugePicture());
    huge.close();

    VideoSource source(TestVideo::player(url.replace("DIR", directory.path())));
    source.start();
    QTRY_COMPARE(source.state(), SourceState::Lost);
    QVERIFY2(source.reason().startsWith(reason), qPrintable(source.reason()));
    QVERIFY(source.reason().length() > 10);
    QVERIFY(!source.reason().contains('\n'));
}

void tst_source::lostSourceComesBack()
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

void tst_source::paces()
{
    Pacer pacer;
    const Pacer::Clock::time_point now(1000010ms);
    const Pacer::Clock::time_point start(1000040ms);
    QVERIFY(pacer.due(5'000'000, now) == start);
    QVERIFY(pacer.due(5'040'000, now) == start + 40ms);
    QVERIFY(pacer.due(5'080'000, start + 300ms) == start + 80ms);
    QVERIFY(pacer.due(5'120'000, start + 1001ms) == start + 1040ms);
    QVERIFY(pacer.due(5'160'000, start + 1001ms) == start + 1080ms);
    QVERIFY(pacer.due(5'130'000, start + 1001ms) == start + 1040ms);
    QVERIFY(pacer.due(0, start + 1100ms) == start + 1120ms);
    QVERIFY(pacer.due(20'000'000, start + 1120ms) == start + 1120ms);
}

void tst_source::pausesGrow()
{
    RetryPause pause;
    for (const int expected : {1000, 2000, 4000, 8000, 16000, 30000, 30000})
        QCOMPARE(pause.next(), expected);
    pause.reset();
    QCOMPARE(pause.next(), 1000);
}

void tst_source::leavesStuckServer()
{
    SilentServer server;
    VideoSource source(TestVideo::player(QString("rtsp://127.0.0.1:%1/x").arg(server.port())));
    source.start();
    QTRY_VERIFY(server.wasAsked());
    QCOMPARE(source.state(), SourceState::Connecting);
    QElapsedTimer timer;
    timer.start();
    source.stop();
    QVERIFY(timer.elapsed() < 500);
    QCOMPARE(source.state(), SourceState::Stopped);
    QVERIFY(waitForSourceThreads(5000));
}

void tst_source::keepsThePassword_data()
{
    QTest::addColumn<QString>("scheme");
    QTest::addColumn<QByteArray>("question");
    QTest::addColumn<bool>("isAllowed");
    QTest::addColumn<bool>("isMoved");      ///< the camera tells of another place first
    QTest::addColumn<QByteArray>("answer"); ///< empty if the login is not seen at all
    const QByteArray basic = "WWW-Authenticate: Basic realm=\"cam\"\r\n";
    const QByteArray digest = "WWW-authenticate:Digest realm=\"cam\", nonce=\"1\"\r\n";
    for (const char* scheme : {"rtsp", "http"}) {
        QTest::addRow("%s, plain", scheme) << scheme << basic << false << false << QByteArray();
        QTest::addRow("%s, plain elsewhere", scheme) << scheme << basic << false << true << QByteArray();
        QTest::addRow("%s, plain and allowed", scheme)
            << scheme << basic << true << true << QByteArray("Basic ");
        QTest::addRow("%s, either", scheme)
            << scheme << basic + digest << false << true << QByteArray("Digest ");
        QTest::addRow("%s, lines without a return", scheme)
            << scheme << QByteArray(digest).replace('\r', "") << false << false << QByteArray("Digest ");
    }
}

/// A camera refuses whoever asks, and hears how often the password comes to it as it is.
void tst_source::keepsThePassword()
{
    QFETCH(QString, scheme);
    QFETCH(QByteArray, question);
    QFETCH(bool, isAllowed);
    QFETCH(bool, isMoved);
    QFETCH(QByteArray, answer);
    QByteArray heard;
    QByteArray base;
    QTcpServer server;
    connect(&server, &QTcpServer::newConnection, this, [&] {
        QTcpSocket* socket = server.nextPendingConnection();
        connect(socket, &QTcpSocket::readyRead, this, [&, socket] {
            const QByteArray said = socket->readAll();
            const QByteArray number = said.mid(said.indexOf("CSeq: ") + 6).split('\r').first();
            heard += said;
            const bool moves = isMoved && said.contains("/x?");
            const QByteArray there = scheme == "rtsp" ? base + "/y" : "/y";
            socket->write((scheme == "rtsp" ? "RTSP/1.0 " : "HTTP/1.1 ") +
                          QByteArray(moves ? "302 There" : "401 No") + "\r\nCSeq: " + number +
                          "\r\nContent-Length: 0\r\n" + (moves ? "Location: " + there + "\r\n" : question) +
                          "\r\n");
        });
    });
    QVERIFY(server.listen(QHostAddress::LocalHost));
    base = QString("%1://127.0.0.1:%2").arg(scheme).arg(server.serverPort()).toLatin1();
    auto address = SourceAddress::of("Gate", base + "/x?a=1", {});
    address->setLogin("me", "secret", isAllowed);
    VideoSource source(MediaFeed::maker(*address));
    source.start();
    QTRY_COMPARE(source.state(), SourceState::Lost);
    QCOMPARE(source.reason().contains("wrong password"), !answer.isEmpty());
    QCOMPARE(heard.contains("Authorization: "), !answer.isEmpty());
    QVERIFY2(heard.contains("Authorization: " + answer) || answer.isEmpty(), heard.constData());
    source.stop();
}

/// Behind the silent relay another pane does not wait again, until that one has rested.
void tst_source::leavesASilentRelay()
{
    QTemporaryDir directory;
    QVERIFY(TestVideo::write(directory.filePath("a.mkv")));
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const auto relay =
        SourceAddress::of("Gate", QString("rtsp://127.0.0.1:%1/gate").arg(server.serverPort()), {});
    const auto camera = SourceAddress::of("Gate", directory.filePath("a.mkv"), {});
    const auto patience = std::make_shared<RelayPatience>(50, 400);
    int asked = 0;
    connect(&server, &QTcpServer::newConnection, this, [&] { ++asked; });
    const auto play = [&] {
        VideoSource source(MediaFeed::maker(*relay, *camera, patience));
        source.start();
        QTRY_COMPARE(source.state(), SourceState::Playing);
    };
    QDeadlineTimer rests(400);
    play();
    QTRY_COMPARE(asked, 1);
    play();
    QVERIFY(asked == 1 || rests.hasExpired());
    QTRY_VERIFY((play(), asked > 1));
}

/// Nothing can break off the opening of a pipe that nobody writes to.
void tst_source::leavesStuckPipe()
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
    QVERIFY(waitForSourceThreads(PatienceMs));
    ::close(writer);
}

void tst_source::goesInItsOwnSignal()
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
    return RunTests<tst_source, QCoreApplication>(argc, argv);
}

#include "tst_source.moc"
