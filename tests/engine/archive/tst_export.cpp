#include "archive/RecordingExporter.h"
#include "archive/SegmentReader.h"
#include "engine/TestVideo.h"
#include "source/VideoSource.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <QDir>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <sys/mount.h>
#include <unistd.h>

Q_DECLARE_METATYPE(ClipMuxer::Container)

namespace {

using Container = ClipMuxer::Container;

constexpr int Pictures = 20;
constexpr qint64 PieceMs = Pictures * TestVideo::StepMs;

qint64 noon()
{
    return QDateTime(QDate(2024, 5, 6), QTime(12, 0)).toMSecsSinceEpoch();
}

/// What a file plays, by its own times.
struct Played
{
    explicit Played(const QString& path)
    {
        SegmentReader reader;
        QString error;
        if (!reader.open({path, 0, 0}, &error))
            return;
        hasSound = reader.soundFormat() != nullptr;
        while (const AVPacket* packet = reader.read()) {
            const bool isSound = reader.isSound(*packet);
            (isSound ? sound : pictures)
                .append(QByteArray(reinterpret_cast<const char*>(packet->data), packet->size));
            if (!isSound)
                moments.append(reader.momentOf(packet->pts));
        }
    }

    QVector<QByteArray> pictures, sound;
    QVector<qint64> moments;
    bool hasSound = false;
};

} // namespace

class tst_export : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void copiesAsItWasRecorded_data();
    void copiesAsItWasRecorded();
    void beginsWithItsStretch();
    void burnsAllIntoOnePicture();
    void goesOnInAnotherFile();
    void tellsWhatIsMissing();
    void namesFilesSafely();
    void leavesNothingBehind_data();
    void leavesNothingBehind();

private:
    TrackPiece piece(const QString& name, qint64 startMs, const TestVideo::Recipe& recipe = {Pictures});
    ExportResult wait(RecordingExporter& exporter, const ExportOrder& order);
    ExportResult take(const QVector<ExportTask>& tasks, Container container = Container::Matroska);
    QStringList left() const { return QDir(m_out).entryList(QDir::Files | QDir::Hidden); }

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_out;
};

void tst_export::init()
{
    DeckTestCase::init();
    m_directory = std::make_unique<QTemporaryDir>();
    m_out = m_directory->filePath("out");
    QVERIFY(QDir().mkpath(m_out));
}

TrackPiece tst_export::piece(const QString& name, qint64 startMs, const TestVideo::Recipe& recipe)
{
    const QString path = m_directory->filePath(name);
    if (!TestVideo::write(path, recipe))
        qFatal("can't write %s", qPrintable(path));
    return {path, startMs, startMs + recipe.pictures * TestVideo::StepMs};
}

ExportResult tst_export::take(const QVector<ExportTask>& tasks, Container container)
{
    RecordingExporter exporter;
    return wait(exporter, {tasks, container, m_out, {}});
}

