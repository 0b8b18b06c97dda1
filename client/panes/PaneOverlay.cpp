#include "panes/PaneOverlay.h"

#include "cameras/CameraList.h"
#include "cameras/PtzLeases.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "panes/PaneRecorders.h"
#include "panes/PaneSound.h"
#include "panes/PaneStrip.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

#include <QSettings>

namespace {

constexpr char ShownKey[] = "overlay/shown";
/// A synthetic camera has its name in the picture, which can be read from this width on.
constexpr int CaptionWidth = 352;

} // namespace

PaneOverlay::PaneOverlay(CPaneDeck* deck, DeckStreams* streams, PaneSound* sound, PaneRecorders* recorders,
                         const PtzLeases* leases)
    : QObject(streams), m_deck(deck), m_streams(streams), m_sound(sound), m_leases(leases),
      m_isShown(chosen())
{
    for (int pane = 0; pane < streams->paneCount(); ++pane)
        m_strips.append(new PaneStrip(deck->PaneWidget(pane)));
    connect(streams, &DeckStreams::shownChanged, this, &PaneOverlay::update);
    connect(streams, &DeckStreams::cleared, this, &PaneOverlay::update);
    connect(streams, &DeckStreams::placed, this, &PaneOverlay::updateAll);
    connect(sound, &PaneSound::changed, this, &PaneOverlay::update);
    connect(recorders, &PaneRecorders::changed, this, &PaneOverlay::update);
    if (leases)
        connect(leases, &PtzLeases::changed, this, &PaneOverlay::updateAll);
}

bool PaneOverlay::chosen()
{
    return QSettings().value(ShownKey, true).toBool();
}

void PaneOverlay::choose(bool shown)
{
    QSettings().setValue(ShownKey, shown);
}

void PaneOverlay::setArchived(IsArchived isArchived)
{
    m_isArchived = std::move(isArchived);
    updateAll();
}

void PaneOverlay::setShown(bool shown)
{
    m_isShown = shown;
    updateAll();
}

void PaneOverlay::update(int pane)
{
    if (pane >= 0 && pane < m_strips.size())
        m_strips[pane]->setLabel(labelOf(pane));
}

void PaneOverlay::updateAll()
{
    for (int pane = 0; pane < m_strips.size(); ++pane)
        update(pane);
}

PaneLabel PaneOverlay::labelOf(int pane) const
{
    PaneLabel label;
    const CameraRecord* camera = m_streams->cameraAt(pane);
    if (!camera)
        return label;
    label.state = stateOf(pane);
    if (!m_isShown)
        return label;
    label.name = nameOf(pane);
    label.isRecorded = m_deck->btncheck(pane, BTN_RECORD);
    label.isArchived = m_isArchived && m_streams->isShown(pane) && m_isArchived(*camera);
    label.isHeard = m_sound->isHeard(pane);
    return label;
}

QString PaneOverlay::nameOf(int pane) const
{
    const CameraRecord& camera = *m_streams->cameraAt(pane);
    const bool isLegible = m_streams->isShown(pane) && m_deck->PaneWidget(pane)->width() >= CaptionWidth;
    return isSynthetic(camera) && isLegible ? QString() : camera.name;
}

QString PaneOverlay::stateOf(int pane) const
{
    if (m_streams->isReplayed(pane))
        return word("instant playback");
    const VideoSource* source = m_streams->sourceAt(pane);
    if (source && source->isLate() && !source->isSilent())
        return word("delayed");
    const QString holder = m_leases ? m_leases->holderOf(m_streams->cameraAt(pane)->about.id) : QString();
    return holder.isEmpty() ? QString() : word("turned by %1").arg(holder);
}
