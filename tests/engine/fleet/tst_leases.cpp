#include "FleetTestCase.h"
#include "fleet/FleetIndex.h"
#include "fleet/LeaseTable.h"
#include "fleet/RecorderHealth.h"
#include "support/RunTests.h"

#include <QDir>
#include <QTemporaryDir>

/// Who of several recorders records which camera.
class tst_leases : public FleetTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void leasesAreSharedAndTakenOver();
    void leavesNoneOut();
    void handsOverWithoutGap();
    void givesBackWhatOthersCanRecord();
    void knowsItsOwnTrouble();
    void newArchiveTakesItsName();
    void oneOfTwoWithOneNumberRecords();

private:
    int held(LeaseTable& table);
    QStringList givenBack(LeaseTable& table, const QStringList& stalled);
};

int tst_leases::held(LeaseTable& table)
{
    const auto cameras = table.cameras();
    return cameras ? cameras->size() : -1;
}

QStringList tst_leases::givenBack(LeaseTable& table, const QStringList& stalled)
{
    const auto news = table.step({true, stalled});
    return news ? news->given : QStringList("?");
}

void tst_leases::leasesAreSharedAndTakenOver()
{
    addCameras(7);
    QVERIFY(m_database->run("UPDATE camera SET enabled = false WHERE id = 'c06'"));
    const FleetRecorder one = recorder("one");
    const FleetRecorder two = recorder("two");
    LeaseTable first(*m_database, one);
    LeaseTable second(*m_database, two);
    QVERIFY2(first.join() && second.join(), qPrintable(m_database->reason()));
    QVERIFY2(first.step({}), qPrintable(m_database->reason()));
    QCOMPARE(held(first), 6);
    // The second one finds nothing free until the first one knows of it and offers.
    QVERIFY(second.step({}));
    QCOMPARE(held(second), 0);
    QVERIFY(first.step({}) && second.step({}));
    QCOMPARE(held(second), 3);
    QVERIFY(m_database->run("UPDATE camera SET recorder = ?::uuid WHERE id = 'c00'", {two.id}));
    QVERIFY(first.step({}) && second.step({}) && first.step({}) && second.step({}));
    QVERIFY(m_database->run("UPDATE recorder SET alive_until = clock_timestamp() WHERE name = 'two'"));
    // What is kept for one recorder waits for it.
    QVERIFY(first.step({}));
    QCOMPARE(held(first), 5);
    QVERIFY(first.leave());
    QVERIFY(second.step({}));
    QCOMPARE(held(second), 6);
}

/// Who has its share of what others may record as well takes what only it may.
void tst_leases::leavesNoneOut()
{
    addCameras(7);
    const FleetRecorder one = recorder("one");
    const FleetRecorder two = recorder("two");
    LeaseTable first(*m_database, one);
    LeaseTable second(*m_database, two);
    QVERIFY(first.join() && second.join() && second.step({}));
    QVERIFY(second.leave());
    QVERIFY(m_database->run("UPDATE camera SET recorder = ?::uuid WHERE id > 'c03'", {one.id}));
    QVERIFY(m_database->run("UPDATE recorder SET alive_until = 'infinity'"));
    for (int i = 0; i < 3; ++i)
        QVERIFY2(first.step({}) && second.step({}), qPrintable(m_database->reason()));
    QVERIFY(m_database->run("UPDATE lease SET ready = true"));
    QCOMPARE(held(first), 5);
    QCOMPARE(held(second), 2);
}

void tst_leases::handsOverWithoutGap()
{
    addCameras(2);
    const FleetRecorder one = recorder("one");
    const FleetRecorder two = recorder("two");
    LeaseTable first(*m_database, one);
    LeaseTable second(*m_database, two);
    QVERIFY(first.join() && second.join() && first.step({}) && second.step({}) && first.step({}) &&
            second.step({}));
    QCOMPARE(held(second), 1);
    const QString moved = second.cameras()->first().id;
    // Both have it until the second one says that its packets come.
    QCOMPARE(held(first), 2);
    QVERIFY(second.step({true, {}, {moved}}));
    QCOMPARE(held(first), 1);
    QVERIFY(first.step({}) && second.step({}) && first.step({}) && second.step({}));
    QCOMPARE(held(first), 1);
    QCOMPARE(held(second), 1);
}

void tst_leases::givesBackWhatOthersCanRecord()
{
    addCameras(2);
    const FleetRecorder one = recorder("one");
    const FleetRecorder two = recorder("two");
    LeaseTable first(*m_database, one);
    LeaseTable second(*m_database, two);
    QVERIFY(first.join() && second.join() && first.step({}));
    // There is nobody else.
    QCOMPARE(givenBack(first, {"c00", "c01"}), QStringList());
    QVERIFY(second.step({}));
    QCOMPARE(givenBack(first, {"c00"}), QStringList("c00"));
    QVERIFY(first.step({}));
    QCOMPARE(held(first), 1);
    QVERIFY(second.step({}));
    QCOMPARE(held(second), 1);
    // Who has it last keeps trying, as the other one rests from it; then it goes on.
    QCOMPARE(givenBack(second, {"c00"}), QStringList());
    const QString rests("UPDATE failure SET times = 5, rests_until = clock_timestamp() + interval '%1 s'");
    QVERIFY(m_database->run(rests.arg(930)));
    QCOMPARE(givenBack(second, {"c00"}), QStringList());
    // However long it is to rest, after a minute it is asked again, and rests no more once it records.
    QVERIFY(m_database->run(rests.arg(899)));
    QCOMPARE(givenBack(second, {"c00"}), QStringList("c00"));
    QCOMPARE(held(first), 2);
    QVERIFY(first.step({true, {}, {"c00"}}) && second.step({}) && first.step({}));
    QCOMPARE(held(first), 2);
    QSqlQuery query = m_database->query();
    QVERIFY(m_database->run(query, "SELECT FROM able WHERE camera = 'c00'") && query.size() == 1);
    // Who is not well gets nothing, and goes on till others are ready.
    QVERIFY(m_database->run("DELETE FROM failure"));
    QVERIFY(first.step({false}) && second.step({}));
    QCOMPARE(held(second), 2);
    QCOMPARE(held(first), 2);
    // What the new one can't record goes back to who records it still.
    QVERIFY(first.step({true}));
    QCOMPARE(givenBack(second, {"c01"}), QStringList("c01"));
    QVERIFY(first.step({true, {}, {"c01"}}) && second.step({true, {}, {"c00"}}));
    QCOMPARE(held(first), 1);
    QCOMPARE(first.cameras()->first().id, QString("c01"));
    QVERIFY(first.step({false}) && second.leave() && first.step({false}));
    QCOMPARE(held(first), 2);
}

