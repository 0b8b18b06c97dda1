#include "common/ClientOptions.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

class tst_options : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsSources_data();
    void readsSources();
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

int main(int argc, char** argv)
{
    return RunTests<tst_options>(argc, argv);
}

#include "tst_options.moc"
