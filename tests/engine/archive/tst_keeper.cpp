#include "archive/ArchiveKeeper.h"
#include "archive/ArchiveLock.h"
#include "archive/ArchiveReader.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

namespace {

constexpr qint64 Forever = 1'000'000'000;

/// The bytes of a whole recording that nothing plays, which no recovery can take for one.
FinishedPart writePart(const ArchiveKeeper& keeper, qint64 startMs)
{
    const QString path = keeper.paths()->beginPart("Gate", startMs);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray("\x1f\x43\xb6\x75", 4)) != 4)
        qFatal("can't write %s", qPrintable(path));
    return {path, "Gate", startMs, startMs + 1000};
}

/// Another program that holds the index for itself.
class IndexHolder
{
public:
    explicit IndexHolder(const QString& path)
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "holder");
        database.setDatabaseName(path);
        QSqlQuery query(database.open() ? database : QSqlDatabase());
        if (!query.exec("BEGIN EXCLUSIVE"))
            qFatal("can't hold the index: %s", qPrintable(query.lastError().text()));
    }
    ~IndexHolder()
    {
        QSqlDatabase::database("holder").close();
        QSqlDatabase::removeDatabase("holder");
    }
};

/// All that the index knows lies in its own file then.
void emptyLog(const QString& path)
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "vandal");
        database.setDatabaseName(path);
        if (!database.open() || !QSqlQuery(database).exec("PRAGMA wal_checkpoint(TRUNCATE)"))
            qFatal("can't open %s", qPrintable(path));
    }
    QSqlDatabase::removeDatabase("vandal");
}

/// Puts something else in place of what the first pages refer to.
void overwritePages(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite) || !file.seek(4096) || file.write(QByteArray(8192, 'x')) != 8192)
        qFatal("can't write %s", qPrintable(path));
}

} // namespace

class tst_keeper : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void lockIsForOneAlone();
    void secondIsAViewer();
    void waitsForTheIndexBesides();
    void rebuildsTheIndexMeanwhile_data();
    void rebuildsTheIndexMeanwhile();
    void recordsWhereTheDirectoryWentAway();
    void saysWhyAnArchiveCannotBeUsed();

private:
    std::unique_ptr<ArchiveKeeper> keeper();
    int known(const ArchiveKeeper& keeper);

    std::unique_ptr<QTemporaryDir> m_root;
};

void tst_keeper::init()
{
    DeckTestCase::init();
    m_root = std::make_unique<QTemporaryDir>();
}

std::unique_ptr<ArchiveKeeper> tst_keeper::keeper()
{
    auto keeper = std::make_unique<ArchiveKeeper>(m_root->path() + "/archive", ArchiveLimits());
    keeper->start();
    return keeper;
}

int tst_keeper::known(const ArchiveKeeper& keeper)
{
    const auto found = ArchiveReader(keeper.paths()).segments("Gate", 0, Forever);
    return found ? found->size() : -1;
}

void tst_keeper::lockIsForOneAlone()
{
    QString error;
    ArchiveLock first, second;
    QCOMPARE(first.take(m_root->path(), &error), ArchiveLock::Answer::Taken);
    QCOMPARE(second.take(m_root->path(), &error), ArchiveLock::Answer::HeldElsewhere);
    QVERIFY(QFile::remove(m_root->path() + "/lock"));
    QVERIFY(!first.isTaken());
    QCOMPARE(second.take(m_root->path(), &error), ArchiveLock::Answer::Taken);
    QCOMPARE(first.take(m_root->path(), &error), ArchiveLock::Answer::HeldElsewhere);
    second.release();
    QCOMPARE(first.take(m_root->path(), &error), ArchiveLock::Answer::Taken);
}

