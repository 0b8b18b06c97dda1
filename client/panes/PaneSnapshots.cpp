#include "panes/PaneSnapshots.h"

#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "common/UserFiles.h"
#include "common/Words.h"
#include "decode/FrameConverter.h"
#include "panes/DeckStreams.h"
#include "source/VideoSource.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>
#include <QTimer>

namespace {

constexpr int PatienceMs = 2000;

/// Waits for one picture of a stream, and keeps it decoded as long.
class NextPicture : public QObject
{
public:
    NextPicture(QSharedPointer<VideoSource> source, QObject* parent)
        : QObject(parent), m_source(std::move(source))
    {
    }
    const QSharedPointer<VideoSource>& source() const { return m_source; }

private:
    QSharedPointer<VideoSource> m_source;
};

QImage wholeOf(const FramePtr& frame)
{
    const FramePtr whole = FrameConverter::full(frame);
    return whole ? whole->image().copy() : QImage();
}

} // namespace

PaneSnapshots::PaneSnapshots(DeckStreams* streams, CameraHub* hub, QObject* parent)
    : QObject(parent), m_streams(streams), m_hub(hub)
{
}

void PaneSnapshots::take(int pane)
{
    const CameraRecord* camera = m_streams->cameraAt(pane);
    const FramePtr frame = m_streams->frameAt(pane);
    if (!camera || !frame)
        Q_EMIT told(word("no picture to save"));
    else if (m_streams->showsSmall(pane))
        takeMain(*camera, pane);
    else
        save(wholeOf(frame), camera->name, frame->wallMs);
}

void PaneSnapshots::takeMain(const CameraRecord& camera, int pane)
{
    auto* next = new NextPicture(m_hub->watch(camera, StreamKind::Main), this);
    const auto finish = [this, next, name = camera.name](const FramePtr& frame) {
        next->deleteLater();
        save(wholeOf(frame), name, frame->wallMs);
    };
    // What the pane shows now is what there is if no other comes.
    const FramePtr shown = m_streams->frameAt(pane);
    auto* patience = new QTimer(next);
    patience->setSingleShot(true);
    connect(patience, &QTimer::timeout, next, [=] { finish(shown); });
    patience->start(PatienceMs);
    if (VideoSource* source = next->source().data())
        connect(source, &VideoSource::frameReady, next, [=] {
            if (patience->isActive() && source->frame()) {
                patience->stop();
                finish(source->frame());
            }
        });
}

void PaneSnapshots::save(const QImage& image, const QString& camera, qint64 wallMs)
{
    const QString path = UserFiles::newPath(UserFiles::Kind::Snapshot, camera, wallMs);
    const QPointer<PaneSnapshots> alive(this);
    QThreadPool::globalInstance()->start([alive, image, path] {
        const bool isSaved = image.save(path);
        QMetaObject::invokeMethod(qApp, [alive, isSaved, path] {
            if (!alive)
                return;
            Q_EMIT alive->told((isSaved ? word("snapshot saved: %1") : word("can't write %1")).arg(path));
            if (isSaved)
                Q_EMIT alive->saved(path);
        });
    });
}
