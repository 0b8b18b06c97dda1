#include "tabs/LiveTab.h"

#include "cameras/CameraList.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "panes/InstantPlayback.h"
#include "panes/PaneSound.h"

#include <CPaneDeck.h>

#include <QSettings>

namespace {

constexpr int PaneCount = 64;
constexpr int FirstLayout = 9;

constexpr char CamerasKey[] = "view/cameras";
constexpr char LayoutKey[] = "view/layout";

} // namespace

LiveTab::LiveTab(const CameraList& cameras, CameraHub* hub, EventLog* log)
    : DeckTab(word("live"), WND_TYPE_MONITOR, PaneCount, hub, log), m_cameras(cameras),
      m_instant(new InstantPlayback(deck(), streams(), this))
{
    setObjectName("liveTab");
    connect(m_instant, &InstantPlayback::told, this, &LiveTab::tell);
    connect(&cameras, &CameraList::added, this, &LiveTab::takeNewCamera);
    connect(deck(), &CPaneDeck::sig_ChangeWnd, this, &LiveTab::exchangePanes);
    connect(deck(), &CPaneDeck::sig_wndNumberChanged, this, &LiveTab::keepLayout);
}

void LiveTab::firstShown()
{
    const QSettings settings;
    deck()->SetShowWndNo(settings.value(LayoutKey, FirstLayout).toInt());
    if (m_layout == 0)
        deck()->SetShowWndNo(FirstLayout);
    const bool saved = settings.contains(CamerasKey);
    const QStringList names = settings.value(CamerasKey).toStringList();
    for (int pane = 0; pane < PaneCount; ++pane) {
        const CameraRecord* camera = nullptr;
        if (saved)
            camera = m_cameras.find(names.value(pane));
        else if (pane < m_cameras.count())
            camera = &m_cameras.at(pane);
        if (camera)
            showCamera(*camera, pane);
    }
}

void LiveTab::takeNewCamera(const CameraRecord* camera)
{
    for (int pane = 0; pane < PaneCount; ++pane) {
        if (streams()->cameraAt(pane))
            continue;
        showCamera(*camera, pane);
        return;
    }
}

void LiveTab::buttonClicked(int pane, Btn_type_EX button)
{
    if (button == BTN_SAVE_VIEW)
        saveView();
    else if (button == BTN_INSTANT_PLAYBACK)
        replay(pane);
    else
        DeckTab::buttonClicked(pane, button);
}

/// What is live is not heard over an older picture.
void LiveTab::replay(int pane)
{
    sound()->hush(pane);
    m_instant->toggle(pane);
}

void LiveTab::exchangePanes(int source, int target)
{
    deck()->ExchangeDisplay(source, target);
    streams()->swap(source, target);
    tell(word("panes %1 and %2 exchanged").arg(source).arg(target));
}

void LiveTab::keepLayout(int count)
{
    m_layout = count;
}

void LiveTab::saveView()
{
    QStringList names;
    for (int pane = 0; pane < PaneCount; ++pane) {
        const CameraRecord* camera = streams()->cameraAt(pane);
        names.append(camera ? camera->name : QString());
    }
    QSettings settings;
    settings.setValue(CamerasKey, names);
    settings.setValue(LayoutKey, m_layout);
    settings.sync();
    tell(settings.status() == QSettings::NoError ? word("view saved") : word("the view can't be saved"));
}
