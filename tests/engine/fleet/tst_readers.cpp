#include "FleetTestCase.h"
#include "Told.h"
#include "archive/ArchiveReader.h"
#include "fleet/FleetReader.h"
#include "fleet/FleetSchema.h"
#include "fleet/PlainFleetReader.h"
#include "support/RunTests.h"

#include <QSqlQuery>

namespace {

constexpr qint64 Noon = 1'700'000'000'000;
constexpr qint64 Minute = 60'000;
constexpr qint64 Month = 31 * 86'400'000LL;
const QString Odd = "Gate \"1\" \\ {ü} %2F";

using Times = QVector<QPair<qint64, qint64>>;

/// By their distance from noon.
template <class List> Times timesOf(const List& list)
{
    Times times;
    for (const auto& one : list)
        times.append({one.startMs - Noon, one.endMs - Noon});
    return times;
}

/// No list is none.
template <class List> Times timesOf(const std::optional<List>& list)
{
    return list ? timesOf(*list) : Times({{-1, -1}});
}

/// Over gaps of less than a second.
Times joined(const QVector<Segment>& segments)
{
    Times times;
    for (const auto& [from, to] : timesOf(segments)) {
        if (!times.isEmpty() && from - times.last().second < 1000)
            times.last().second = qMax(times.last().second, to);
        else
            times.append({from, to});
    }
    return times;
}

} // namespace

/// What every reader promises of what a recorder noted in its own index, whichever index it reads.
class tst_readers : public FleetTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void findsSegments_data() { addReaders(); }
    void findsSegments();
    void findsMarks_data() { addReaders(); }
    void findsMarks();
    void tellsWhenManyWereRecorded_data() { addReaders(); }
    void tellsWhenManyWereRecorded();
    void forgetsWhatIsDeleted_data() { addReaders(); }
    void forgetsWhatIsDeleted();
    void readsOnAfterTheIndexWasAway_data() { addReaders(); }
    void readsOnAfterTheIndexWasAway();
    void leavesANewerIndexAlone_data() { addReaders(); }
    void leavesANewerIndexAlone();

private:
    enum class Kind
    {
        Archive,
        Plain,
        Desk
    };

    static void addReaders();
    void makeReader(Kind kind);
    int setVersion(Kind kind, int version);
    bool add(const QString& camera, qint64 fromMs, qint64 toMs, const QString& path = {});
    bool addMark(const QString& camera, Span::Kind kind, qint64 fromMs, qint64 toMs);
    Times segments(const QString& camera, qint64 fromMs, qint64 toMs);
    Times marks(const QString& camera, qint64 fromMs, qint64 toMs);

    std::unique_ptr<Told> m_told;
    std::unique_ptr<RecordingReader> m_reader;
};

void tst_readers::addReaders()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("an archive's own index") << int(Kind::Archive);
    QTest::newRow("the shared index") << int(Kind::Plain);
    QTest::newRow("the shared index, of a desk") << int(Kind::Desk);
}

void tst_readers::makeReader(Kind kind)
{
    if (kind == Kind::Archive)
        m_reader = std::make_unique<ArchiveReader>(std::make_shared<ArchivePaths>(m_told->directory.path()));
    else if (kind == Kind::Plain)
        m_reader = std::make_unique<PlainFleetReader>(m_cluster->address());
    else
        m_reader = std::make_unique<FleetReader>(m_cluster->address());
}

void tst_readers::init()
{
    FleetTestCase::init();
    m_told = std::make_unique<Told>(m_cluster->address(), recorder("one"));
    m_told->sender.start();
    QFETCH(int, kind);
    makeReader(Kind(kind));
}

void tst_readers::cleanup()
{
    m_reader.reset();
    m_told.reset();
    FleetTestCase::cleanup();
}

bool tst_readers::add(const QString& camera, qint64 fromMs, qint64 toMs, const QString& path)
{
    const QString name = path.isEmpty() ? QString("x/%1.mkv").arg(fromMs) : path;
    return m_told->index.add({name, camera, Noon + fromMs, Noon + toMs, 1000});
}

bool tst_readers::addMark(const QString& camera, Span::Kind kind, qint64 fromMs, qint64 toMs)
{
    return m_told->index.addSpan(camera, {kind, Noon + fromMs, Noon + toMs});
}

