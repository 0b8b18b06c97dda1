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

const char* const CamerasKey = "view/cameras";
const char* const LayoutKey = "view/layout";

} // namespace

LiveTab::LiveTab(const CameraList& cameras, CameraHub* hub, EventLog* log)
    : DeckTab("live", WND_TYPE_MONITOR, PaneCount, hub, log), m_cameras(cameras),
      m_pInstant(new InstantPlayback(Deck(), Streams(), this))
{
    connect(m_pInstant, SIGNAL(told(QString)), SLOT(Log(QString)));
    connect(Deck(), SIGNAL(sig_ChangeWnd(int,int)), SLOT(slot_changeWnd(int,int)));
    connect(Deck(), SIGNAL(sig_wndNumberChanged(int)), SLOT(slot_layoutChanged(int)));
}

void LiveTab::FirstShown()
{
    const QSettings settings;
    Deck()->SetShowWndNo(settings.value(LayoutKey, FirstLayout).toInt());
    if (m_nLayout == 0)
        Deck()->SetShowWndNo(FirstLayout);
    const bool saved = settings.contains(CamerasKey);
    const QStringList names = settings.value(CamerasKey).toStringList();
    for (int pane = 0; pane < PaneCount; ++pane) {
        const CameraRecord* camera = nullptr;
        if (saved)
            camera = m_cameras.Find(names.value(pane));
        else if (pane < m_cameras.Count())
            camera = &m_cameras.At(pane);
        if (camera)
            ShowCamera(*camera, pane);
    }
}

void LiveTab::ButtonClicked(int pane, Btn_type_EX button)
{
    if (button == BTN_SAVE_VIEW)
        SaveView();
    else if (button == BTN_INSTANT_PLAYBACK)
        Replay(pane);
    else
        DeckTab::ButtonClicked(pane, button);
}

/// What is live is not heard over an older picture.
void LiveTab::Replay(int pane)
{
    Sound()->Hush(pane);
    m_pInstant->Toggle(pane);
}

void LiveTab::slot_changeWnd(int source, int target)
{
    Deck()->ExchangeDisplay(source, target);
    Streams()->Swap(source, target);
    Log(QString("panes %1 and %2 exchanged").arg(source).arg(target));
}

void LiveTab::slot_layoutChanged(int count)
{
    m_nLayout = count;
}

void LiveTab::SaveView()
{
    QStringList names;
    for (int pane = 0; pane < PaneCount; ++pane) {
        const CameraRecord* camera = Streams()->CameraAt(pane);
        names.append(camera ? camera->name : QString());
    }
    QSettings settings;
    settings.setValue(CamerasKey, names);
    settings.setValue(LayoutKey, m_nLayout);
    settings.sync();
    Log(settings.status() == QSettings::NoError ? Word("view saved") : Word("the view can't be saved"));
}