void tst_keeper::secondIsAViewer()
{
    auto first = keeper();
    QTRY_COMPARE(first->role(), ArchiveRole::Recorder);
    const FinishedPart open = writePart(*first, 60'000);
    auto second = keeper();
    QTRY_COMPARE(second->role(), ArchiveRole::Viewer);
    // What a viewer is told to do to the archive it leaves undone.
    second->finish(open);
    QSignalSpy removed(second.get(), SIGNAL(sampleRemoved(int)));
    second->removeSample();
    QTRY_COMPARE(removed.count(), 1);
    QVERIFY(QFile::exists(open.path));

    QSignalSpy changed(second.get(), SIGNAL(changed(QString)));
    QTRY_VERIFY(changed.count() == 1);
    first->finish(open);
    QTRY_VERIFY_WITH_TIMEOUT(changed.count() == 2, 2000);
    QCOMPARE(changed[1][0].toString(), QString("Gate"));
    QCOMPARE(known(*second), 1);

    first.reset();
    QTRY_COMPARE(second->role(), ArchiveRole::Recorder);
    second->finish(writePart(*second, 120'000));
    QTRY_COMPARE(known(*second), 2);
}

void tst_keeper::waitsForTheIndexBesides()
{
    auto one = keeper();
    QTRY_COMPARE(one->role(), ArchiveRole::Recorder);
    one->finish(writePart(*one, 60'000));
    QTRY_COMPARE(known(*one), 1);
    {
        const IndexHolder holder(one->paths()->index());
        const FinishedPart part = writePart(*one, 120'000);
        QElapsedTimer timer;
        timer.start();
        one->finish(part);
        one->setSpans({{"Gate", {Span::Alarm, 120'000, 121'000}}});
        known(*one);
        QVERIFY(timer.elapsed() < 500);
        QTRY_VERIFY(QFile::exists(ArchivePaths::wholePath(part.path)));
        // Who comes now records as well, and indexes it later.
        one.reset();
        one = keeper();
        QTRY_COMPARE(one->role(), ArchiveRole::Recorder);
        one->finish(writePart(*one, 180'000));
    }
    QTRY_VERIFY(known(*one) >= 2);
    QCOMPARE(one->role(), ArchiveRole::Recorder);
}

void tst_keeper::rebuildsTheIndexMeanwhile_data()
{
    QTest::addColumn<int>("bytes");
    QTest::newRow("gone") << -1;
    QTest::newRow("emptied") << 0;
    QTest::newRow("cut short") << 100;
    QTest::newRow("overwritten within") << 4096;
}

void tst_keeper::rebuildsTheIndexMeanwhile()
{
    QFETCH(int, bytes);
    auto one = keeper();
    QTRY_COMPARE(one->role(), ArchiveRole::Recorder);
    one->finish(writePart(*one, 60'000));
    QTRY_COMPARE(known(*one), 1);
    QSignalSpy troubled(one.get(), SIGNAL(troubled(QString)));
    QFile file(one->paths()->index());
    emptyLog(file.fileName());
    if (bytes == 4096)
        overwritePages(file.fileName());
    else
        QVERIFY(bytes < 0 ? file.remove() : file.resize(bytes));
    one->finish(writePart(*one, 120'000));
    QTRY_VERIFY(troubled.count() > 0);
    QVERIFY(troubled[0][0].toString().contains("made anew"));
    one->finish(writePart(*one, 180'000));
    QTRY_VERIFY(known(*one) >= 1);
    QCOMPARE(one->role(), ArchiveRole::Recorder);
}

void tst_keeper::recordsWhereTheDirectoryWentAway()
{
    auto one = keeper();
    QTRY_COMPARE(one->role(), ArchiveRole::Recorder);
    QVERIFY(QDir(one->paths()->directory()).removeRecursively());
    QTRY_VERIFY(QFile::exists(one->paths()->directory() + "/lock"));
    one->finish(writePart(*one, 60'000));
    QTRY_COMPARE(known(*one), 1);
}

void tst_keeper::saysWhyAnArchiveCannotBeUsed()
{
    QFile obstacle(m_root->path() + "/archive");
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    const auto one = keeper();
    QTRY_COMPARE(one->role(), ArchiveRole::Unusable);
    QVERIFY(one->reason().startsWith("can't make the archive's directory"));
    QVERIFY(obstacle.remove());
    QTRY_COMPARE(one->role(), ArchiveRole::Recorder);
}

int main(int argc, char** argv)
{
    return RunTests<tst_keeper, QCoreApplication>(argc, argv);
}

#include "tst_keeper.moc"
