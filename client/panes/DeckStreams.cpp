#include "panes/DeckStreams.h"

#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "common/Words.h"
#include "panes/FramePump.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

#include <QEvent>
#include <QTimer>

DeckStreams::DeckStreams(CPaneDeck* deck, int paneCount, CameraHub* hub, QObject* parent)
    : QObject(parent), m_pDeck(deck), m_vecPanes(paneCount), m_strWaiting(Word("Connecting ...")),
      m_makeSource(
          [hub](int, const CameraRecord& camera, QString* error) { return hub->Acquire(camera, error); })
{
    for (int i = 0; i < paneCount; ++i) {
        Pane& pane = m_vecPanes[i];
        pane.label = static_cast<QWidget*>(deck->GetHWND(i));
        pane.label->installEventFilter(this);
        pane.label->parent()->installEventFilter(this);
        pane.pump = new FramePump(pane.label, this);
    }
}

DeckStreams::~DeckStreams() = default;

void DeckStreams::Assign(int pane, const CameraRecord& camera)
{
    if (!IsPane(pane))
        return;
    Clear(pane);
    m_vecPanes[pane].camera = &camera;
    m_pDeck->SetTitle(pane, camera.name);
    slot_sync();
}

void DeckStreams::Clear(int pane)
{
    if (!IsPane(pane) || !m_vecPanes[pane].camera)
        return;
    Stop(pane);
    m_vecPanes[pane].camera = nullptr;
    m_pDeck->ResetWnd(pane);
    Q_EMIT cleared(pane);
    Q_EMIT stateChanged(pane, QString());
}

void DeckStreams::Swap(int first, int second)
{
    if (!IsPane(first) || !IsPane(second) || first == second)
        return;
    const CameraRecord* one = CameraAt(first);
    const CameraRecord* other = CameraAt(second);
    Clear(first);
    Clear(second);
    if (other)
        Assign(first, *other);
    if (one)
        Assign(second, *one);
}

void DeckStreams::SetReplay(int pane, VideoSource* replay)
{
    if (!SourceAt(pane))
        return;
    m_vecPanes[pane].replay = replay;
    m_vecPanes[pane].pump->setSource(replay ? replay : SourceAt(pane));
    ShowState(pane);
}

const CameraRecord* DeckStreams::CameraAt(int pane) const
{
    return IsPane(pane) ? m_vecPanes[pane].camera : nullptr;
}

VideoSource* DeckStreams::SourceAt(int pane) const
{
    return IsPane(pane) ? m_vecPanes[pane].source.data() : nullptr;
}

QImage DeckStreams::ImageAt(int pane) const
{
    if (!IsPane(pane) || !m_vecPanes[pane].pump->frame())
        return QImage();
    return m_vecPanes[pane].pump->frame()->image().copy();
}

int DeckStreams::PlayingCount() const
{
    int count = 0;
    for (const Pane& pane : m_vecPanes)
        count += pane.source && pane.pump->frame() ? 1 : 0;
    return count;
}

bool DeckStreams::eventFilter(QObject* watched, QEvent* event)
{
    // Shows and hides come in bursts at a change of layout: what plays is settled once they are over.
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide)
        SyncLater();
    if (event->type() == QEvent::Paint)
        NotePaint(watched);
    return QObject::eventFilter(watched, event);
}

// A label in use paints nothing by itself, so a still picture is gone once what lies below it is painted.
void DeckStreams::NotePaint(const QObject* widget)
{
    for (Pane& pane : m_vecPanes) {
        if (pane.label == widget)
            pane.wiped = false;
        if (pane.label->parent() != widget)
            continue;
        pane.wiped = true;
        SyncLater();
    }
}

void DeckStreams::SyncLater()
{
    if (m_bSyncPending)
        return;
    m_bSyncPending = true;
    QTimer::singleShot(0, this, SLOT(slot_sync()));
}

void DeckStreams::slot_sync()
{
    m_bSyncPending = false;
    for (int i = 0; i < m_vecPanes.size(); ++i) {
        const Pane& pane = m_vecPanes[i];
        const bool wanted = pane.camera && pane.label->isVisible();
        if (wanted && !pane.source)
            Start(i);
        else if (!wanted && pane.source)
            Stop(i);
        else if (wanted && pane.wiped)
            pane.pump->repeat();
    }
}

void DeckStreams::Start(int index)
{
    Pane& pane = m_vecPanes[index];
    QString error;
    pane.source = m_makeSource(index, *pane.camera, &error);
    if (!pane.source) {
        m_pDeck->SetMessage(index, error);
        return;
    }
    connect(pane.source.data(), SIGNAL(stateChanged()), SLOT(slot_sourceState()), Qt::UniqueConnection);
    pane.pump->setSource(pane.source.data());
    Q_EMIT started(index);
    ShowState(index);
}

void DeckStreams::Stop(int index)
{
    Pane& pane = m_vecPanes[index];
    if (!pane.source)
        return;
    Q_EMIT stopped(index);
    pane.replay = nullptr;
    pane.pump->setSource(nullptr);
    pane.pump->clear();
    pane.source.clear();
    pane.playing = false;
    m_pDeck->EnableRefresh(index, true);
}

void DeckStreams::slot_sourceState()
{
    for (int i = 0; i < m_vecPanes.size(); ++i) {
        if (m_vecPanes[i].source && m_vecPanes[i].source.data() == sender())
            ShowState(i);
    }
}

void DeckStreams::ShowState(int index)
{
    Pane& pane = m_vecPanes[index];
    if (pane.replay)
        return;
    const bool playing = pane.source->state() == SourceState::Playing;
    const QString reason = pane.source->reason();
    const QString text = reason.isEmpty() ? m_strWaiting : reason;
    if (playing || !text.isEmpty())
        m_pDeck->SetMessage(index, playing ? QString() : text);
    // A pane is in use, and gets the title bar, while its camera plays.
    m_pDeck->EnableRefresh(index, !playing);
    if (pane.playing == playing && reason.isEmpty())
        return;
    pane.playing = playing;
    if (!playing)
        pane.pump->clear();
    Q_EMIT stateChanged(index, playing ? "plays " + pane.camera->name : reason);
}
