#include "cameras/AddressFault.h"
#include "cameras/CameraFile.h"
#include "cameras/CameraTable.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

class tst_camerafile : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void givesBackWhatItTook();
    void refusesWhatItCannotRead_data();
    void refusesWhatItCannotRead();
    void leavesAnotherProgramsListAlone();
    void tellsWhatItCannotWrite();
    void readsTables_data();
    void readsTables();
    void givesBackItsTable();
    void tellsBadAddresses_data();
    void tellsBadAddresses();
    void logsIn_data();
    void logsIn();

private:
    QString place(const QString& name = "cameras.json") const { return m_directory.filePath(name); }

    QTemporaryDir m_directory;
};

namespace {

CameraDescription gate()
{
    CameraDescription camera;
    camera.id = "1";
    camera.name = "Gate \"ä\" 门";
    camera.group = "Site/House";
    camera.recordedAs = "Door";
    camera.mainUrl = "rtsp://h/main";
    camera.smallUrl = "rtsp://h/small";
    camera.user = "me";
    camera.isPlainAllowed = true;
    camera.transport = SourceAddress::Transport::Udp;
    camera.recording = CameraDescription::Recording::OnMotion;
    camera.sensitivity = 99;
    camera.zones = {{0, 0, 1, 1}, {0.25, 0.5, 0.125, 0.25}};
    camera.ptz = CameraDescription::Ptz::Onvif;
    camera.isEnabled = false;
    camera.onvifAddress = "http://h/onvif";
    camera.onvifCertificate = "0a1b";
    camera.onvifMainProfile = "a";
    camera.onvifSmallProfile = "b";
    return camera;
}

void put(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray taken(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray list(const QByteArray& fields)
{
    return "{\"version\":1,\"cameras\":[{\"id\":\"1\",\"name\":\"A\"" + fields + "}]}";
}

} // namespace

void tst_camerafile::givesBackWhatItTook()
{
    const QString path = place("new/folder/cameras.json");
    QString error;
    CameraFile file(path);
    QVERIFY2(file.write({gate()}, &error), qPrintable(error));
    struct stat about = {};
    QCOMPARE(::stat(QFile::encodeName(path).constData(), &about), 0);
    QCOMPARE(int(about.st_mode & 0777), 0600);
    CameraFile again(path);
    const auto cameras = again.read(&error);
    QVERIFY2(cameras, qPrintable(error));
    QCOMPARE(cameras->size(), 1);
    QVERIFY(cameras->first() == gate());
    QVERIFY2(again.write({}, &error), qPrintable(error));
    QVERIFY(again.read(&error)->isEmpty());
}

void tst_camerafile::refusesWhatItCannotRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("cut short") << list("").chopped(3);
    QTest::newRow("no object") << QByteArray("[1]");
    QTest::newRow("no version") << QByteArray("{\"cameras\":[]}");
    QTest::newRow("version of words") << QByteArray("{\"version\":\"1\",\"cameras\":[]}");
    QTest::newRow("version to come") << QByteArray("{\"version\":2,\"cameras\":[]}");
    QTest::newRow("no cameras") << QByteArray("{\"version\":1}");
    QTest::newRow("cameras are none") << QByteArray("{\"version\":1,\"cameras\":[7]}");
    QTest::newRow("name is a number") << list(",\"group\":7");
    QTest::newRow("unknown transport") << list(",\"transport\":\"tin can\"");
    QTest::newRow("sensitivity beyond range") << list(",\"sensitivity\":1e300");
    QTest::newRow("zone outside") << list(R"(,"zones":[{"x":2,"y":0,"width":1,"height":1}])");
    QTest::newRow("zone of nothing") << list(R"(,"zones":[{"x":0,"y":0,"width":0,"height":1}])");
    QTest::newRow("zones are none") << list(",\"zones\":3");
    QTest::newRow("name without end") << list(",\"user\":\"" + QByteArray(5000, 'x') + "\"");
    QTest::newRow("two of one name") << QByteArray(
        R"({"version":1,"cameras":[{"id":"1","name":"A"},{"id":"2","name":"A"}]})");
    QTest::newRow("two of one id") << QByteArray(
        R"({"version":1,"cameras":[{"id":"1","name":"A"},{"id":"1","name":"B"}]})");
    QTest::newRow("deep") << QByteArray(100'000, '[');
    QTest::newRow("huge") << QByteArray((16 << 20) + 1, ' ');
}

void tst_camerafile::refusesWhatItCannotRead()
{
    QFETCH(QByteArray, content);
    put(place(), content);
    CameraFile file(place());
    QString error;
    QVERIFY(!file.read(&error));
    QVERIFY(error.startsWith("cannot read " + place()));
    QVERIFY(!file.write({gate()}, &error));
    QCOMPARE(taken(place()), content);
}

void tst_camerafile::leavesAnotherProgramsListAlone()
{
    QString error;
    CameraFile file(place("shared.json"));
    QVERIFY(file.write({gate()}, &error));
    put(place("shared.json"), list(""));
    QVERIFY(!file.write({}, &error));
    QCOMPARE(taken(place("shared.json")), list(""));
    QVERIFY(file.read(&error));
    QVERIFY(file.write({}, &error));
}

void tst_camerafile::tellsWhatItCannotWrite()
{
    QString error;
    QVERIFY(QDir(m_directory.path()).mkpath("directory.json"));
    CameraFile directory(place("directory.json"));
    QVERIFY(!directory.read(&error));
    QVERIFY(!directory.write({}, &error));
    QCOMPARE(::mkfifo(QFile::encodeName(place("pipe.json")).constData(), 0600), 0);
    QVERIFY(!CameraFile(place("pipe.json")).read(&error));
    // Below a file there is no directory, not even for root.
    put(place("file"), "x");
    error.clear();
    QVERIFY(!CameraFile(place("file/cameras.json")).write({}, &error));
    QVERIFY(error.startsWith("cannot write "));
    // Nor is anything written that would not be read.
    CameraFile file(place("whole.json"));
    QVERIFY(file.write({gate()}, &error));
    CameraDescription twin = gate();
    twin.onvifMainProfile = QString(5000, 'x');
    QVERIFY(!file.write({gate(), gate()}, &error));
    QVERIFY(!file.write({twin}, &error));
    QCOMPARE(CameraFile(place("whole.json")).read(&error), std::optional(QVector<CameraDescription>{gate()}));
}

void tst_camerafile::readsTables_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("cameras"); // name|address|user|password
    QTest::addColumn<int>("faults");
    const QString stream = "rtsp://h/s";
    QTest::newRow("nothing") << "" << QStringList{} << 0;
    QTest::newRow("blank lines") << "\n\r\n ,\n" << QStringList{} << 1;
    QTest::newRow("an address alone")
        << "rtsp://me:p%40@h:554/s" << QStringList{"h|rtsp://h:554/s|me|p@"} << 0;
    QTest::newRow("plain line") << "Gate; rtsp://h/s ;me;p" << QStringList{"Gate|rtsp://h/s|me|p"} << 0;
    QTest::newRow("two of one name, and a third")
        << "A,rtsp://h/s\nA,rtsp://h/s\nTaken,rtsp://h/s"
        << QStringList{"A|rtsp://h/s||", "A (2)|rtsp://h/s||", "Taken (2)|rtsp://h/s||"} << 0;
    QTest::newRow("columns in another order") << "Main,NAME,password\nrtsp://h/s,\"A, \"\"b\"\"\",\"x\n\""
                                              << QStringList{"A, \"b\"|rtsp://h/s||x"} << 0;
    QTest::newRow("a bad one among good")
        << "A,rtsp://h/s\nB,rtps://h\nC,rtsp://h/s" << QStringList{"A|rtsp://h/s||", "C|rtsp://h/s||"} << 1;
    QTest::newRow("a quote without end") << "A,\"rtsp://h/s" << QStringList{"A|rtsp://h/s||"} << 0;
}

void tst_camerafile::readsTables()
{
    QFETCH(QString, text);
    const CameraTable::Content content = CameraTable::read(text, {"Taken"});
    QStringList cameras;
    for (const CameraDescription& camera : content.cameras)
        cameras.append(
            QStringList{camera.name, camera.mainUrl, camera.user, content.passwords.value(camera.id)}.join(
                '|'));
    QTEST(cameras, "cameras");
    QTEST(int(content.faults.size()), "faults");
}

void tst_camerafile::givesBackItsTable()
{
    CameraDescription camera = gate();
    camera.name = "Gate, \"ä\"; 门\n";
    const QString text = CameraTable::write({camera}, {{camera.id, "p,\"w"}});
    QVERIFY(!CameraTable::write({camera}).contains("\"p,"));
    const CameraTable::Content content = CameraTable::read(text, {});
    QCOMPARE(content.cameras.size(), 1);
    CameraDescription read = content.cameras.first();
    QCOMPARE(content.passwords.value(read.id), QString("p,\"w"));
    QCOMPARE(read.name, camera.name.simplified());
    QCOMPARE(QStringList({read.group, read.mainUrl, read.smallUrl, read.user}),
             QStringList({camera.group, camera.mainUrl, camera.smallUrl, camera.user}));
    QCOMPARE(int(read.transport), int(camera.transport));
    QCOMPARE(int(read.recording), int(camera.recording));
    QCOMPARE(read.sensitivity, camera.sensitivity);
    QCOMPARE(read.isEnabled, camera.isEnabled);
}

void tst_camerafile::tellsBadAddresses_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<bool>("isGood");
    for (const char* good :
         {"rtsp://h/s", "RTSPS://u:p%40@[::1]:554/s?a=b", "http://h:80/a b.mp4?x", "/a b.mkv",
          "file:///a.mkv", "synthetic:3", "/dev/video0", "lavfi:testsrc", "udp://@239.0.0.1:1"})
        QTest::newRow(good) << QString(good) << !QString(good).contains("a b.mp4");
    for (const char* bad : {"", "  ", "gate", "192.168.1.2", "rtps://h/s", "rtsp://", "rtsp:///s",
                            "rtsp://h:99999/s", "rtsp://a b/s", "synthetic:0", "file:", "lavfi:"})
        QTest::newRow(qPrintable("bad " + QString(bad))) << QString(bad) << false;
}

void tst_camerafile::tellsBadAddresses()
{
    QFETCH(QString, url);
    QTEST(addressFault(url).isEmpty(), "isGood");
}

void tst_camerafile::logsIn_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("opened");
    QTest::newRow("stream") << "rtsp://h:554/s?x=1@2"
                            << "rtsp://me:p%40%2F%3A%C3%A4@h:554/s?x=1@2";
    QTest::newRow("another's login") << "rtsp://you:old@h/s"
                                     << "rtsp://me:p%40%2F%3A%C3%A4@h/s";
    QTest::newRow("file") << "/a://b.mkv"
                          << "/a://b.mkv";
}

void tst_camerafile::logsIn()
{
    QFETCH(QString, url);
    CameraDescription camera = gate();
    camera.mainUrl = url;
    QVERIFY(!camera.address("secret"));
    camera.isEnabled = true;
    const QString password = QString::fromUtf8("p@/:ä");
    const auto address = camera.address(password);
    QVERIFY(address);
    QTEST(address->location(), "opened");
    QString opened = address->location();
    if (opened == url)
        return;
    const Login login = takeLogin(&opened);
    QCOMPARE(login.user, QString("me"));
    QCOMPARE(login.password, password);
    QVERIFY(!opened.contains("me:"));
}

int main(int argc, char** argv)
{
    return RunTests<tst_camerafile, QCoreApplication>(argc, argv);
}

#include "tst_camerafile.moc"