Times tst_readers::segments(const QString& camera, qint64 fromMs, qint64 toMs)
{
    return timesOf(m_reader->segments(camera, Noon + fromMs, Noon + toMs));
}

Times tst_readers::marks(const QString& camera, qint64 fromMs, qint64 toMs)
{
    return timesOf(m_reader->spans(camera, Noon + fromMs, Noon + toMs));
}

void tst_readers::findsSegments()
{
    const Times three{{1000, 2000}, {5000, 6000}, {9000, 10000}};
    for (const auto& [from, to] : {three[1], three[0], three[2]})
        QVERIFY(add(Odd, from, to));
    QTRY_COMPARE(segments(Odd, 1999, 9001), three);
    QCOMPARE(segments(Odd, 2000, 9000), Times({three[1]}));
    QCOMPARE(segments("Other", 0, 20000), Times());
    QCOMPARE(m_reader->newestMs(Odd).value_or(0), Noon + 9000);
    QVERIFY(!m_reader->newestMs("Other"));
    const auto stretch = m_reader->stretch(Odd, Noon + 1500, Noon + 2500);
    QVERIFY(stretch && stretch->pieces.size() == 1 && stretch->pieces.first().path.endsWith("/x/1000.mkv"));
    QCOMPARE(stretch->nextMs.value_or(0), Noon + 5000);
    // A clock that was set back gives the same moment twice; a file may grow, and lie in another month.
    QVERIFY(add(Odd, 1000, 3000, "x/again.mkv") && add(Odd, 9000, 20000));
    QVERIFY(add(Odd, Month, Month + 1000) && add(Odd, -5000, -5000 - Noon));
    QTRY_COMPARE(segments(Odd, -Month, 2 * Month).size(), 5);
    QCOMPARE(segments(Odd, 2000, 5000), Times({{1000, 3000}}));
    QCOMPARE(segments(Odd, 19999, Month + 1), Times({{9000, 20000}, {Month, Month + 1000}}));
}

void tst_readers::findsMarks()
{
    // Marks stay no longer than recordings.
    QVERIFY(add("Gate", 0, 1000));
    QVERIFY(addMark("Gate", Span::Motion, 0, 500) && addMark("Gate", Span::Alarm, 0, 90'000'000));
    QVERIFY(addMark("Gate", Span::Motion, 2000, 2500) && addMark("Lane", Span::Motion, 0, 1));
    // One that goes on is still one, and however early it begins, it is found where it ends.
    QVERIFY(addMark("Gate", Span::Motion, 0, 1500));
    QTRY_COMPARE(marks("Gate", 2500, 89'999'999), Times({{0, 90'000'000}}));
    QTRY_COMPARE(marks("Gate", 1499, 1500).size(), 2);
    QCOMPARE(marks("Gate", 1500, 2001), Times({{0, 90'000'000}, {2000, 2500}}));
    QCOMPARE(m_reader->spanAfter("Gate", Noon).value_or(Span()).endMs, Noon + 2500);
    QVERIFY(!m_reader->spanAfter("Gate", Noon + 2000));
    QCOMPARE(m_reader->spanBefore("Gate", Noon + 2000).value_or(Span()).startMs, Noon);
    QVERIFY(!m_reader->spanBefore("Gate", Noon));
}

/// Of ten minutes.
void tst_readers::tellsWhenManyWereRecorded()
{
    const std::pair<Times, Times> cases[] = {
        {{{0, Minute}, {Minute, 2 * Minute}}, {{0, 2 * Minute}}},
        {{{0, 5000}, {5999, 7000}}, {{0, 7000}}},
        {{{0, 5000}, {6000, 7000}}, {{0, 5000}, {6000, 7000}}},
        {{{0, 9000}, {1000, 2000}, {3000, 4000}}, {{0, 9000}}},
        {{{-9 * Minute, 1}, {-Minute, -Minute + 1}}, {{-9 * Minute, 1}}},
        {{{-Minute, 0}}, {}},
        {{{10 * Minute, 11 * Minute}}, {}},
    };
    QStringList cameras;
    for (const auto& [recorded, told] : cases) {
        cameras.append(Odd + QString::number(cameras.size()));
        for (const auto& [from, to] : recorded)
            QVERIFY(add(cameras.last(), from, to, QString("%1/%2.mkv").arg(cameras.size()).arg(from)));
    }
    QVERIFY(addMark("Lane", Span::Alarm, 1, 2));
    cameras.append("Lane");
    const auto times = [&] { return m_reader->times(cameras, Noon, Noon + 10 * Minute); };
    QTRY_COMPARE(timesOf(times().value("Lane").spans), Times({{1, 2}}));
    const auto found = times();
    for (int i = 0; i < int(std::size(cases)); ++i)
        QVERIFY2(joined(found[cameras[i]].segments) == cases[i].second, qPrintable(QString::number(i)));
}

