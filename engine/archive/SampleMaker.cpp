#include "archive/SampleMaker.h"

#include "decode/FramePool.h"
#include "decode/MotionDetector.h"
#include "decode/PacketEncoder.h"
#include "packets/MatroskaWriter.h"
#include "packets/PacketHub.h"
#include "synthetic/PtzMotion.h"
#include "synthetic/SceneComposer.h"

#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <QThreadPool>

namespace {

constexpr qint64 StepMs = 80;
/// Long enough to be seen on a scale that shows the whole day in a thousand columns.
constexpr qint64 AlarmMs = 100'000;

class FileSink : public PacketSink
{
public:
    explicit FileSink(const QString& path) { m_isFine = m_file.open(path); }
    void take(const PacketPtr& packet) override { m_isFine = m_isFine && m_file.write(*packet); }
    bool isFine() const { return m_isFine; }

private:
    MatroskaWriter m_file;
    bool m_isFine;
};

/// Notes from when to when something moves.
class MotionNotes
{
public:
    void look(const Frame& frame)
    {
        const bool moves = m_detector.look(frame);
        if (moves && !m_since)
            m_since = frame.wallMs;
        else if (!moves && m_since)
            end(frame.wallMs);
    }

    QVector<Span> spans(qint64 endMs)
    {
        if (m_since)
            end(endMs);
        return m_spans;
    }

private:
    void end(qint64 ms)
    {
        m_spans.append({Span::Motion, *m_since, ms});
        m_since.reset();
    }

    MotionDetector m_detector;
    std::optional<qint64> m_since;
    QVector<Span> m_spans;
};

} // namespace

SampleMaker::SampleMaker(ArchiveKeeper* keeper, CaptionPainter caption, QObject* parent)
    : QObject(parent), m_keeper(keeper), m_caption(std::move(caption))
{
}

SampleMaker::~SampleMaker()
{
    *m_isStopped = true;
}

QVector<SampleMaker::Piece> SampleMaker::plan(const QStringList& names, qint64 fromMs, qint64 toMs,
                                              qint64 pieceMs) const
{
    QVector<Piece> pieces;
    const qint64 distance = (toMs - fromMs) / PiecesPerCamera;
    for (int i = 0; i < PiecesPerCamera; ++i) {
        for (int camera = 0; camera < names.size(); ++camera) {
            const qint64 start = fromMs + i * distance + distance / 4;
            pieces.append({camera + 1,
                           names[camera],
                           start,
                           start + pieceMs,
                           m_keeper->paths()->beginPart(names[camera], start, true),
                           {}});
        }
    }
    // The last one, which lies nearest to now, brings the alarm.
    for (int i = qMax(0, pieces.size() - names.size()); i < pieces.size(); ++i) {
        const qint64 start = (3 * pieces[i].startMs + pieces[i].endMs) / 4;
        pieces[i].spans.append({Span::Alarm, start, qMin(start + AlarmMs, pieces[i].endMs)});
    }
    return pieces;
}

void SampleMaker::start(const QStringList& names, qint64 fromMs, qint64 toMs, qint64 pieceMs)
{
    const QPointer<SampleMaker> alive(this);
    auto work = [alive, caption = m_caption, stop = m_isStopped,
                 pieces = plan(names, fromMs, toMs, pieceMs)]() mutable {
        for (Piece& piece : pieces) {
            const bool isMade = make(piece, caption, *stop);
            if (*stop) {
                QFile::remove(piece.path);
                return;
            }
            if (isMade)
                QMetaObject::invokeMethod(qApp, [alive, piece] {
                    if (alive)
                        alive->take(piece);
                });
        }
        QMetaObject::invokeMethod(qApp, [alive] {
            if (alive)
                Q_EMIT alive->finished();
        });
    };
    QThreadPool::globalInstance()->start(std::move(work));
}

bool SampleMaker::make(Piece& piece, const CaptionPainter& caption, const std::atomic<bool>& isStopped)
{
    QString error;
    auto art = SceneArt::scene(SceneComposer::sceneOf(piece.number), &error);
    const auto sink = std::make_shared<FileSink>(piece.path);
    if (!art || !sink->isFine())
        return false;
    SceneComposer composer(piece.number, Caption(piece.camera, caption), std::move(art));
    const QRectF home = PtzMotion(SceneArt::WholeSize, SceneComposer::ViewSize).view(0);
    FramePool pool;
    PacketHub hub;
    hub.add(sink);
    PacketEncoder encoder;
    MotionNotes notes;
    for (qint64 ms = piece.startMs; ms < piece.endMs && !isStopped && sink->isFine(); ms += StepMs) {
        const std::shared_ptr<Frame> frame =
            pool.take(SceneComposer::ViewSize.width(), SceneComposer::ViewSize.height());
        frame->wallMs = ms;
        composer.compose(*frame, ms, home);
        notes.look(*frame);
        encoder.encode(*frame, hub);
    }
    piece.spans += notes.spans(piece.endMs);
    return sink->isFine();
}

void SampleMaker::take(const Piece& piece)
{
    m_keeper->finish({piece.path, piece.camera, piece.startMs, piece.endMs, true, true});
    QVector<CameraSpan> spans;
    for (const Span& span : piece.spans)
        spans.append({piece.camera, span, true});
    m_keeper->setSpans(spans);
}
