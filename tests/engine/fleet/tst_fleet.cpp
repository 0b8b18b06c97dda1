#include "FleetTestCase.h"
#include "Told.h"
#include "fleet/FleetIndex.h"
#include "fleet/FleetReader.h"
#include "fleet/FleetSchema.h"
#include "support/RunTests.h"

#include <QDir>
#include <QUuid>

namespace {

constexpr qint64 Noon = 1'700'000'000'000;
constexpr qint64 Minute = 60'000;

Segment segmentAt(const QString& camera, qint64 startMs, qint64 lengthMs = Minute)
{
    return {camera + QString("/%1.mkv").arg(startMs), camera, startMs, startMs + lengthMs, 1000};
}

QVector<qint64> startsOf(const std::optional<QVector<Segment>>& segments)
{
    QVector<qint64> starts;
    for (const Segment& segment : segments.value_or(QVector<Segment>()))
        starts.append(segment.startMs);
    return starts;
}

} // namespace

class tst_fleet : public FleetTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void address_data();
    void address();
    void pathsStayBelow_data();
    void pathsStayBelow();
    void migratesOnce();
    void deliversOnceAndInOrder();
    void goesOnWithoutServer();
    void newSpoolReplacesWhatTheOldTold();
    void tellsAgainWhatTheServerLost();
    void poisonKeepsNothingBack();
    void keepsNoMoreThanItMust();
    void desksSeeChanges();
    void deskWaitsForNobody_data();
    void deskWaitsForNobody();
    void rolesAreHeldByTheServer_data();
    void rolesAreHeldByTheServer();
};

void tst_fleet::address_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isGood");
    QTest::newRow("whole") << "postgresql://me@db.example:5433/cameras?sslmode=verify-full" << true;
    QTest::newRow("service") << "postgresql:///?service=panedeck" << true;
    QTest::newRow("a password for all to see") << "postgresql://me:secret@db/cameras" << false;
    QTest::newRow("the same as a parameter") << "postgresql://db/cameras?password=secret" << false;
    QTest::newRow("another option in a value")
        << "postgresql://db/x?sslmode=disable%20password%3Dsecret" << false;
    QTest::newRow("a password in what is no URL") << "postgresql://me:secret%@a,b/x" << false;
    QTest::newRow("another kind") << "mysql://db/x" << false;
    QTest::newRow("nothing") << "" << false;
}

void tst_fleet::address()
{
    QFETCH(QString, text);
    QFETCH(bool, isGood);
    QString error;
    QCOMPARE(FleetAddress::parse(text, &error).has_value(), isGood);
    QCOMPARE(error.isEmpty(), isGood);
    QVERIFY(!error.contains("secret"));
}

void tst_fleet::pathsStayBelow_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("full");
    QTest::newRow("directory") << "/a"
                               << "Gate/1.mkv"
                               << "/a/Gate/1.mkv";
    QTest::newRow("file") << "file:///a%20b"
                          << "Gate #1/1.mkv"
                          << "/a b/Gate #1/1.mkv";
    QTest::newRow("http") << "https://one/rec"
                          << "Gate #1/é?.mkv"
                          << "https://one/rec/Gate%20%231/%C3%A9%3F.mkv";
    QTest::newRow("climbs") << "https://one/rec"
                            << "../../etc/passwd"
                            << "";
    QTest::newRow("absolute") << "/a"
                              << "/etc/passwd"
                              << "";
    QTest::newRow("another protocol") << "concat:/a"
                                      << "1.mkv"
                                      << "";
    QTest::newRow("relative") << "a"
                              << "1.mkv"
                              << "";
}

void tst_fleet::pathsStayBelow()
{
    QFETCH(QString, url);
    QFETCH(QString, path);
    QFETCH(QString, full);
    QCOMPARE(FleetPlace(url).full(path), full);
}