void tst_readers::forgetsWhatIsDeleted()
{
    for (const qint64 from : {0, 1000, 2000})
        QVERIFY(add("Gate", from, from + 1000) && addMark("Gate", Span::Motion, from + 100, from + 200));
    QVERIFY(addMark("Gate", Span::Alarm, 900, 1100) && addMark("Gate", Span::Alarm, 5000, 5100));
    QTRY_COMPARE(marks("Gate", 0, 9000).size(), 5);
    const auto oldest = m_told->index.oldest(1);
    QVERIFY(oldest.size() == 1 && m_told->index.remove(oldest.first()));
    // What another segment has still, or none has yet, stays.
    QTRY_COMPARE(marks("Gate", 0, 9000), Times({{900, 1100}, {1100, 1200}, {2100, 2200}, {5000, 5100}}));
    QTRY_COMPARE(segments("Gate", 0, 9000), Times({{1000, 2000}, {2000, 3000}}));
}

void tst_readers::readsOnAfterTheIndexWasAway()
{
    QFETCH(int, kind);
    // Qt's driver says so where the server goes while a connection is made or watched.
    const ExpectedWarning gone("no connection to the server");
    const ExpectedWarning unknown("This version of PostgreSQL is not supported");
    const ExpectedWarning closed("QSocketNotifier: Invalid socket");
    QVERIFY(add("Gate", 0, 1000));
    QTRY_COMPARE(segments("Gate", 0, 1000).size(), 1);
    const QString path = m_told->directory.path() + "/index.sqlite";
    if (Kind(kind) == Kind::Archive)
        QVERIFY(QFile::rename(path, path + ".away"));
    else
        m_cluster->stop();
    // Nobody knows; the archive holds it nonetheless.
    QTRY_COMPARE(segments("Lane", 0, 1000), Times({{-1, -1}}));
    QVERIFY(!m_reader->stretch("Lane", Noon, Noon + 1000) && !m_reader->spanAfter("Lane", Noon));
    if (Kind(kind) == Kind::Archive)
        QVERIFY(QFile::rename(path + ".away", path));
    else
        m_cluster->start();
    QTRY_COMPARE(segments("Lane", 0, 1000), Times());
    QCOMPARE(segments("Gate", 0, 1000), Times({{0, 1000}}));
    QVERIFY(Kind(kind) == Kind::Archive || m_database->open());
}

/// Of an index, or what it was before.
int tst_readers::setVersion(Kind kind, int version)
{
    if (kind != Kind::Archive) {
        m_database->run("UPDATE schema_version SET version = ?", {version});
        return FleetSchema::Version;
    }
    int before = -1;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "version");
        database.setDatabaseName(m_told->directory.path() + "/index.sqlite");
        database.open();
        QSqlQuery query("PRAGMA user_version", database);
        before = query.next() ? query.value(0).toInt() : before;
        query.exec(QString("PRAGMA user_version=%1").arg(version));
    }
    QSqlDatabase::removeDatabase("version");
    return before;
}

void tst_readers::leavesANewerIndexAlone()
{
    QFETCH(int, kind);
    QVERIFY(add("Gate", 0, 1000));
    QTRY_COMPARE(segments("Gate", 0, 1000).size(), 1);
    m_reader.reset();
    const int version = setVersion(Kind(kind), 99);
    makeReader(Kind(kind));
    const auto* desk = dynamic_cast<FleetReader*>(m_reader.get());
    QTRY_VERIFY(!desk || desk->away().contains("version"));
    QCOMPARE(segments("Gate", 0, 1000), Times({{-1, -1}}));
    setVersion(Kind(kind), version);
    QTRY_COMPARE(segments("Gate", 0, 1000).size(), 1);
}

int main(int argc, char** argv)
{
    return RunTests<tst_readers, QCoreApplication>(argc, argv);
}

#include "tst_readers.moc"
