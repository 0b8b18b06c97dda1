#include "panes/PaneRecorders.h"

#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "common/EngineText.h"
#include "common/UserFiles.h"
#include "common/Words.h"
#include "source/StreamRecorder.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

PaneRecorders::PaneRecorders(CPaneDeck* deck, CameraHub* hub, QObject* parent)
    : QObject(parent), m_deck(deck), m_hub(hub)
{
}

PaneRecorders::~PaneRecorders() = default;

void PaneRecorders::toggle(int pane, const CameraRecord* camera)
{
    if (m_recordings.contains(pane))
        stop(pane);
    else if (camera)
        start(pane, *camera);
    else
        refuse(pane, word("pane %1 has no camera to record").arg(pane));
}

void PaneRecorders::stopAll()
{
    for (int pane : m_recordings.keys())
        stop(pane);
}

void PaneRecorders::stop(int pane)
{
    StreamRecorder* recorder = m_recordings.value(pane).recorder;
    if (!recorder)
        return;
    recorder->stop();
    if (!recorder->error().isEmpty())
        drop(pane, engineText(recorder->error()));
    else if (recorder->packetCount() == 0)
        drop(pane, word("nothing came to record in pane %1").arg(pane));
    else {
        const QString path = recorder->path();
        drop(pane, word("recording saved: %1").arg(path));
        Q_EMIT saved(path);
    }
}

void PaneRecorders::recorderFailed(const QString& error)
{
    for (int pane : m_recordings.keys()) {
        if (m_recordings.value(pane).recorder == sender())
            drop(pane, engineText(error));
    }
}

void PaneRecorders::start(int pane, const CameraRecord& camera)
{
    const QSharedPointer<VideoSource> source = m_hub->acquire(camera);
    if (!source)
        return;
    const QString path = UserFiles::newPath(UserFiles::Kind::Recording, camera.name);
    auto* recorder = new StreamRecorder(source.data(), path, this);
    connect(recorder, &StreamRecorder::failed, this, &PaneRecorders::recorderFailed);
    connect(recorder, &StreamRecorder::skipped, this, [this, pane] {
        Q_EMIT told(
            word("pane %1: %2").arg(pane).arg(engineText("the disk is too slow: pictures are left out")));
    });
    if (!recorder->start()) {
        refuse(pane, engineText(recorder->error()));
        delete recorder;
        return;
    }
    m_recordings.insert(pane, {source, recorder});
    m_deck->SetBtnCheck(pane, BTN_RECORD, true);
    Q_EMIT changed(pane);
    Q_EMIT told(word("pane %1 is recorded to %2").arg(pane).arg(path));
}

void PaneRecorders::drop(int pane, const QString& text)
{
    // The recorder may be the one that is telling its failure.
    m_recordings.take(pane).recorder->deleteLater();
    refuse(pane, text);
}

void PaneRecorders::refuse(int pane, const QString& text)
{
    m_deck->SetBtnCheck(pane, BTN_RECORD, false);
    Q_EMIT changed(pane);
    Q_EMIT told(text);
}
