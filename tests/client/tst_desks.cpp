#include "../engine/fleet/PgCluster.h"
#include "alarms/AlarmCenter.h"
#include "alarms/FleetAlarms.h"
#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/FleetDesk.h"
#include "fleet/FleetDatabase.h"
#include "fleet/FleetSchema.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "views/SharedViews.h"
#include "views/ViewList.h"

/// Desks on the indexes of two sites.
class tst_desks : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void showsSitesAsOneList();
    void goesOnWithoutASite();
    void oneDeskTurnsACamera();
    void viewersMayNot();
    void listsEachAlarmOnce();
    void viewsReachOtherDesks();

private:
    bool run(const QString& database, const QString& statement);
    QString read(const QString& database, const QString& question);
    QVector<SiteAddress> sites() const
    {
        return {{"North", m_cluster->address("owner", "north")},
                {"South", m_cluster->address("owner", "south")}};
    }

    std::unique_ptr<PgCluster> m_cluster;
    QTemporaryDir m_directory;
    const QString m_path = m_directory.path() + "/cameras.json";
};

void tst_desks::initTestCase()
{
    m_cluster = std::make_unique<PgCluster>();
    QVERIFY2(m_cluster->trouble().isEmpty(), qPrintable(m_cluster->trouble()));
}

/// Cameras that somebody made by hand, under the same ids and names at both sites.
void tst_desks::init()
{
    DeckTestCase::init();
    for (const QString site : {"north", "south"}) {
        QVERIFY(run("postgres", "DROP DATABASE IF EXISTS " + site + " WITH (FORCE)"));
        QVERIFY(run("postgres", "CREATE DATABASE " + site));
        FleetDatabase database(m_cluster->address("owner", site));
        QVERIFY(database.open());
        QCOMPARE(FleetSchema::migrate(database), FleetSchema::State::Current);
        QVERIFY(database.run("INSERT INTO camera (id, name, description) VALUES ('c0', 'Gate', "
                             "'{\"main\": \"a.mkv\", \"group\": \"Yard\"}')"));
        QVERIFY(database.run("INSERT INTO recorder VALUES (gen_random_uuid(), 'r', '', '/" + site + "')"));
        QVERIFY(database.run("SELECT deliver(id, gen_random_uuid(), '[{\"seq\": 1, \"what\": 1, \"gone\": "
                             "false, \"path\": \"Gate/1.mkv\", \"camera\": \"Gate\", \"start_ms\": 1000, "
                             "\"end_ms\": 2000, \"bytes\": 1, \"sample\": false}]') FROM recorder"));
    }
}

bool tst_desks::run(const QString& name, const QString& statement)
{
    FleetDatabase database(m_cluster->address("owner", name));
    return database.open() && database.run("SET client_min_messages = warning") && database.run(statement);
}

QString tst_desks::read(const QString& name, const QString& question)
{
    FleetDatabase database(m_cluster->address("owner", name));
    QSqlQuery query;
    return database.open() && database.run(query = database.query(), question) && query.next()
               ? query.value(0).toString()
               : QString("?");
}

void tst_desks::showsSitesAsOneList()
{
    CameraList cameras;
    FleetDesk desk(sites(), &cameras, m_path);
    QTRY_COMPARE(cameras.count(), 2);
    const CameraRecord* north = cameras.byId("c0");
    const CameraRecord* south = cameras.find("Gate (South)");
    QVERIFY(north && south);
    QCOMPARE(north->about.group + '|' + south->about.group, QString("North/Yard|South/Yard"));
    const auto pathOf = [&](RecordingReader* reader, const CameraRecord* camera) {
        const auto found = reader->segments(camera->about.archiveName(), 0, 5000);
        return found && found->size() == 1 ? found->first().path : QString();
    };
    QTRY_COMPARE(pathOf(desk.reader(), north), QString("/north/Gate/1.mkv"));
    QTRY_COMPARE(pathOf(desk.reader(), south), QString("/south/Gate/1.mkv"));
    QCOMPARE(pathOf(desk.readerMaker()().get(), south), QString("/south/Gate/1.mkv"));
    const QStringList keys{north->about.archiveName(), south->about.archiveName()};
    QTRY_COMPARE(desk.reader()->times(keys, 0, 5000).value(keys[1]).segments.size(), 1);
    QCOMPARE(desk.readerMaker()()->times(keys, 0, 5000).value(keys[1]).segments.size(), 1);

    QVector<CameraDescription> all = cameras.descriptions();
    all[1].group = "South/Cellar";
    CameraDescription fresh;
    fresh.id = newCameraId();
    fresh.name = "Door";
    fresh.group = "South/Yard";
    fresh.mainUrl = "b.mkv";
    QString error;
    QVERIFY2(cameras.setDescriptions(all + QVector<CameraDescription>{fresh}, &error), qPrintable(error));
    QCOMPARE(read("south",
                  "SELECT string_agg((id = 'c0')::text || name || (description->>'group'), ';' ORDER BY name "
                  "DESC) FROM camera"),
             QString("trueGateCellar;falseDoorYard"));
    QCOMPARE(read("north", "SELECT count(*) || min(description->>'group') FROM camera"), QString("1Yard"));
    QTRY_VERIFY(cameras.byId(fresh.id) && cameras.byId(fresh.id)->about.archiveName().endsWith("Door"));
    // A camera's recordings lie where it is.
    all = cameras.descriptions();
    all[1].group = "North/Cellar";
    QVERIFY(!cameras.setDescriptions(all, &error));
    QVERIFY(error.contains("South"));
}