void tst_leases::knowsItsOwnTrouble()
{
    const QTemporaryDir directory;
    RecorderHealth health(directory.path());
    health.setStalled({"c00"}, true);
    QVERIFY(!health.look({"c00", "c01"}));
    health.setStalled({"c00"}, false);
    QVERIFY(!health.look({"c00"}));
    health.setStalled({"c00", "c01"}, false);
    QVERIFY(!health.look({"c00", "c01", "c02"}));
    // These have been given back.
    QVERIFY(!health.look({"c02", "c03"}));
    QVERIFY(health.isWell());
    QVERIFY(health.look({"c00", "c01"}));
    QVERIFY(!health.isWell());
    // It rests for a while, however it goes.
    health.setStalled({}, false);
    QVERIFY(!health.look({}));
    RecorderHealth gone(directory.path() + "/gone");
    gone.setStalled({"c00"}, true);
    QVERIFY(gone.look({"c00", "c01"}));
    QVERIFY(!gone.isWell());
    QVERIFY(QDir(directory.path()).isEmpty());
}

void tst_leases::newArchiveTakesItsName()
{
    addCameras(1);
    const FleetRecorder old = recorder("one");
    const FleetRecorder fresh = recorder("one");
    LeaseTable before(*m_database, old);
    LeaseTable now(*m_database, fresh);
    QVERIFY(before.join() && before.step({}));
    QVERIFY(m_database->run("UPDATE camera SET recorder = ?::uuid", {old.id}));
    QVERIFY(m_database->run("SELECT ensure_month(1)"));
    QVERIFY(m_database->run("INSERT INTO segment SELECT id, 'x', 'Gate', 1, 2, 1, false, id FROM recorder"));
    QVERIFY(!now.join());
    QVERIFY(m_database->reason().contains("another recorder is called one"));
    QVERIFY(before.leave() && now.join() && now.step({}));
    QCOMPARE(held(now), 1);
    // Its recordings are not looked for on the new disk, and told once more if they are forgotten.
    FleetIndex index(*m_database);
    QCOMPARE(index.segments("Gate", 0, 10)->size(), 0);
    QCOMPARE(index.times({"Gate"}, 0, 10)->value("Gate").segments.size(), 0);
    QCOMPARE(index.nextMs("Gate", 0).value_or(-1) + index.newestMs("Gate").value_or(-1), 0);
    QSqlQuery query = m_database->query();
    QVERIFY(m_database->run("INSERT INTO spool SELECT id, id, 7 FROM recorder"));
    QVERIFY(m_database->run("BEGIN") && m_database->run("SELECT drop_old_months()"));
    QVERIFY(m_database->run(query, "SELECT recorder::text FROM spool") && query.next());
    QVERIFY(query.value(0).toString() == fresh.id && !query.next() && m_database->run("ROLLBACK"));
    const FleetRecorder moved{old.id, "two", "", "/elsewhere"};
    QVERIFY(LeaseTable(*m_database, moved).join());
    QCOMPARE(index.segments("Gate", 0, 10)->size(), 1);
}

void tst_leases::oneOfTwoWithOneNumberRecords()
{
    addCameras(1);
    const FleetRecorder one = recorder("one");
    const FleetRecorder copy{one.id, "copy", "", "/elsewhere"};
    LeaseTable first(*m_database, one);
    LeaseTable second(*m_database, copy);
    QVERIFY(first.join() && first.step({}));
    // It may have been killed, and had asked for something in that moment; when it lives on, it was not.
    QVERIFY(!second.join() && first.step({}) && !second.join() && !second.isElsewhere());
    QVERIFY(first.step({}) && !second.join() && second.isElsewhere());
    QCOMPARE(held(first), 1);
    // While the first one is started anew, or the server is, the second one waits.
    QVERIFY(first.leave() && !second.join() && second.isElsewhere());
    const FleetRecorder next{one.id, one.name, one.site, one.url};
    LeaseTable third(*m_database, next);
    QVERIFY(third.join() && third.step({}));
    QVERIFY(m_database->run("UPDATE recorder SET alive_until = clock_timestamp()"));
    QVERIFY(!second.join() && third.isHere() && third.step({}));
    // A run that does not know of the first takes its place when that says nothing any more.
    LeaseTable last(*m_database, copy);
    QVERIFY(!last.join());
    QTRY_VERIFY(last.join());
    QVERIFY(last.step({}) && !third.step({}) && !third.isHere() && !third.join());
    QCOMPARE(held(last), 1);
}

int main(int argc, char** argv)
{
    return RunTests<tst_leases, QCoreApplication>(argc, argv);
}

#include "tst_leases.moc"
