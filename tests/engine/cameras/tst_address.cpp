#include "cameras/SourceAddress.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

using Kind = SourceAddress::Kind;
Q_DECLARE_METATYPE(Kind)

class tst_address : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsAddresses_data();
    void readsAddresses();
    void refusesAddresses_data();
    void refusesAddresses();
};

void tst_address::readsAddresses_data()
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
    QTest::newRow("two streams") << "A=rtsp://h/1 | rtsp://h/2" << Kind::Url << "A"
                                 << "rtsp://h/1" << true;
    QTest::newRow("a bar of its own") << "A=lavfi:aevalsrc=0|0" << Kind::Graph << "A"
                                      << "aevalsrc=0|0" << false;
    QTest::newRow("device") << "A=v4l2:/dev/video1" << Kind::Device << "A"
                            << "/dev/video1" << true;
    QTest::newRow("bare device") << "A=/dev/video0" << Kind::Device << "A"
                                 << "/dev/video0" << true;
    QTest::newRow("graph") << "A=lavfi:testsrc=s=64x48" << Kind::Graph << "A"
                           << "testsrc=s=64x48" << false;
    QTest::newRow("the last camera") << "A=synthetic:9999" << Kind::Synthetic << "A"
                                     << "" << true;
    QTest::newRow("synthetic") << " A  b =synthetic:7" << Kind::Synthetic << "A b"
                               << "" << true;
}

void tst_address::readsAddresses()
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
    QCOMPARE(address->small() ? address->small()->location() : QString(),
             text.contains("h/2") ? "rtsp://h/2" : "");
    QCOMPARE(address->isLive(), live);
    QCOMPARE(address->number(), kind == Kind::Synthetic ? text.section(':', 1).toInt() : 0);
}

void tst_address::refusesAddresses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("reason");
    QTest::newRow("nothing") << ""
                             << "NAME=URL expected";
    QTest::newRow("no name") << " =x"
                             << "the name before \"=\" is missing";
    QTest::newRow("no name, but a password") << "rtsp://me:secret@h/s?x=1"
                                             << "the name before \"=\" is missing";
    QTest::newRow("no URL") << "A= "
                            << "nothing follows the \"=\"";
    QTest::newRow("no graph") << "A=lavfi:"
                              << "nothing follows \"lavfi:\"";
    QTest::newRow("no path") << "A=file:"
                             << "no path follows \"file:\"";
    QTest::newRow("camera 10000") << "A=synthetic:10000"
                                  << "\"10000\" is no camera from 1 to 9999";
    QTest::newRow("camera 0") << "A=synthetic:0"
                              << "\"0\" is no camera from 1 to 9999";
    QTest::newRow("camera of words") << "A=synthetic:x\ny"
                                     << "\"x\ny\" is no camera from 1 to 9999";
}

void tst_address::refusesAddresses()
{
    QFETCH(QString, text);
    QFETCH(QString, reason);
    QString error;
    QVERIFY(!SourceAddress::parse(text, &error));
    QCOMPARE(
        error,
        QString("source \"%1\": %2").arg(text.simplified().replace("me:secret", "..."), reason.simplified()));
    QVERIFY(!SourceAddress::parse(text));
}

int main(int argc, char** argv)
{
    return RunTests<tst_address, QCoreApplication>(argc, argv);
}

#include "tst_address.moc"