void tst_desks::goesOnWithoutASite()
{
    QVERIFY(run("postgres", "ALTER DATABASE north ALLOW_CONNECTIONS false"));
    CameraList cameras;
    FleetDesk desk(sites(), &cameras, m_path);
    QTRY_COMPARE(cameras.count(), 1);
    QTRY_VERIFY(desk.sites().at(1).away.isEmpty());
    QVERIFY(!desk.sites().at(0).away.isEmpty());
    // It has no other name while the first site's is not known.
    const QString id = cameras.at(0).about.id;
    QVERIFY(id != "c0");
    QVERIFY(run("postgres", "ALTER DATABASE north ALLOW_CONNECTIONS true"));
    QTRY_COMPARE(cameras.count(), 2);
    QVERIFY(cameras.byId("c0") && cameras.byId(id));
    QTRY_VERIFY(desk.trouble().isEmpty());
}

void tst_desks::oneDeskTurnsACamera()
{
    CameraList cameras[2];
    FleetDesk one(sites(), &cameras[0], m_path);
    FleetDesk two(sites(), &cameras[1], m_path);
    QTRY_VERIFY(cameras[0].count() == 2 && cameras[1].count() == 2);
    const QString id = cameras[0].find("Gate (South)")->about.id;
    QStringList told;
    const auto listen = [&](PtzLeases* leases, const QString& name) {
        connect(leases, &PtzLeases::granted, this, [&, name] { told.append(name + " has it"); });
        connect(leases, &PtzLeases::refused, this, [&, name] { told.append(name + " has it not"); });
        connect(leases, &PtzLeases::lost, this, [&, name] { told.append(name + " loses it"); });
        connect(leases, &PtzLeases::asked, this, [&, name] { told.append(name + " is asked"); });
        connect(leases, &PtzLeases::given, this, [&, name] { told.append(name + " is given it"); });
    };
    listen(one.leases(), "one");
    listen(two.leases(), "two");
    one.leases()->take(id);
    QTRY_COMPARE(told, QStringList{"one has it"});
    QVERIFY(!one.leases()->isMine("c0"));
    two.leases()->take(id);
    QTRY_COMPARE(told.size(), 2);
    QCOMPARE(told.last(), QString("two has it not"));
    QVERIFY(two.leases()->holderOf(id).startsWith("owner@"));
    two.leases()->ask(id);
    QTRY_COMPARE(told.last(), QString("one is asked"));
    one.leases()->give(id);
    // It stands still before the other one has it.
    QCOMPARE(told.last(), QString("one loses it"));
    QTRY_COMPARE(told.last(), QString("two is given it"));
    QTRY_VERIFY(two.leases()->isMine(id) && !one.leases()->isMine(id));
    // The server's clock ends it, whatever a desk believes.
    QVERIFY(run("south", "UPDATE ptz_lease SET until = clock_timestamp()"));
    one.leases()->take(id);
    QTRY_VERIFY(told.contains("two loses it"));
    QVERIFY(one.leases()->isMine(id));
}

