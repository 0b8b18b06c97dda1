#include "archive/Archive.h"
#include "archive/FileNames.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <QDir>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <sys/resource.h>

namespace {

bool writeFile(const QString& path, int bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(QByteArray(bytes, 'x')) == bytes;
}

SegmentContent plays(qint64 ms)
{
    return {SegmentContent::Plays, ms, {}};
}

/// Finishes a part of a second.
QString addPart(Archive& archive, const QString& camera, qint64 startMs, bool sample = false, int bytes = 100)
{
    const QString path = archive.paths()->beginPart(camera, startMs, sample);
    if (!writeFile(path, bytes))
        qFatal("can't write %s", qPrintable(path));
    archive.finish({path, camera, startMs, startMs + 1000, true, sample});
    return ArchivePaths::wholePath(path);
}

bool openAll(Archive& archive, QString* error)
{
    const bool isOpen = archive.open(error);
    for (int i = 0; isOpen && i < 1000 && archive.recoverSome(); ++i) {
    }
    return isOpen;
}

void runSql(const QString& path, const QStringList& statements)
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "test");
        database.setDatabaseName(path);
        if (!database.open())
            qFatal("can't open %s", qPrintable(path));
        for (const QString& statement : statements)
            QSqlQuery(database).exec(statement);
    }
    QSqlDatabase::removeDatabase("test");
}

} // namespace

class tst_archive : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void keepsAndFindsSegments();
    void recoversWhatAnEarlierRunLeft();
    void keepsWhatNobodyCanRead();
    void remakesADamagedIndex_data();
    void remakesADamagedIndex();
    void bringsAnOldIndexToThisVersion();
    void leavesANewerIndexAlone();
    void namesAreReadableAndApart();
    void deletesTheOldestOverTheLimit();
    void deletesNothingOutside();
    void removesTheSampleInOneStep();
    void tellsWhyItCannotOpen();
};

void tst_archive::keepsAndFindsSegments()
{
    const QTemporaryDir root;
    QString error;
    Archive archive(root.path());
    QVERIFY2(archive.open(&error), qPrintable(error));
    for (const qint64 start : {5000, 1000, 9000})
        QVERIFY(QFile::exists(addPart(archive, "Gate / 1", start)));
    const ArchiveIndex& index = archive.index();
    QVERIFY(archive.paths()->isOwnFile(index.oldest(1).first().path));
    // A clock that was set back gives the same moment twice.
    QVERIFY(addPart(archive, "Gate / 1", 1000) != addPart(archive, "Gate / 1", 1000));
    QCOMPARE(index.segments("Gate / 1", 0, 2000).size(), 3);
    QVERIFY(!QFile::exists(addPart(archive, "Gate / 1", 20000, false, 0)));
    QVERIFY(archive.takeTroubles().isEmpty());
}

void tst_archive::recoversWhatAnEarlierRunLeft()
{
    const QTemporaryDir root;
    QString error;
    QString unfinished, open;
    {
        Archive archive(root.path());
        QVERIFY(archive.open(&error));
        addPart(archive, "A", 1000);
        unfinished = archive.paths()->beginPart("A", 60000);
        QVERIFY(writeFile(unfinished, 20));
    }
    for (const char* tail : {"", "-wal", "-shm"})
        QFile::remove(root.path() + "/index.sqlite" + tail);
    QVERIFY(writeFile(root.path() + "/A/stranger.txt", 5));

    Archive archive(root.path(), [](const QString&) { return plays(2500); });
    open = archive.paths()->beginPart("A", 90000);
    QVERIFY(writeFile(open, 10));
    QVERIFY(openAll(archive, &error));
    const QVector<Segment> found = archive.index().segments("A", 0, 1000000);
    QCOMPARE(found.size(), 2);
    QCOMPARE(found.at(0).endMs, qint64(3500));
    QCOMPARE(found.at(1).startMs, qint64(60000));
    QVERIFY(!QFile::exists(unfinished) && archive.paths()->isOwnFile(found.at(1).path));
    QVERIFY(QFile::exists(root.path() + "/A/stranger.txt") && QFile::exists(open));

    QVERIFY(QFile::remove(archive.paths()->full(found.at(0).path)));
    Archive again(root.path(), [](const QString&) { return plays(2500); });
    QVERIFY(openAll(again, &error));
    // The part is open no longer: its writer is gone.
    QCOMPARE(again.index().segments("A", 0, 1000000).size(), 2);
    QVERIFY(!QFile::exists(open));
}

