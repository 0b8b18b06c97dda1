#include "PgCluster.h"
#include "archive/ArchiveIndex.h"
#include "fleet/FleetIndex.h"
#include "fleet/FleetReader.h"
#include "fleet/FleetSchema.h"
#include "fleet/LeaseTable.h"
#include "fleet/SpoolSender.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>
#include <QUuid>

#include <algorithm>
#include <cstdio>
#include <thread>
#include <vector>

namespace {

constexpr qint64 MinuteMs = 60'000;
constexpr qint64 DayMs = 86'400'000;
constexpr qint64 Begin = 1'700'006'400'000; // a midnight

FleetRecorder makeRecorder(const QString& name)
{
    return {QUuid::createUuid().toString(QUuid::WithoutBraces), name, "", "/archive/" + name};
}

bool fail(const char* what, const QString& why)
{
    std::printf("%s: %s\n", what, qPrintable(why));
    return false;
}

/// As recorders deliver: batches of rows, each a segment of another camera.
int deliverRows(const FleetAddress& address, int number, int batches)
{
    constexpr int Rows = 500;
    FleetDatabase database(address);
    const FleetRecorder self = makeRecorder(QString("bench %1").arg(number));
    const QString spool = QUuid::createUuid().toString(QUuid::WithoutBraces);
    if (!database.open() || !LeaseTable(database, self).join())
        return 0;
    for (int batch = 0; batch < batches; ++batch) {
        QJsonArray rows;
        for (int i = 0; i < Rows; ++i) {
            const qint64 start = Begin + batch * MinuteMs;
            const QString camera = QString("bench %1-%2").arg(number).arg(i);
            rows.append(QJsonObject{{"seq", qint64(batch) * Rows + i + 1},
                                    {"what", 1},
                                    {"gone", false},
                                    {"path", QString("%1/%2.mkv").arg(camera).arg(start)},
                                    {"camera", camera},
                                    {"start_ms", start},
                                    {"end_ms", start + MinuteMs},
                                    {"bytes", 4'000'000},
                                    {"sample", false}});
        }
        const QString text = QString::fromUtf8(QJsonDocument(rows).toJson(QJsonDocument::Compact));
        if (!database.run("SELECT deliver(CAST(? AS uuid), CAST(? AS uuid), CAST(? AS jsonb))",
                          {self.id, spool, text}))
            fail("deliver", database.reason());
    }
    return batches * Rows;
}

void measureDelivery(const FleetAddress& address)
{
    for (const int recorders : {1, 4}) {
        constexpr int Batches = 40;
        QElapsedTimer time;
        time.start();
        std::vector<std::thread> threads;
        for (int i = 0; i < recorders; ++i)
            threads.emplace_back(
                [&address, i, recorders] { deliverRows(address, recorders * 10 + i, Batches); });
        for (std::thread& thread : threads)
            thread.join();
        const double rows = recorders * Batches * 500.0;
        std::printf("%d recorders deliver: %.0f rows a second\n", recorders,
                    rows * 1000 / double(time.elapsed()));
    }
}

/// Minutes of so many cameras for so many days, one in each `step`, by the server itself, and a motion in
/// every tenth of them.
bool fill(FleetDatabase& database, int cameras, int days, int step)
{
    const FleetRecorder self = makeRecorder("filled");
    if (!LeaseTable(database, self).join())
        return fail("fill", database.reason());
    for (int day = 0; day < days; ++day) {
        const qint64 from = Begin + qint64(day) * step * DayMs;
        if (!database.run(QString("SELECT ensure_month(%1)").arg(from)) ||
            !database.run(
                QString(
                    "INSERT INTO segment SELECT '%1', 'c' || c || '/' || t || '.mkv', 'c' || c, t, t + "
                    "60000, "
                    "4000000, false, '%1' FROM generate_series(1, %2) c, generate_series(CAST(%3 AS bigint), "
                    "CAST(%4 AS bigint), 60000) t")
                    .arg(self.id)
                    .arg(cameras)
                    .arg(from)
                    .arg(from + DayMs - MinuteMs)) ||
            !database.run(
                QString("INSERT INTO span (camera, kind, start_ms, end_ms, sample) SELECT 'c' || c, 1, "
                        "t, t + 20000, false FROM generate_series(1, %1) c, generate_series(CAST(%2 "
                        "AS bigint), CAST(%3 AS bigint), 600000) t")
                    .arg(cameras)
                    .arg(from)
                    .arg(from + DayMs - MinuteMs)))
            return fail("fill", database.reason());
    }
    return database.run("VACUUM ANALYZE segment, span");
}

void measureDay(FleetDatabase& database, int cameras, int days, int step)
{
    QElapsedTimer time;
    time.start();
    if (!fill(database, cameras, days, step))
        return;
    QSqlQuery query = database.query();
    database.run(query, "SELECT count(*), pg_database_size(current_database()) FROM segment");
    query.next();
    std::printf("%d cameras, %d days in %d: %lld rows, %lld MB, made in %.0f s\n", cameras, days, days * step,
                query.value(0).toLongLong(), query.value(1).toLongLong() >> 20,
                double(time.elapsed()) / 1000);
    FleetIndex index(database);
    QStringList names;
    for (int camera = 1; camera <= 64; ++camera)
        names.append(QString("c%1").arg(camera * cameras / 64));
    std::vector<double> took;
    for (int round = 0; round < 9; ++round) {
        const qint64 from = Begin + qint64(days * (2 * round + 1) / 18) * step * DayMs;
        QElapsedTimer one;
        one.start();
        if (!index.times(names, from, from + DayMs))
            fail("day", database.reason());
        took.push_back(double(one.nsecsElapsed()) / 1e6);
    }
    std::sort(took.begin(), took.end());
    std::printf("a day of 64 cameras: %.0f ms (%.0f to %.0f)\n", took[4], took.front(), took.back());
}

/// From a recorder's own index to a desk that hears of it.
void measureNews(const FleetAddress& address)
{
    QTemporaryDir directory;
    ArchiveIndex index;
    index.setSpooled(true);
    QString error;
    index.open(directory.path(), &error);
    SpoolSender sender(address, makeRecorder("news"), directory.path() + "/index.sqlite");
    FleetReader desk(address);
    sender.start();
    QEventLoop loop;
    QTimer::singleShot(3000, &loop, &QEventLoop::quit);
    loop.exec();
    std::vector<qint64> took;
    for (int i = 0; i < 21; ++i) {
        QElapsedTimer time;
        QObject context;
        QObject::connect(&desk, &FleetReader::changed, &context, [&](const QString& camera) {
            if (camera == QString("news %1").arg(i))
                loop.quit();
        });
        time.start();
        index.addSpan(QString("news %1").arg(i), {Span::Alarm, Begin, Begin + 1});
        QTimer::singleShot(5000, &loop, &QEventLoop::quit);
        loop.exec();
        took.push_back(time.elapsed());
    }
    std::sort(took.begin(), took.end());
    std::printf("an alarm is on a desk after %lld ms (%lld to %lld)\n", took[10], took.front(), took.back());
}

/// As when the oldest recordings of all archives go.
void measureDrop(FleetDatabase& database)
{
    QElapsedTimer time;
    time.start();
    if (!database.run(QString("SELECT drop_months(%1)").arg(Begin + 31 * DayMs)))
        fail("drop", database.reason());
    std::printf("the first month is dropped in %lld ms\n", time.elapsed());
}

} // namespace

/// bench_fleet [CAMERAS] [DAYS] [STEP]: the shared index on a server of its own: what recorders deliver, a
/// day of 64 cameras, how soon a desk hears of an alarm, and how long a month takes to go.
int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const int cameras = argc > 1 ? std::max(64, std::atoi(argv[1])) : 1000;
    const int days = argc > 2 ? std::max(1, std::atoi(argv[2])) : 7;
    const int step = argc > 3 ? std::max(1, std::atoi(argv[3])) : 1;
    PgCluster cluster;
    FleetDatabase database(cluster.address());
    if (!cluster.trouble().isEmpty() || !database.open() ||
        FleetSchema::migrate(database) != FleetSchema::State::Current) {
        fail("no server", cluster.trouble() + database.reason());
        return 1;
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    measureDelivery(cluster.address());
    measureDay(database, cameras, days, step);
    measureNews(cluster.address());
    measureDrop(database);
    return 0;
}
