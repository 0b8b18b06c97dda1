#include "ClipFeed.h"
#include "archive/ArchiveKeeper.h"
#include "archive/ArchiveRecorder.h"
#include "source/SourceThread.h"
#include "source/VideoSource.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>

namespace {

qint64 bytesBelow(const QString& directory)
{
    qint64 bytes = 0;
    QDirIterator files(directory, {"*.mkv", "*.mkv.part"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        bytes += files.fileInfo().size();
    }
    return bytes;
}

double coreSeconds()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

std::vector<QSharedPointer<VideoSource>> makeSources(const std::shared_ptr<const ClipFeed::Clip>& clip,
                                                     int count, std::atomic<qint64>& given)
{
    std::vector<QSharedPointer<VideoSource>> sources;
    for (int i = 0; i < count; ++i) {
        const qint64 phase = i * clip->lengthUs / count;
        sources.push_back(QSharedPointer<VideoSource>::create([clip, phase, &given](SourceLink& link) {
            return std::make_unique<ClipFeed>(clip, link, phase % 1'000'000, given);
        }));
        sources.back()->setWatched(false);
    }
    return sources;
}

/// One recorder: prints what came, what is in its files, and what it took of the processor.
int recordAll(const QString& path, const QString& directory, int cameras, int seconds)
{
    QString error;
    const auto clip = ClipFeed::read(path, &error);
    if (!clip) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    std::atomic<qint64> given{0};
    ArchiveLimits limits;
    limits.bytes = qint64(1) << 40;
    ArchiveKeeper keeper(directory, limits);
    auto sources = makeSources(clip, cameras, given);
    std::unique_ptr<ArchiveRecorder> recorder;
    QObject::connect(&keeper, &ArchiveKeeper::roleChanged, &keeper, [&] {
        if (keeper.role() != ArchiveRole::Recorder || recorder)
            return;
        recorder = std::make_unique<ArchiveRecorder>(&keeper);
        for (size_t i = 0; i < sources.size(); ++i) {
            recorder->record(QString("Camera %1").arg(i), sources[i]);
            sources[i]->start();
        }
        QTimer::singleShot(seconds * 1000, qApp, &QCoreApplication::quit);
    });
    keeper.start();
    QCoreApplication::exec();
    const qint64 came = given;
    const double took = coreSeconds();
    for (const auto& source : sources)
        source->stop();
    const bool hasEnded = waitForSourceThreads(5000);
    recorder.reset();
    std::printf("%lld %f %lld %lld\n", came, took, qint64(given), bytesBelow(directory));
    std::fflush(stdout);
    if (!hasEnded)
        std::_Exit(0);
    return 0;
}

/// What the disk takes, megabytes a second, by fio; 0 without it.
double diskSpeed(const QString& directory)
{
    QProcess fio;
    fio.start("fio", {"--name=disk", "--directory=" + directory, "--rw=write", "--bs=1M", "--size=2G",
                      "--end_fsync=1", "--output-format=json"});
    if (!fio.waitForFinished(-1))
        return 0;
    const QJsonObject job =
        QJsonDocument::fromJson(fio.readAllStandardOutput()).object()["jobs"].toArray()[0].toObject();
    QFile::remove(directory + "/disk.0.0");
    return job["write"].toObject()["bw_bytes"].toDouble() / 1e6;
}

struct Sum
{
    double came = 0; ///< megabytes, until the end was asked for
    double cores = 0;
    double given = 0; ///< megabytes, in all
    double written = 0;
};

Sum runAll(const QStringList& arguments, const QString& directory, int cameras, int processes, int seconds)
{
    std::vector<std::unique_ptr<QProcess>> all;
    for (int i = 0; i < processes; ++i) {
        all.push_back(std::make_unique<QProcess>());
        all.back()->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        all.back()->start(QCoreApplication::applicationFilePath(),
                          {arguments.at(1), QString::number(cameras / processes), QString::number(seconds),
                           "0", QString("%1/%2").arg(directory).arg(i)});
    }
    Sum sum;
    for (const auto& one : all) {
        one->waitForFinished((seconds + 120) * 1000);
        const QList<QByteArray> words = one->readAllStandardOutput().trimmed().split(' ');
        if (words.size() != 4)
            continue;
        sum.came += words[0].toDouble() / 1e6;
        sum.cores += words[1].toDouble() / seconds;
        sum.given += words[2].toDouble() / 1e6;
        sum.written += words[3].toDouble() / 1e6;
    }
    return sum;
}

void measure(const QStringList& arguments, const QString& directory, int cameras, int seconds, int processes)
{
    QString error;
    const auto clip = ClipFeed::read(arguments.at(1), &error);
    if (!clip) {
        std::printf("%s\n", qPrintable(error));
        return;
    }
    std::printf("the disk takes %.0f MB/s by fio\n", diskSpeed(directory));
    const double due = double(clip->bytes) / double(clip->lengthUs) * cameras;
    const Sum sum = runAll(arguments, directory, cameras, processes, seconds);
    QElapsedTimer time;
    time.start();
    ::sync();
    std::printf(
        "%d cameras on %d recorders: %.0f MB/s of %.0f came, by %.2f cores; of %.0f MB in all %.0f are in "
        "files, and on the disk %.1f s later\n",
        cameras, processes, sum.came / seconds, due, sum.cores, sum.given, sum.written,
        double(time.elapsed()) / 1000);
}

} // namespace

/// bench_recording CLIP [CAMERAS] [SECONDS] [PROCESSES]: so many cameras, 2000, that all send the clip, on so
/// many recorders, 4, below the temporary directory, which is empty again at the end.
int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (argc < 2) {
        std::printf("bench_recording CLIP [CAMERAS] [SECONDS] [PROCESSES]\n");
        return 2;
    }
    const int cameras = argc > 2 ? std::max(1, arguments.at(2).toInt()) : 2000;
    const int seconds = argc > 3 ? std::max(1, arguments.at(3).toInt()) : 30;
    if (argc > 5)
        return recordAll(arguments.at(1), arguments.at(5), cameras, seconds);
    const QTemporaryDir directory;
    measure(arguments, directory.path(), cameras, seconds,
            argc > 4 ? std::max(1, arguments.at(4).toInt()) : 4);
    return 0;
}