void tst_archive::keepsWhatNobodyCanRead()
{
    const QTemporaryDir root;
    const QByteArray cluster("\x1f\x43\xb6\x75");
    const QVector<QByteArray> contents{"", QByteArray(5000, '\0'), "garbage",
                                       "garbage" + cluster + "picture"};
    ArchivePaths paths(root.path());
    QStringList parts;
    for (int i = 0; i < contents.size(); ++i) {
        parts.append(paths.beginPart("A", i * 60000));
        QFile file(parts.last());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contents[i]) == contents[i].size());
    }
    {
        // Nothing can be opened: nothing is proven.
        rlimit before{}, none{};
        getrlimit(RLIMIT_NOFILE, &before);
        none.rlim_max = before.rlim_max;
        setrlimit(RLIMIT_NOFILE, &none);
        const auto kind = contentOf(parts.first()).kind;
        setrlimit(RLIMIT_NOFILE, &before);
        QCOMPARE(kind, SegmentContent::Unreadable);
    }
    QString error;
    Archive archive(root.path());
    QVERIFY(openAll(archive, &error));
    for (int i = 0; i < parts.size(); ++i)
        QCOMPARE(QFile::exists(parts[i]), i == 3);
    const QStringList troubles = archive.takeTroubles();
    QVERIFY(troubles.size() == 1 && troubles.first().contains(parts.last()));
}

void tst_archive::remakesADamagedIndex_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<int>("bytes");
    QTest::newRow("gone") << QByteArray() << -1;
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("cut short") << QByteArray() << 9000;
    QTest::newRow("no index") << QByteArray("<html>") << 40000;
    QTest::newRow("overwritten within") << QByteArray("SQLite format 3") << 5000;
}

void tst_archive::remakesADamagedIndex()
{
    QFETCH(QByteArray, start);
    QFETCH(int, bytes);
    const QTemporaryDir root;
    const QString path = root.path() + "/index.sqlite";
    QString error;
    {
        Archive archive(root.path());
        QVERIFY(archive.open(&error));
        for (int i = 0; i < 20; ++i)
            addPart(archive, "A", i * 60000);
    }
    QFile file(path);
    QVERIFY(bytes >= 0 ? file.open(QIODevice::ReadWrite) && file.resize(bytes) : file.remove());
    if (!start.isEmpty())
        QVERIFY(file.write(start + QByteArray(bytes - start.size(), 'x')) == bytes);
    file.close();
    Archive archive(root.path(), [](const QString&) { return plays(1000); });
    QVERIFY2(openAll(archive, &error), qPrintable(error));
    QCOMPARE(archive.index().segments("A", 0, 1 << 30).size(), 20);
    addPart(archive, "A", 1 << 29);
    QCOMPARE(archive.flush(), ArchiveIndex::Result::Done);
    QCOMPARE(QFile::exists(path + ".damaged"), bytes > 0);
}

void tst_archive::bringsAnOldIndexToThisVersion()
{
    const QTemporaryDir root;
    runSql(
        root.path() + "/index.sqlite",
        {"CREATE TABLE segment (path TEXT PRIMARY KEY, camera TEXT NOT NULL, start_ms INTEGER NOT NULL, "
         "end_ms "
         "INTEGER NOT NULL, bytes INTEGER NOT NULL, sample INTEGER NOT NULL)",
         "CREATE TABLE span (camera TEXT NOT NULL, kind INTEGER NOT NULL, start_ms INTEGER NOT NULL, end_ms "
         "INTEGER NOT NULL, sample INTEGER NOT NULL)",
         "INSERT INTO segment VALUES ('A/1.mkv', 'A', 1000, 2000, 5, 0)",
         "INSERT INTO span VALUES ('A', 1, 1000, 1100, 0)",
         "INSERT INTO span VALUES ('A', 1, 1000, 1200, 0)"});
    QString error;
    Archive archive(root.path());
    QVERIFY2(archive.open(&error), qPrintable(error));
    QCOMPARE(archive.index().segments("A", 0, 9000).size(), 1);
    QCOMPARE(archive.index().spans("A", 0, 9000).size(), 1);
    archive.setSpans({{"A", {Span::Motion, 1000, 1500}}});
    QCOMPARE(archive.index().spans("A", 0, 9000).first().endMs, qint64(1500));
}

void tst_archive::leavesANewerIndexAlone()
{
    const QTemporaryDir root;
    const QString path = root.path() + "/index.sqlite";
    runSql(path, {"PRAGMA user_version=99", "CREATE TABLE future (a)"});
    QString error;
    Archive archive(root.path());
    QVERIFY(!archive.open(&error));
    QVERIFY(error.endsWith("newer version"));
    QVERIFY(!QFile::exists(path + ".damaged"));
}