void tst_fleet::migratesOnce()
{
    // What the version before lacks comes to it.
    QVERIFY(m_database->run("DROP TABLE ptz_lease, deck_view") &&
            m_database->run("DROP FUNCTION tell_view, operator_at, take_ptz, ask_ptz, give_ptz, keep_ptz"));
    QVERIFY(
        m_database->run("DROP FUNCTION leased, tell_ready, let_go, take_leases, offer_leases, hold_leases") &&
        m_database->run("DROP VIEW rested, allowed") &&
        m_database->run("ALTER TABLE recorder DROP instance, DROP live") &&
        m_database->run("ALTER TABLE span DROP changed_in") &&
        m_database->run("DROP FUNCTION date_mark CASCADE") &&
        m_database->run("DROP FUNCTION join_recorder") &&
        m_database->run(
            "CREATE FUNCTION join_recorder(uuid, text, text, text) RETURNS void LANGUAGE sql AS ''"));
    QVERIFY(m_database->run("UPDATE schema_version SET version = 2"));
    QCOMPARE(FleetSchema::migrate(*m_database), FleetSchema::State::Current);
    QVERIFY(m_database->run("SELECT * FROM deck_view") &&
            m_database->run("SELECT instance, live FROM recorder"));
    QCOMPARE(FleetSchema::migrate(*m_database), FleetSchema::State::Current);
    QVERIFY(m_database->run("UPDATE schema_version SET version = 99"));
    QCOMPARE(FleetSchema::check(*m_database), FleetSchema::State::Newer);
    QCOMPARE(FleetSchema::migrate(*m_database), FleetSchema::State::Newer);
}

void tst_fleet::deliversOnceAndInOrder()
{
    Told told(m_cluster->address(), recorder("one"));
    FleetIndex fleet(*m_database);
    QVERIFY(told.index.add(segmentAt("Gate", Noon)));
    QVERIFY(told.index.add(segmentAt("Gate", Noon + 40 * 86'400'000LL)));
    QVERIFY(told.index.addSpan("Gate", {Span::Motion, Noon, Noon + 500}));
    told.sender.start();
    QTRY_VERIFY(told.isEmpty());
    QCOMPARE(startsOf(fleet.segments("Gate", 0, Segment::LastMs)),
             QVector<qint64>({Noon, Noon + 40 * 86'400'000LL}));
    QCOMPARE(fleet.segments("Gate", Noon + 1, Noon + 2)->first().path,
             "/archive/one/" + segmentAt("Gate", Noon).path);
    QVERIFY(m_database->run("UPDATE span SET acknowledged_by = 'me'"));
    // A span that goes on stays one and what others did to it stays too.
    QVERIFY(told.index.addSpan("Gate", {Span::Motion, Noon, Noon + 1500}));
    QVERIFY(told.index.remove(segmentAt("Gate", Noon + 40 * 86'400'000LL)));
    QTRY_VERIFY(told.isEmpty());
    QCOMPARE(fleet.spans("Gate", Noon, Noon + Minute)->first().endMs, Noon + 1500);
    QCOMPARE(startsOf(fleet.segments("Gate", 0, Segment::LastMs)), QVector<qint64>({Noon}));
    QSqlQuery query = m_database->query();
    QVERIFY(m_database->run(query, "SELECT acknowledged_by FROM span") && query.next());
    QCOMPARE(query.value(0).toString(), QString("me"));
    // Rows that come a second time, as their arrival was never learnt of, change nothing.
    QVERIFY(m_database->run("DELETE FROM segment"));
    QVERIFY(m_database->run(query, "SELECT recorder, id, last FROM spool") && query.next());
    const QVariantList again{
        query.value(0), query.value(1),
        R"([{"seq": 1, "what": 1, "gone": false, "path": "x", "camera": "Gate", "start_ms": 1,
                                 "end_ms": 2, "bytes": 1, "sample": false}])"};
    QVERIFY2(m_database->run("SELECT deliver(?::uuid, ?::uuid, ?::jsonb)", again),
             qPrintable(m_database->reason()));
    QCOMPARE(fleet.segments("Gate", 0, Segment::LastMs)->size(), 0);
}

