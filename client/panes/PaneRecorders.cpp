#include "panes/PaneRecorders.h"

#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "common/UserFiles.h"
#include "source/StreamRecorder.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

PaneRecorders::PaneRecorders(CPaneDeck* deck, CameraHub* hub, QObject* parent)
    : QObject(parent), m_pDeck(deck), m_pHub(hub)
{
}

PaneRecorders::~PaneRecorders() = default;

void PaneRecorders::Toggle(int pane, const CameraRecord* camera)
{
    if (m_hashRecordings.contains(pane))
        slot_stop(pane);
    else if (camera)
        Start(pane, *camera);
    else
        Refuse(pane, QString("pane %1 has no camera to record").arg(pane));
}

void PaneRecorders::StopAll()
{
    for (int pane : m_hashRecordings.keys())
        slot_stop(pane);
}

void PaneRecorders::slot_stop(int pane)
{
    StreamRecorder* recorder = m_hashRecordings.value(pane).recorder;
    if (!recorder)
        return;
    recorder->stop();
    if (!recorder->error().isEmpty())
        Drop(pane, recorder->error());
    else if (recorder->packetCount() == 0)
        Drop(pane, QString("nothing came to record in pane %1").arg(pane));
    else
        Drop(pane, "recording saved: " + recorder->path());
}

void PaneRecorders::slot_failed(const QString& error)
{
    for (int pane : m_hashRecordings.keys()) {
        if (m_hashRecordings.value(pane).recorder == sender())
            Drop(pane, error);
    }
}

void PaneRecorders::Start(int pane, const CameraRecord& camera)
{
    QString error;
    const QSharedPointer<VideoSource> source = m_pHub->Acquire(camera, &error);
    if (!source) {
        Refuse(pane, error);
        return;
    }
    const QString path = UserFiles::NewPath(UserFiles::Kind::Recording, camera.name);
    auto* recorder = new StreamRecorder(source.data(), path, this);
    connect(recorder, SIGNAL(failed(QString)), SLOT(slot_failed(QString)));
    if (!recorder->start()) {
        Refuse(pane, recorder->error());
        delete recorder;
        return;
    }
    m_hashRecordings.insert(pane, {source, recorder});
    m_pDeck->SetBtnCheck(pane, BTN_RECORD, true);
    Q_EMIT told(QString("pane %1 is recorded to %2").arg(pane).arg(path));
}

void PaneRecorders::Drop(int pane, const QString& text)
{
    // The recorder may be the one that is telling its failure.
    m_hashRecordings.take(pane).recorder->deleteLater();
    Refuse(pane, text);
}

void PaneRecorders::Refuse(int pane, const QString& text)
{
    m_pDeck->SetBtnCheck(pane, BTN_RECORD, false);
    Q_EMIT told(text);
}
