#include "common/ClientOptions.h"
#include "common/SettingsGuard.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

class tst_options : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsSources_data();
    void readsSources();
    void readsSites_data();
    void readsSites();
    void trustsNoObjectsInSettings_data();
    void trustsNoObjectsInSettings();
};

void tst_options::readsSources_data()
{
    QTest::addColumn<QStringList>("sources");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("complaint");
    QTest::newRow("none") << QStringList{} << QStringList{} << "";
    QTest::newRow("two") << QStringList{"A=a.mkv", "B=synthetic:2"} << QStringList{"A", "B"} << "";
    QTest::newRow("no name") << QStringList{"a.mkv", "B=b.mkv"} << QStringList{"B"}
                             << "source \"a.mkv\": NAME=URL expected: left out";
    QTest::newRow("no such camera")
        << QStringList{"A=synthetic:0"} << QStringList{}
        << "source \"A=synthetic:0\": \"0\" is no camera from 1 to 9999: left out";
    QTest::newRow("twice") << QStringList{"A=a.mkv", "A=b.mkv"} << QStringList{"A"}
                           << "source \"A\": there is one of that name: left out";
}

void tst_options::readsSources()
{
    QFETCH(QStringList, sources);
    QFETCH(QStringList, names);
    QFETCH(QString, complaint);
    QStringList arguments;
    for (const QString& source : sources)
        arguments << "--source" << source;
    const ClientOptions options = parseClientOptions(arguments);
    QStringList read;
    for (const SourceAddress& source : options.sources)
        read << source.name();
    QCOMPARE(read, names);
    QCOMPARE(options.complaints.join('|'), complaint);
}

void tst_options::readsSites_data()
{
    QTest::addColumn<QStringList>("indexes");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("by themselves") << QStringList{"postgresql://a.example/x?sslmode=require",
                                                  "postgresql:///y?host=%2Ftmp"}
                                   << QStringList{"a.example", "y"};
    QTest::newRow("named") << QStringList{"North =postgresql://db/x", "South=postgresql://db/x"}
                           << QStringList{"North", "South"};
    QTest::newRow("twice") << QStringList{"A=postgresql://db/x", "A=postgresql://db/y"} << QStringList{"A"};
    QTest::newRow("no name of one row") << QStringList{"A/B=postgresql://db/x"} << QStringList{};
    QTest::newRow("a password") << QStringList{"A=postgresql://me:secret@db/x"} << QStringList{};
}

void tst_options::readsSites()
{
    QFETCH(QStringList, indexes);
    QFETCH(QStringList, names);
    QStringList arguments;
    for (const QString& index : indexes)
        arguments << "--index" << index;
    const ClientOptions options = parseClientOptions(arguments);
    QStringList read;
    for (const SiteAddress& site : options.sites)
        read << site.name;
    QCOMPARE(read, names);
    QCOMPARE(options.complaints.size(), indexes.size() - names.size());
    QVERIFY(!options.complaints.join('|').contains("secret"));
}

void tst_options::trustsNoObjectsInSettings_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isSafe");
    const auto row = [](const char* name, const QByteArray& text, bool isSafe) {
        QTest::newRow(name) << text << isSafe;
    };
    row("what the client writes",
        "[view]\ncameras=Door, \"a=b @ c\", \\x4e2d, @@home\nlayout=9\nnone=@Invalid()\n", true);
    row("an object", "[view]\nlayout=@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff)\n", false);
    row("in a list", "[view]\ncameras=Door, @DateTime(x)\n", false);
    row("in quotes", "[view]\nlayout=\"@Variant(\\0)\"\n", false);
    row("written as a number", "[view]\nlayout=\\x40Variant(\\0)\n", false);
    row("written as another", "[view]\nlayout=\\100Variant(\\0)\n", false);
    row("far too large", QByteArray(2 << 20, '\n'), false);
}

void tst_options::trustsNoObjectsInSettings()
{
    QFETCH(QByteArray, text);
    QTemporaryDir directory;
    QFile file(directory.filePath("a.conf"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    QTEST(isSafeSettings(file.fileName()), "isSafe");
    QVERIFY(isSafeSettings(directory.filePath("none.conf")));
    QVERIFY(!isSafeSettings(directory.path()));
}

int main(int argc, char** argv)
{
    return RunTests<tst_options>(argc, argv);
}

#include "tst_options.moc"