void tst_fleet::goesOnWithoutServer()
{
    Told told(m_cluster->address(), recorder("one"));
    QStringList troubles;
    connect(&told.sender, &SpoolSender::troubled, this, [&](const QString& line) { troubles.append(line); });
    told.sender.start();
    QVERIFY(told.index.add(segmentAt("Gate", Noon)));
    QTRY_VERIFY(told.isEmpty());
    m_cluster->stop();
    for (int i = 1; i < 5; ++i)
        QVERIFY(told.index.add(segmentAt("Gate", Noon + i * Minute)));
    QTRY_COMPARE(troubles.size(), 1);
    m_cluster->start();
    QTRY_COMPARE(troubles.size(), 2);
    QVERIFY(!troubles.first().isEmpty() && troubles.last().isEmpty());
    QVERIFY(m_database->open());
    QCOMPARE(FleetIndex(*m_database).segments("Gate", 0, Segment::LastMs)->size(), 5);
}

void tst_fleet::newSpoolReplacesWhatTheOldTold()
{
    const FleetRecorder one = recorder("one");
    {
        Told told(m_cluster->address(), one);
        told.index.add(segmentAt("Gate", Noon));
        told.index.add(segmentAt("Gate", Noon + Minute));
        told.sender.start();
        QTRY_VERIFY(told.isEmpty());
    }
    // The index is gone; of the two files only one is found again.
    Told told(m_cluster->address(), one);
    told.index.add(segmentAt("Gate", Noon));
    told.sender.start();
    QTRY_VERIFY(told.isEmpty());
    FleetIndex fleet(*m_database);
    QCOMPARE(fleet.segments("Gate", 0, Segment::LastMs)->size(), 2);
    QVERIFY(told.index.noteWhole());
    QTRY_COMPARE(startsOf(fleet.segments("Gate", 0, Segment::LastMs)), QVector<qint64>({Noon}));
}

void tst_fleet::tellsAgainWhatTheServerLost()
{
    Told told(m_cluster->address(), recorder("one"));
    told.index.add(segmentAt("Gate", Noon));
    told.sender.start();
    QTRY_VERIFY(told.isEmpty());
    told.index.add(segmentAt("Gate", Noon + Minute));
    QTRY_VERIFY(told.isEmpty());
    // A replica that had the first one only takes its place.
    QVERIFY(m_database->run("DELETE FROM segment WHERE start_ms > ?", {Noon}));
    QVERIFY(m_database->run("UPDATE spool SET last = 1"));
    QStringList troubles;
    connect(&told.sender, &SpoolSender::troubled, this, [&](const QString& line) { troubles.append(line); });
    m_cluster->stop();
    QVERIFY(told.index.add(segmentAt("Gate", Noon + 2 * Minute)));
    QTRY_COMPARE(troubles.size(), 1);
    m_cluster->start();
    QTRY_COMPARE(troubles.size(), 2);
    QVERIFY(m_database->open());
    QCOMPARE(startsOf(FleetIndex(*m_database).segments("Gate", 0, Segment::LastMs)),
             QVector<qint64>({Noon, Noon + Minute, Noon + 2 * Minute}));
    // Another program with its number told a row meanwhile: by the numbers the next one would be known.
    QVERIFY(m_database->run("UPDATE spool SET last = last + 1"));
    QVERIFY(told.index.add(segmentAt("Gate", Noon + 3 * Minute)));
    QTRY_COMPARE(FleetIndex(*m_database).segments("Gate", 0, Segment::LastMs)->size(), 4);
}