void tst_desks::viewersMayNot()
{
    run("postgres", "DROP ROLE IF EXISTS looker");
    QVERIFY(run("postgres", "CREATE ROLE looker LOGIN IN ROLE panedeck_viewer"));
    CameraList cameras;
    FleetDesk desk(
        {{"North", m_cluster->address("owner", "north")}, {"South", m_cluster->address("looker", "south")}},
        &cameras, m_path);
    QTRY_COMPARE(cameras.count(), 2);
    const QString south = cameras.find("Gate (South)")->about.id;
    QVERIFY(cameras.mayChange("c0") && !cameras.mayChange(south) && desk.rights().steers);
    QVERIFY(!desk.rightsOf(south).acknowledges);
    QString refusal;
    connect(desk.leases(), &PtzLeases::refused, this,
            [&](const QString&, const QString& why) { refusal = why; });
    desk.leases()->take(south);
    QVERIFY(!refusal.isEmpty());
}

/// After a lost connection many come at once, of a camera that had none before, and some once more.
void tst_desks::listsEachAlarmOnce()
{
    CameraList cameras;
    FleetDesk desk({sites().last()}, &cameras, m_path);
    QTRY_COMPARE(cameras.count(), 1);
    CameraHub hub(cameras);
    AlarmCenter center(cameras, &hub, nullptr, true);
    const FleetAlarms alarms(&desk, cameras, &center);
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const auto mark = [&](int second, bool isAcknowledged = false) {
        return FleetMark{{Span::Motion, now + second * 1000, now + second * 1000 + 900}, isAcknowledged};
    };
    const auto listed = [&] {
        QVector<int> seconds;
        for (const Alarm& alarm : center.book()->alarms())
            seconds.append(int((alarm.startMs - now) / 1000) * (alarm.isSeen ? 1000 : 1));
        return seconds;
    };
    for (int i = 0; i < 2; ++i) {
        Q_EMIT desk.marked("Gate", {mark(-300), mark(-295), mark(-200), mark(-100), mark(-50, true)});
        QCOMPARE(listed(), QVector<int>({-100, -200, -300}));
    }
    Q_EMIT desk.marked("Gate", {mark(-200, true), mark(-150)});
    QCOMPARE(listed(), QVector<int>({-100, -150, -200'000, -300}));
    // The clock of a recorder is ahead, and nobody hears less of another one.
    Q_EMIT desk.marked("Gate", {mark(3600)});
    int raised = 0;
    connect(&center, &AlarmCenter::raised, this, [&] { ++raised; });
    Q_EMIT desk.marked("Gate", {mark(30)});
    QCOMPARE(raised, 1);
}

/// The other desk knows the south by itself, and has a view of that name already.
void tst_desks::viewsReachOtherDesks()
{
    CameraList cameras[2];
    FleetDesk one(sites(), &cameras[0], m_path);
    FleetDesk two({sites().last()}, &cameras[1], m_path);
    ViewList first(m_directory.path() + "/one.json");
    ViewList second(m_directory.path() + "/two.json");
    const SharedViews sharedByFirst(&one, cameras[0], &first, nullptr);
    const SharedViews sharedBySecond(&two, cameras[1], &second, nullptr);
    QTRY_VERIFY(cameras[0].count() == 2 && cameras[1].count() == 1);
    DeckView view;
    view.name = "Yard";
    view.panes = {PaneView{cameras[0].find("Gate (South)")->about.id, "Gate", 1, {}}};
    QString error;
    QVERIFY(first.keep(view, &error) && second.keep(view, &error));
    QVERIFY2(first.setShared("Yard", true, &error), qPrintable(error));
    QTRY_VERIFY(second.views().size() == 2 && first.isShared("Yard"));
    const DeckView* there = second.find("Yard (shared)");
    QVERIFY(there && !second.isShared("Yard"));
    QCOMPARE(there->panes.first().camera, QString("c0"));
    QCOMPARE(first.find("Yard")->panes.first().camera, view.panes.first().camera);
    QVERIFY(second.rename("Yard (shared)", "Gates", &error));
    QTRY_VERIFY(first.isShared("Gates"));
    QCOMPARE(first.views().size(), 1);
    QVERIFY(first.setShared("Gates", false, &error));
    QTRY_COMPARE(second.views().size(), 1);
    QVERIFY(first.find("Gates") && !first.isShared("Gates"));
}

int main(int argc, char** argv)
{
    return RunTests<tst_desks>(argc, argv);
}

#include "tst_desks.moc"