/// It ends in a thread of its own, perhaps before anybody waits.
ExportResult tst_export::wait(RecordingExporter& exporter, const ExportOrder& order)
{
    std::optional<ExportResult> result;
    connect(&exporter, &RecordingExporter::finished, this, [&](const ExportResult& told) { result = told; });
    exporter.start(order);
    if (!QTest::qWaitFor([&] { return result.has_value(); }, 20'000))
        qFatal("the export does not end");
    return *result;
}

void tst_export::copiesAsItWasRecorded_data()
{
    QTest::addColumn<Container>("container");
    QTest::addColumn<int>("reordered");
    QTest::addColumn<bool>("holdsSound"); // this one, which is not compressed
    for (const int reordered : {0, 2}) {
        const QByteArray kind = reordered ? ", reordered" : "";
        QTest::newRow("Matroska" + kind) << Container::Matroska << reordered << true;
        QTest::newRow("MP4" + kind) << Container::Mp4 << reordered << false;
    }
}

/// Two segments without a seam, and one after a gap of a minute.
void tst_export::copiesAsItWasRecorded()
{
    QFETCH(Container, container);
    QFETCH(int, reordered);
    QFETCH(bool, holdsSound);
    TestVideo::Recipe recipe{Pictures};
    recipe.reordered = reordered;
    recipe.hasSound = true;
    const QVector<TrackPiece> pieces{piece("a.mkv", noon(), recipe), piece("b.mkv", noon() + PieceMs, recipe),
                                     piece("c.mkv", noon() + 60'000, recipe)};
    const ExportResult result = take({{"Door", pieces, noon(), noon() + 120'000}}, container);
    QCOMPARE(result.error, QString());
    QCOMPARE(result.files.size(), 1);
    QCOMPARE(result.remarks.gaps, 1);
    QVERIFY(qAbs(result.remarks.gapMs - 60'000 + 2 * PieceMs) < 100);
    QCOMPARE(result.remarks.lostSound, !holdsSound);
    Played played(result.files.first());
    const Played recorded(pieces[0].path);
    QCOMPARE(played.pictures, recorded.pictures + recorded.pictures + recorded.pictures);
    QCOMPARE(played.hasSound, holdsSound);
    if (holdsSound)
        QCOMPARE(played.sound.size(), 3 * recorded.sound.size());
    std::sort(played.moments.begin(), played.moments.end());
    for (int i = 0; i < played.moments.size(); ++i)
        QVERIFY2(qAbs(played.moments[i] - i * TestVideo::StepMs) <= 2, qPrintable(QString::number(i)));
    QProcess check;
    check.setWorkingDirectory(m_out);
    check.start("sha256sum", {"-c", "--strict", QFileInfo(result.checksums).fileName()});
    QVERIFY(check.waitForFinished());
    QCOMPARE(check.exitCode(), 0);
}

/// From the key frame on; but MP4 begins with the picture that was asked for.
void tst_export::beginsWithItsStretch()
{
    const TrackPiece one = piece("a.mkv", noon());
    const ExportTask task{"Door", {one}, noon() + 7 * TestVideo::StepMs, noon() + 15 * TestVideo::StepMs};
    const Played whole(take({task}).files.value(0));
    const Played all(one.path);
    QVERIFY(whole.pictures.size() >= 8 && whole.pictures.size() < 15);
    QCOMPARE(whole.pictures, all.pictures.mid(15 - whole.pictures.size(), whole.pictures.size()));
    QCOMPARE(whole.moments.first(), qint64(0));
    AVFormatContext* context = nullptr;
    const QString path = take({task}, Container::Mp4).files.value(0);
    QCOMPARE(avformat_open_input(&context, ("file:" + path).toUtf8().constData(), nullptr, nullptr), 0);
    const AvInput input(context);
    QVERIFY(qAbs(context->duration - 8 * TestVideo::StepMs * 1000) <= 2000);
}

/// Of two cameras the second one begins later, and neither has anything in the minute between.
void tst_export::burnsAllIntoOnePicture()
{
    const TilePainter painter = [](QImage& picture, const QRect& place, const QString& name, qint64) {
        QPainter(&picture).fillRect(QRect(place.topLeft(), QSize(40, 40)),
                                    name == "Door" ? Qt::red : Qt::blue);
    };
    const QVector<TrackPiece> door{piece("a.mkv", noon()), piece("b.mkv", noon() + 60'000)};
    const QVector<TrackPiece> yard{piece("c.mkv", noon() + 60'000)};
    RecordingExporter exporter;
    const ExportResult result =
        wait(exporter, {{{"Door", door, noon(), noon() + 90'000}, {"Yard", yard, noon(), noon() + 90'000}},
                        Container::Matroska,
                        m_out,
                        painter});
    QCOMPARE(QFileInfo(result.files.value(0)).fileName(), QString("Door + Yard-20240506-120000-120130.mp4"));
    QCOMPARE(result.remarks.gaps, 1);
    QCOMPARE(Played(result.files.value(0)).pictures.size(), 2 * Pictures);

    VideoSource source(TestVideo::player(result.files.value(0)));
    source.start();
    QTRY_VERIFY(source.frame());
    const QImage first = source.frame()->image().copy();
    source.stop();
    const QVector<QRect> tiles = PictureExport::tiles(2, first.size());
    QVERIFY(qRed(first.pixel(tiles[0].topLeft() + QPoint(20, 20))) > 200);
    QVERIFY(qBlue(first.pixel(tiles[1].topLeft() + QPoint(20, 20))) > 200);
    QVERIFY(qGray(first.pixel(tiles[1].center())) < 8);
}

void tst_export::goesOnInAnotherFile()
{
    TestVideo::Recipe other{Pictures};
    other.size = {96, 64};
    const ExportResult result = take(
        {{"Door", {piece("a.mkv", noon()), piece("b.mkv", noon() + PieceMs, other)}, noon(), noon() + 9000}});
    QCOMPARE(result.files.size(), 2);
    for (const QString& path : result.files)
        QCOMPARE(Played(path).pictures.size(), Pictures);
}

void tst_export::tellsWhatIsMissing()
{
    const TrackPiece gone{m_directory->filePath("gone.mkv"), noon() + PieceMs, noon() + 2 * PieceMs};
    const ExportResult result = take({{"Door", {piece("a.mkv", noon()), gone}, noon(), noon() + 9000}});
    QCOMPARE(Played(result.files.value(0)).pictures.size(), Pictures);
    QCOMPARE(result.remarks.unread.size(), 1);
    QVERIFY(take({{"Door", {gone}, noon(), noon() + 9000}}).error.contains("gone.mkv"));
    QCOMPARE(left().size(), 2);
}

void tst_export::namesFilesSafely()
{
    const TrackPiece one = piece("a.mkv", noon());
    const QString hostile = "../../\n<img> %1 $(reboot)" + QString(300, QChar(0x5927));
    const ExportTask door{"Door", {one}, noon(), noon() + 9000};
    const ExportResult first = take({door, {hostile, {one}, noon(), noon() + 9000}});
    QCOMPARE(first.files.value(0), m_out + "/Door-20240506-120000-120009.mkv");
    QCOMPARE(QFileInfo(first.files.value(1)).path(), m_out);
    QCOMPARE(take({door}).files.value(0), m_out + "/Door-20240506-120000-120009-2.mkv");
    QCOMPARE(left().size(), 5);
}

void tst_export::leavesNothingBehind_data()
{
    QTest::addColumn<int>("diskBytes"); // 0 for the machine's own disk
    QTest::addColumn<bool>("isCancelled");
    QTest::newRow("cancelled") << 0 << true;
    QTest::newRow("a full disk") << 64 * 1024 << false;
    QTest::newRow("no such directory") << 0 << false;
}

void tst_export::leavesNothingBehind()
{
    QFETCH(int, diskBytes);
    QFETCH(bool, isCancelled);
    TestVideo::Recipe large{500};
    large.size = {320, 240};
    const QVector<ExportTask> tasks(8, {"Door", {piece("a.mkv", noon(), large)}, noon(), noon() + 20'000});
    const QByteArray out = QFile::encodeName(m_out);
    const bool isMounted = diskBytes > 0 && ::mount("none", out.constData(), "tmpfs", 0,
                                                    qPrintable(QString("size=%1").arg(diskBytes))) == 0;
    if (diskBytes > 0 && !isMounted)
        QSKIP("only root can make a small disk");
    if (diskBytes == 0 && !isCancelled)
        QVERIFY(QDir().rmdir(m_out));
    RecordingExporter exporter;
    if (isCancelled)
        connect(
            &exporter, &RecordingExporter::progressed, &exporter, [&] { exporter.cancel(); },
            Qt::DirectConnection);
    const ExportResult result = wait(exporter, {tasks, Container::Mp4, m_out, {}});
    const QStringList found = left();
    if (isMounted)
        QCOMPARE(::umount(out.constData()), 0);
    QVERIFY(result.files.isEmpty());
    QCOMPARE(result.error.contains("cannot write"), !isCancelled);
    QCOMPARE(found, QStringList());
}

int main(int argc, char** argv)
{
    return RunTests<tst_export, QCoreApplication>(argc, argv);
}

#include "tst_export.moc"