void tst_fleet::poisonKeepsNothingBack()
{
    Told told(m_cluster->address(), recorder("one"));
    QVERIFY(m_database->run("ALTER TABLE segment ADD CHECK (camera <> 'Poison')"));
    QVERIFY(told.index.add(segmentAt("Poison", Noon)));
    QVERIFY(told.index.add(segmentAt(QString("Nul%1l").arg(QChar(0)), Noon)));
    QVERIFY(told.index.add(segmentAt("Gate", -5)));
    QVERIFY(told.index.add(segmentAt("Gate", Noon)));
    // What fails for another reason than the rows is tried again.
    QVERIFY(m_database->run("ALTER TABLE segment RENAME TO full_disk"));
    QStringList troubles;
    connect(&told.sender, &SpoolSender::troubled, this, [&](const QString& line) { troubles.append(line); });
    told.sender.start();
    QTRY_COMPARE(troubles.size(), 1);
    QVERIFY(m_database->run("ALTER TABLE full_disk RENAME TO segment"));
    QTRY_VERIFY(told.isEmpty());
    FleetIndex fleet(*m_database);
    QCOMPARE(startsOf(fleet.segments("Gate", 0, Segment::LastMs)), QVector<qint64>({Noon}));
    QCOMPARE(fleet.segments("Null", 0, Segment::LastMs)->size(), 1);
    // Nor does one that was not taken last make all be told once more.
    QVERIFY(told.index.add(segmentAt("Poison", Noon + Minute)));
    QTRY_VERIFY(told.isEmpty());
    QVERIFY(m_database->run("DELETE FROM segment") && told.index.add(segmentAt("Gate", Noon + Minute)));
    QTRY_VERIFY(told.isEmpty());
    QCOMPARE(startsOf(fleet.segments("Gate", 0, Segment::LastMs)), QVector<qint64>({Noon + Minute}));
}

void tst_fleet::keepsNoMoreThanItMust()
{
    Told told(m_cluster->address(), recorder("one"));
    told.sender.start();
    for (int i = 0; i < 5; ++i) {
        QVERIFY(told.index.addSpan("Gate", {Span::Motion, Noon, Noon + i}));
        QTRY_VERIFY(told.isEmpty());
    }
    QVERIFY(told.index.add(segmentAt("Gate", Noon + 40 * 86'400'000LL)));
    QTRY_VERIFY(told.isEmpty());
    QSqlQuery query = m_database->query();
    QVERIFY(m_database->run(query, "SELECT count(*) FROM change") && query.next());
    QCOMPARE(query.value(0).toInt(), 2);
    QVERIFY(m_database->run(query, "SELECT drop_old_months(), drop_old_months()") && query.next());
    QCOMPARE(query.value(0).toInt(), 2);
    QCOMPARE(query.value(1).toInt(), 0);
    QCOMPARE(FleetIndex(*m_database).spans("Gate", 0, Segment::LastMs)->size(), 0);
    QCOMPARE(FleetIndex(*m_database).segments("Gate", 0, Segment::LastMs)->size(), 1);
}

