#include "panes/DeckStreams.h"

#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "common/EngineText.h"
#include "common/Words.h"
#include "panes/FramePump.h"
#include "panes/PaneNotice.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

#include <QEvent>
#include <QTimer>

DeckStreams::DeckStreams(CPaneDeck* deck, int paneCount, CameraHub* hub, QObject* parent)
    : QObject(parent), m_deck(deck), m_panes(paneCount), m_waitingText(word("Connecting ...")),
      m_makeSource(
          [hub](int, const CameraRecord& camera, StreamKind kind) { return hub->watch(camera, kind); })
{
    for (int i = 0; i < paneCount; ++i) {
        Pane& pane = m_panes[i];
        pane.label = deck->PaneWidget(i);
        pane.label->installEventFilter(this);
        pane.pump = new FramePump(deck, i, this);
        connect(pane.pump, &FramePump::videoSizeChanged, this, &DeckStreams::syncLater);
        pane.notice = new PaneNotice(pane.label);
    }
}

DeckStreams::~DeckStreams() = default;

void DeckStreams::assign(int pane, const CameraRecord& camera)
{
    if (!isPane(pane))
        return;
    clear(pane);
    m_panes[pane].camera = &camera;
    reload(pane);
}

void DeckStreams::reload(int index)
{
    if (!isPane(index) || !m_panes[index].camera)
        return;
    Pane& pane = m_panes[index];
    stop(index);
    pane.smallSize = QSize();
    pane.kind = pane.camera->address && pane.camera->address->small() ? StreamKind::Small : StreamKind::Main;
    m_deck->SetTitle(index, pane.camera->name);
    sync();
}

void DeckStreams::clear(int pane)
{
    if (!isPane(pane) || !m_panes[pane].camera)
        return;
    stop(pane);
    m_panes[pane].camera = nullptr;
    m_deck->ResetWnd(pane);
    Q_EMIT cleared(pane);
    Q_EMIT stateChanged(pane, QString());
}

void DeckStreams::swap(int first, int second)
{
    if (!isPane(first) || !isPane(second) || first == second)
        return;
    const CameraRecord* one = cameraAt(first);
    const CameraRecord* other = cameraAt(second);
    clear(first);
    clear(second);
    if (other)
        assign(first, *other);
    if (one)
        assign(second, *one);
}

void DeckStreams::setReplay(int pane, VideoSource* replay)
{
    if (!sourceAt(pane))
        return;
    m_panes[pane].replay = replay;
    m_panes[pane].pump->setSource(replay ? replay : sourceAt(pane));
    showState(pane);
    syncLater();
}

void DeckStreams::setZoom(int pane, const ZoomView& zoom)
{
    if (!isPane(pane))
        return;
    m_panes[pane].pump->setZoom(zoom);
    syncLater();
}

const CameraRecord* DeckStreams::cameraAt(int pane) const
{
    return isPane(pane) ? m_panes[pane].camera : nullptr;
}

VideoSource* DeckStreams::sourceAt(int pane) const
{
    return isPane(pane) ? m_panes[pane].source.data() : nullptr;
}

FramePtr DeckStreams::frameAt(int pane) const
{
    return isPane(pane) ? m_panes[pane].pump->frame() : nullptr;
}

bool DeckStreams::showsSmall(int index) const
{
    if (!isPane(index) || m_panes[index].replay || !m_panes[index].camera)
        return false;
    const Pane& pane = m_panes[index];
    const bool hasSmall = pane.camera->address && pane.camera->address->small();
    return hasSmall && (pane.kind == StreamKind::Small) == pane.next.isNull();
}

QImage DeckStreams::wholeAt(int pane) const
{
    const FramePtr frame = frameAt(pane);
    return frame ? frame->image().copy() : QImage();
}

int DeckStreams::playingCount() const
{
    int count = 0;
    for (const Pane& pane : m_panes)
        count += pane.source && pane.pump->frame() ? 1 : 0;
    return count;
}

bool DeckStreams::isShown(int pane) const
{
    return isPane(pane) && m_panes[pane].source && m_panes[pane].pump->frame();
}

bool DeckStreams::eventFilter(QObject* watched, QEvent* event)
{
    // Shows and hides come in bursts at a change of layout: what plays is settled once they are over.
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide) {
        m_deck->window()->installEventFilter(this);
        syncLater();
    }
    if (event->type() == QEvent::WindowStateChange || event->type() == QEvent::Resize)
        syncLater();
    return QObject::eventFilter(watched, event);
}

bool DeckStreams::isOnScreen(const Pane& pane) const
{
    return pane.label->isVisible() && !pane.label->window()->isMinimized();
}

void DeckStreams::syncLater()
{
    if (m_isSyncPending)
        return;
    m_isSyncPending = true;
    QTimer::singleShot(0, this, &DeckStreams::sync);
}

void DeckStreams::sync()
{
    m_isSyncPending = false;
    for (int i = 0; i < m_panes.size(); ++i) {
        const Pane& pane = m_panes[i];
        const bool wanted = pane.camera && isOnScreen(pane);
        if (wanted && !pane.source)
            start(i);
        else if (!wanted && pane.source)
            stop(i);
        if (pane.source)
            chooseKind(i);
    }
    tellSizes();
    Q_EMIT placed();
}

void DeckStreams::start(int index)
{
    Pane& pane = m_panes[index];
    pane.source = m_makeSource(index, *pane.camera, pane.kind);
    if (!pane.source) {
        m_deck->SetMessage(index, whyNoAddress(*pane.camera));
        return;
    }
    connect(pane.source.data(), &VideoSource::stateChanged, this, &DeckStreams::sourceStateChanged,
            Qt::UniqueConnection);
    pane.pump->setSource(pane.source.data());
    Q_EMIT started(index);
    showState(index);
}

void DeckStreams::stop(int index)
{
    Pane& pane = m_panes[index];
    if (!pane.source)
        return;
    Q_EMIT stopped(index);
    pane.replay = nullptr;
    pane.toldReason.clear();
    pane.next.clear();
    pane.notice->follow(nullptr, QString());
    pane.pump->setSource(nullptr);
    pane.pump->clear();
    pane.source.clear();
    pane.playing = false;
    m_deck->EnableRefresh(index, true);
}

void DeckStreams::sourceStateChanged()
{
    for (int i = 0; i < m_panes.size(); ++i) {
        if (m_panes[i].source && m_panes[i].source.data() == sender())
            showState(i);
    }
}

void DeckStreams::showState(int index)
{
    Pane& pane = m_panes[index];
    pane.notice->follow(pane.replay ? nullptr : pane.source.data(), m_waitingText);
    Q_EMIT shownChanged(index);
    if (pane.replay)
        return;
    const bool playing = pane.source->state() == SourceState::Playing;
    const QString reason = engineText(pane.source->reason());
    // Where the pane has nothing of its own to say, the notice tells it.
    if (playing || !reason.isEmpty() || !m_waitingText.isEmpty())
        m_deck->SetMessage(index, QString());
    // A pane is in use, and gets the title bar, while its camera plays.
    m_deck->EnableRefresh(index, !playing);
    if (pane.playing == playing && pane.toldReason == reason)
        return;
    pane.playing = playing;
    pane.toldReason = reason;
    if (!playing)
        pane.pump->clear();
    const QString detail = playing ? pane.camera->name : reason;
    const QString form = playing ? word("pane %1 plays %2") : word("pane %1: %2");
    Q_EMIT stateChanged(index, detail.isEmpty() ? QString() : form.arg(QString::number(index), detail));
}