void tst_archive::namesAreReadableAndApart()
{
    const QString tower = QString::fromUtf8("\xf0\x9f\x97\xbc");
    const QStringList names{"North gate",
                            "..",
                            ".",
                            "",
                            " ",
                            "a/b",
                            "a\\b",
                            "a:b",
                            "a\nb",
                            "a-b",
                            "CON/",
                            QString::fromUtf8("大门 – Çà"),
                            QString(300, QChar(0x5927)),
                            QString(301, QChar(0x5927)),
                            tower.repeated(150),
                            tower.repeated(149) + "x",
                            QString(QChar(0xd800)),
                            QString(QChar(0xd801)),
                            "North gate "};
    QSet<QString> files;
    for (const QString& name : names) {
        const QString file = fileNameOf(name);
        QVERIFY2(file.toUtf8().size() <= 120 && !file.contains('/') && !file.startsWith('.'),
                 qPrintable(file));
        QVERIFY(QString::fromUtf8(file.toUtf8()) == file);
        files.insert(file);
    }
    QCOMPARE(files.size(), names.size());
    QCOMPARE(fileNameOf(names[0]), names[0]);
    QVERIFY(fileNameOf(names[12]).startsWith(QString(30, QChar(0x5927))));

    const QTemporaryDir root;
    ArchivePaths paths(root.path());
    for (const QString& name : {names[8], names[11], names[12], names[14]}) {
        const QString part = paths.beginPart(name, 1000);
        QVERIFY(writeFile(part, 1));
        QCOMPARE(ArchivePaths::read(part)->camera, name);
    }
    QCOMPARE(ArchivePaths::read(root.path() + "/Gate %2F 1/1970-01-01/19700101-000001000.mkv")->camera,
             QString("Gate / 1"));
}

void tst_archive::deletesTheOldestOverTheLimit()
{
    const QTemporaryDir root;
    QString error;
    {
        Archive archive(root.path());
        QVERIFY(archive.open(&error));
        for (const qint64 start : {3000, 1000, 2000}) {
            addPart(archive, "A", start);
            archive.setSpans({{"A", {Span::Motion, start + 100, start + 200}}});
        }
        archive.limit({0, 0}, 10000);
        // They have only just come.
        QCOMPARE(archive.index().totalBytes(), qint64(300));
    }
    Archive archive(root.path());
    QVERIFY(archive.open(&error));
    archive.setSpans({{"A", {Span::Alarm, 9000, 9001}}});
    archive.limit({250, 0}, 10000);
    archive.limit({200, 0}, 10000);
    QCOMPARE(archive.index().totalBytes(), qint64(200));
    QCOMPARE(archive.index().oldest(1).first().startMs, qint64(2000));
    // What is in no segment yet stays.
    QCOMPARE(archive.index().spans("A", 0, 10000).size(), 3);
    const qint64 dayMs = 86'400'000;
    archive.limit({1000, 1}, dayMs + 3500);
    QCOMPARE(archive.index().totalBytes(), qint64(100));
    archive.limit({0, 0}, 10000);
    QCOMPARE(archive.index().totalBytes(), qint64(0));
    QCOMPARE(QDir(root.path() + "/A/1970-01-01").entryList(QDir::Files), QStringList());
}

void tst_archive::deletesNothingOutside()
{
    const QTemporaryDir home;
    const QString outside = home.path() + "/letters/today/1.mkv";
    QVERIFY(QDir(home.path()).mkpath("letters/today") && writeFile(outside, 10));
    QVERIFY(QDir(home.path()).mkpath("archive") &&
            QFile::link(home.path() + "/letters", home.path() + "/archive/A"));
    const QString rows[] = {"../letters/today/1.mkv", outside,        "B/../../letters/today/1.mkv",
                            "A/today/1.mkv",          "index.sqlite", ".."};
    Archive archive(home.path() + "/archive");
    QString error;
    QVERIFY(archive.open(&error));
    const auto plant = [&] {
        for (const QString& path : rows)
            QVERIFY(archive.index().add({path, "A", 1000, 2000, 10, false}));
    };
    plant();
    QVERIFY(archive.open(&error));
    archive.limit({0, 0}, 10000);
    QCOMPARE(archive.index().totalBytes(), qint64(0));
    plant();
    Archive again(home.path() + "/archive");
    QVERIFY(openAll(again, &error));
    QVERIFY(again.index().oldest(10).isEmpty());
    QVERIFY(QFile::exists(outside) && QFile::exists(home.path() + "/archive/index.sqlite"));
}

void tst_archive::removesTheSampleInOneStep()
{
    const QTemporaryDir root;
    QString error;
    Archive archive(root.path());
    QVERIFY(archive.open(&error));
    for (const bool sample : {true, false}) {
        const qint64 start = sample ? 1000 : 5000;
        addPart(archive, "A", start, sample);
        archive.setSpans({{"A", {Span::Alarm, start, start + 10}, sample}});
    }
    QCOMPARE(archive.removeSample(), 1);
    QCOMPARE(archive.index().segments("A", 0, 10000).size(), 1);
    QCOMPARE(archive.index().spans("A", 0, 10000).size(), 1);
    QCOMPARE(archive.removeSample(), 0);
}

void tst_archive::tellsWhyItCannotOpen()
{
    const QTemporaryDir root;
    QVERIFY(writeFile(root.path() + "/file", 3));
    QVERIFY(QDir().mkpath(root.path() + "/taken/index.sqlite"));
    for (const char* name : {"/file", "/taken"}) {
        QString error;
        Archive archive(root.path() + name);
        QVERIFY(!archive.open(&error));
        QVERIFY(!error.isEmpty() && !error.contains('\n'));
        QVERIFY(!archive.index().isOpen());
    }
}

int main(int argc, char** argv)
{
    return RunTests<tst_archive, QCoreApplication>(argc, argv);
}

#include "tst_archive.moc"