void tst_fleet::desksSeeChanges()
{
    Told told(m_cluster->address(), recorder("one"));
    told.sender.start();
    FleetReader desk(m_cluster->address());
    QStringList seen;
    int cameras = -1;
    connect(&desk, &FleetReader::changed, this, [&](const QString& camera) { seen.append(camera); });
    connect(&desk, &FleetReader::camerasRead, this, [&](const auto& all) { cameras = all.size(); });
    QTRY_VERIFY(desk.away().isEmpty() && cameras == 0);
    QTRY_COMPARE(seen, QStringList({QString()}));
    QVERIFY(told.index.add(segmentAt("Gate", Noon)));
    QTRY_VERIFY(seen.contains("Gate"));
    // A server that is busy for a moment is not waited for, but asked again.
    const auto stretch = [](auto&& reader, qint64 from, qint64 to) {
        return reader.stretch("Gate", from, to).value_or(TrackStretch());
    };
    QTRY_COMPARE(startsOf(desk.segments("Gate", Noon, Noon + 1)), QVector<qint64>({Noon}));
    QTRY_COMPARE(stretch(desk, Noon - Minute, Noon).nextMs.value_or(0), Noon);
    QTRY_COMPARE(desk.times({"Gate", "Lane"}, Noon, Noon + 1).size(), 2);
    QTRY_COMPARE(desk.newestMs("Gate").value_or(0), Noon);
    QTRY_COMPARE(stretch(*desk.readerMaker()(), Noon, Noon + 1).pieces.size(), 1);
    QVERIFY(told.index.addSpan("Gate", {Span::Alarm, Noon, Noon + 1}));
    QVERIFY(told.index.addSpan("Lane", {Span::Alarm, Noon, Noon + 1}));
    QTRY_COMPARE(desk.spanAfter("Gate", Noon - 1).value_or(Span()).kind, Span::Alarm);
    QTRY_COMPARE(desk.times({"Gate", "Lane"}, Noon, Noon + 1)["Lane"].spans.size(), 1);
    addCameras(3);
    QTRY_COMPARE(cameras, 3);
    FleetReader other(m_cluster->address());
    QHash<QString, QHash<qint64, bool>> marks; ///< all that were told, and whether they are acknowledged
    connect(&other, &FleetReader::marked, this, [&](const QString& camera, const auto& all) {
        for (const FleetMark& mark : all)
            marks[camera].insert(mark.span.startMs, mark.isAcknowledged);
    });
    const auto isSeen = [&](const QString& camera, qint64 startMs) { return marks[camera].value(startMs); };
    QTRY_VERIFY(other.away().isEmpty());
    QString error;
    QVERIFY(!desk.changeView({QString(61, 'x'), "{}"}, "", &error) && error.contains("name_check"));
    QVERIFY(desk.changeView({"x", "{}"}, "", &error));
    desk.acknowledge("Gate", Noon);
    QTRY_VERIFY(isSeen("Gate", Noon));
    // What happens while the connection is lost is told afterwards, and what is known is shown till then.
    m_cluster->stop();
    QTRY_VERIFY(!desk.away().isEmpty());
    QCOMPARE(desk.segments("Gate", Noon, Noon + 1)->size(), 1);
    QVERIFY(told.index.add(segmentAt("Yard", Noon)));
    QVERIFY(!desk.segments("Lane", Noon, Noon + 1));
    QCOMPARE(desk.times({"Gate", "Yard"}, Noon, Noon + 1).keys(), QStringList({"Gate"}));
    marks.clear();
    desk.acknowledge("Lane", Noon);
    constexpr int Many = 30;
    for (int i = 1; i <= Many; ++i)
        QVERIFY(told.index.addSpan("Gate", {Span::Alarm, Noon + i * Minute, Noon + i * Minute + 1}));
    // One of a camera of which nothing was told before, and one of a recorder whose clock is ahead.
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    for (const qint64 ms : {now - Minute, now, now + 2880 * Minute})
        QVERIFY(told.index.addSpan("Dock", {Span::Alarm, ms, ms + 1}));
    m_cluster->start();
    QTRY_VERIFY(seen.contains("Yard") && seen.contains("Lane"));
    QTRY_VERIFY(isSeen("Lane", Noon));
    QTRY_COMPARE(marks["Gate"].size(), Many);
    // What comes late is told, and the oldest of many when somebody acknowledges it.
    QVERIFY(told.index.addSpan("Gate", {Span::Alarm, Noon + 5, Noon + 6}));
    QTRY_VERIFY(marks["Gate"].contains(Noon + 5));
    desk.acknowledge("Gate", Noon + Minute);
    QTRY_VERIFY(isSeen("Gate", Noon + Minute));
    QVERIFY(desk.away().isEmpty());
    QCOMPARE(seen.count(QString()), 1);
    QCOMPARE(marks["Dock"].size(), 3);
    QVERIFY(told.index.addSpan("Dock", {Span::Alarm, now + 1, now + 2}));
    QTRY_VERIFY(marks["Dock"].contains(now + 1));
    // A server that counts from less than one did before knows what that one did not tell.
    QVERIFY(m_database->open() && m_database->run("TRUNCATE change RESTART IDENTITY"));
    QVERIFY(told.index.addSpan("Dock", {Span::Alarm, now + 3, now + 4}));
    QTRY_VERIFY(marks["Dock"].contains(now + 3));
    QCOMPARE(seen.count(QString()), 2);
}

void tst_fleet::deskWaitsForNobody_data()
{
    QTest::addColumn<bool>("isAtOnce");
    QTest::newRow("one by one") << false;
    QTest::newRow("at once") << true;
}

void tst_fleet::deskWaitsForNobody()
{
    QFETCH(bool, isAtOnce);
    FleetReader desk(m_cluster->address());
    QTRY_VERIFY(desk.away().isEmpty());
    QTRY_VERIFY(desk.segments("Gate", 0, 1));
    QVERIFY(m_database->run("BEGIN") && m_database->run("LOCK TABLE segment"));
    QElapsedTimer time;
    time.start();
    QStringList names;
    for (int i = 0; i < 64; ++i) {
        names.append(QString("Gate %1").arg(i));
        QVERIFY(isAtOnce || !desk.segments(names.last(), 0, 1));
    }
    QVERIFY(!isAtOnce || desk.times(names, 0, 1).isEmpty());
    QVERIFY2(time.elapsed() < 2000, qPrintable(QString::number(time.elapsed())));
    QStringList seen;
    connect(&desk, &FleetReader::changed, this, [&](const QString& camera) {
        // That of the question before may have come late, too.
        if (names.contains(camera))
            seen.append(camera);
    });
    QTRY_VERIFY(!desk.away().isEmpty());
    QVERIFY(m_database->run("ROLLBACK"));
    QTRY_COMPARE(seen.size(), 64);
    QTRY_VERIFY(desk.away().isEmpty());
    QVERIFY(isAtOnce ? desk.times(names, 0, 1).size() == 64 : desk.segments("Gate 63", 0, 1).has_value());
}

void tst_fleet::rolesAreHeldByTheServer_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<QString>("statement");
    QTest::addColumn<bool>("isAllowed");
    const auto row = [](const char* role, const char* statement, bool isAllowed) {
        QTest::addRow("%s: %s", role, statement) << role << statement << isAllowed;
    };
    row("viewer", "SELECT * FROM segment", true);
    row("viewer", "INSERT INTO camera (id, name) VALUES ('x', 'x')", false);
    row("viewer", "UPDATE span SET acknowledged_by = 'x'", false);
    row("viewer", "SELECT drop_months(9999999999999)", false);
    row("operator", "INSERT INTO camera (id, name) VALUES ('x', 'x')", true);
    row("operator", "UPDATE span SET acknowledged_by = 'x'", true);
    row("operator", "UPDATE span SET end_ms = 1", false);
    row("operator", "DELETE FROM segment", false);
    row("viewer", "SELECT take_ptz('x', gen_random_uuid(), 'x')", false);
    row("viewer", "INSERT INTO deck_view VALUES ('x', '{}')", false);
    row("operator", "INSERT INTO deck_view VALUES ('x', '{}')", true);
    row("operator", "DELETE FROM ptz_lease", false);
    row("recorder", "SELECT deliver(gen_random_uuid(), gen_random_uuid(), '[]')", false);
    row("recorder", "UPDATE lease SET ready = true", true);
    row("recorder", "DELETE FROM camera", false);
    row("recorder", "DELETE FROM segment", true);
    row("recorder", "SELECT drop_old_months()", true);
    row("recorder", "SELECT give_back(gen_random_uuid(), '{}')", true);
    row("operator", "SELECT join_recorder(gen_random_uuid(), '', '', '', gen_random_uuid(), 0)", false);
}

void tst_fleet::rolesAreHeldByTheServer()
{
    QFETCH(QString, role);
    QFETCH(QString, statement);
    QFETCH(bool, isAllowed);
    m_database->run(QString("DROP ROLE IF EXISTS a_%1").arg(role));
    QVERIFY(m_database->run(QString("CREATE ROLE a_%1 LOGIN IN ROLE panedeck_%1").arg(role)));
    FleetDatabase other(m_cluster->address("a_" + role));
    QVERIFY(other.open());
    QCOMPARE(other.run(statement), isAllowed);
    if (!isAllowed && !statement.contains("deliver("))
        QCOMPARE(other.result(), FleetDatabase::Result::Refused);
}

int main(int argc, char** argv)
{
    return RunTests<tst_fleet, QCoreApplication>(argc, argv);
}

#include "tst_fleet.moc"
