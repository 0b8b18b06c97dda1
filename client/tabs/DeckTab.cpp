#include "tabs/DeckTab.h"

#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/CameraTree.h"
#include "common/EventLog.h"
#include "common/Words.h"
#include "panes/DeckReporter.h"
#include "panes/DeckStreams.h"
#include "panes/PaneKeys.h"
#include "panes/PaneOverlay.h"
#include "panes/PaneRecorders.h"
#include "panes/PaneSnapshots.h"
#include "panes/PaneSound.h"
#include "panes/PaneSteering.h"
#include "panes/PaneZoom.h"
#include "panes/SavedBar.h"
#include "source/VideoSource.h"
#include "tabs/PageLabel.h"

#include <CPaneDeck.h>

#include <QKeyEvent>
#include <QMenu>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int PtzFunction = 1;

} // namespace

DeckTab::DeckTab(const QString& origin, _WND_TYPE type, int paneCount, CameraHub* hub, EventLog* log)
    : m_origin(origin), m_log(log), m_deck(new CPaneDeck(this, type, paneCount)),
      m_streams(new DeckStreams(m_deck, paneCount, hub, this)),
      m_recorders(new PaneRecorders(m_deck, hub, this)),
      m_sound(new PaneSound(m_deck, m_streams, hub->speaker(), this)),
      m_steering(new PaneSteering(m_deck, m_streams, hub, this)),
      m_overlay(new PaneOverlay(m_deck, m_streams, m_sound, m_recorders, hub->leases())),
      m_zoom(new PaneZoom(m_deck, m_streams)), m_snapshots(new PaneSnapshots(m_streams, hub, this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_deck);
    new DeckReporter(m_deck, origin, log);
    addKeys(type, paneCount);
    m_zoom->takeKeys();
    m_deck->installEventFilter(this);
    if (type == WND_TYPE_MONITOR)
        new PageLabel(m_deck, paneCount);
    connect(m_deck, &CPaneDeck::sig_DragEvent, this, &DeckTab::dropCamera);
    connect(m_deck, &CPaneDeck::sig_OnWndBtnClick, this, &DeckTab::buttonClicked);
    connect(m_deck, &CPaneDeck::sig_OnRightMouseClick, this, &DeckTab::showPaneMenu);
    connect(m_deck, &CPaneDeck::sig_LayoutEdited, this, &DeckTab::showEdited);
    connect(m_streams, &DeckStreams::stateChanged, this, &DeckTab::paneStateChanged);
    connect(m_streams, &DeckStreams::cleared, m_recorders, &PaneRecorders::stop);
    connect(m_recorders, &PaneRecorders::told, this, &DeckTab::tell);
    connect(m_sound, &PaneSound::told, this, &DeckTab::tell);
    connect(m_steering, &PaneSteering::told, this, &DeckTab::tell);
    connect(&hub->cameras(), &CameraList::changed, this, &DeckTab::cameraChanged);
    connect(&hub->cameras(), &CameraList::aboutToBeRemoved, this, &DeckTab::cameraGoes);
    connect(m_recorders, &PaneRecorders::saved, this, &DeckTab::showSaved);
    connect(m_snapshots, &PaneSnapshots::told, this, &DeckTab::tell);
    connect(m_snapshots, &PaneSnapshots::saved, this, &DeckTab::showSaved);
    connect(m_zoom, &PaneZoom::changed, this, &DeckTab::tellZoom);
}

DeckTab::~DeckTab()
{
    delete m_keys;
    delete m_steering;
    disconnect(m_recorders, &PaneRecorders::saved, this, nullptr);
    m_recorders->stopAll();
}

void DeckTab::addKeys(_WND_TYPE type, int paneCount)
{
    const auto scope = type == WND_TYPE_PLAYBACK ? PaneKeys::Scope::ButTransport : PaneKeys::Scope::Whole;
    m_keys = new PaneKeys(m_deck, paneCount, scope, this);
    connect(m_keys, &PaneKeys::ptz, m_steering, &PaneSteering::steer);
    connect(m_keys, &PaneKeys::closeAsked, this, [this](int pane) { closePane(pane); });
    connect(m_keys, &PaneKeys::menuAsked, this, &DeckTab::popUpPaneMenu);
}

void DeckTab::showEdited(int layout, bool isSaved)
{
    if (!isSaved)
        m_log->add(m_origin, word("custom layout %1 could not be saved").arg(layout + 1),
                   EventLog::Level::Warning);
    int type = 0;
    int shown = 0;
    m_deck->GetLayout(type, shown);
    if (type != 0 && shown == layout)
        m_deck->slot_changePageNo(1, layout);
}

void DeckTab::showCamera(const CameraRecord& camera, int pane)
{
    m_streams->assign(pane < 0 ? m_deck->GetCurrentWnd() : pane, camera);
}

void DeckTab::setMouseFunction(int function)
{
    m_mouseFunction = function;
    for (int pane = 0; pane < m_streams->paneCount(); ++pane)
        m_deck->SetFunctionParam(pane, function);
}

void DeckTab::setScale(WndScase scale)
{
    for (int pane = 0; pane < m_streams->paneCount(); ++pane)
        m_deck->setScaseType(scale, pane);
}

/// The window's menu has no keys for a deck that fills the screen.
bool DeckTab::eventFilter(QObject* watched, QEvent* event)
{
    const bool isLeft = watched == m_deck && event->type() == QEvent::KeyPress && m_deck->isWindow() &&
                        static_cast<QKeyEvent*>(event)->key() == Qt::Key_F11;
    if (isLeft)
        m_deck->ChangeFull(false);
    return isLeft || QWidget::eventFilter(watched, event);
}

void DeckTab::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_wasShown)
        return;
    m_wasShown = true;
    // Splitters and tabs give out their sizes only after they have been shown.
    QTimer::singleShot(0, this, [this] { firstShown(); });
}

void DeckTab::buttonClicked(int pane, Btn_type_EX button)
{
    if (button == BTN_SNAPSHOT)
        m_snapshots->take(pane);
    else if (button == BTN_RECORD)
        m_recorders->toggle(pane, m_streams->cameraAt(pane));
    else if (button == BTN_AUDIO)
        m_sound->toggle(pane);
    else if (button == BTN_ZOOM)
        m_zoom->setOn(pane, m_deck->btncheck(pane, BTN_ZOOM));
    else if (button == BTN_INSTANT_PLAYBACK)
        m_deck->setChecked(button, false, pane);
    else if (button == BTN_CLOSE_VIDEO)
        closePane(pane);
}

QVector<int> DeckTab::panesOf(const CameraRecord* camera) const
{
    QVector<int> panes;
    for (int pane = 0; pane < m_streams->paneCount(); ++pane) {
        if (m_streams->cameraAt(pane) == camera)
            panes.append(pane);
    }
    return panes;
}

void DeckTab::cameraChanged(const CameraRecord* camera, const CameraRecord& before)
{
    for (int pane : panesOf(camera)) {
        if (isSameStream(*camera, before)) {
            m_deck->SetTitle(pane, camera->name);
            m_overlay->update(pane);
            continue;
        }
        m_recorders->stop(pane);
        m_streams->reload(pane);
    }
}

void DeckTab::cameraGoes(const CameraRecord* camera)
{
    for (int pane : panesOf(camera))
        closePane(pane);
}

void DeckTab::fillPaneMenu(QMenu* menu, int pane)
{
    menu->addAction(word("Full screen"), m_deck, [this] { m_deck->ChangeFull(true); });
    menu->addAction(word("Remote control"), m_deck, [this, pane] { m_deck->setMousMsg(pane, true); });
    QAction* zoom = menu->addAction(word("Digital zoom") + "\tZ");
    zoom->setCheckable(true);
    zoom->setChecked(m_zoom->isOn(pane));
    zoom->setEnabled(m_streams->cameraAt(pane));
    connect(zoom, &QAction::toggled, this, [this, pane](bool on) { m_zoom->setOn(pane, on); });
    menu->addSeparator();
    m_keys->fillMenu(menu);
    menu->addSeparator();
    if (m_steering->canTurn(pane)) {
        QAction* turn = menu->addAction(word("Turn with the mouse"));
        turn->setCheckable(true);
        turn->setChecked(m_mouseFunction == PtzFunction);
        connect(turn, &QAction::toggled, this, [this](bool on) { setMouseFunction(on ? PtzFunction : 0); });
    }
    m_steering->fillMenu(menu, pane);
    QAction* close = menu->addAction(word("Close the camera") + '\t' + word("Delete"), this,
                                     [this, pane] { closePane(pane); });
    close->setEnabled(m_streams->cameraAt(pane));
}

void DeckTab::tellZoom(int pane)
{
    tell((m_zoom->isOn(pane) ? word("pane %1 zoom on") : word("pane %1 zoom off")).arg(pane));
}

void DeckTab::tell(const QString& text) const
{
    m_log->add(m_origin, text);
}

void DeckTab::closePane(int pane)
{
    m_streams->clear(pane);
    m_deck->SetFunctionParam(pane, m_mouseFunction);
}

void DeckTab::dropCamera(QTreeWidgetItem* item, int pane)
{
    if (const CameraRecord* camera = CameraTree::cameraOf(item))
        showCamera(*camera, pane);
}

void DeckTab::showPaneMenu(int pane)
{
    popUpPaneMenu(pane, QCursor::pos());
}

void DeckTab::popUpPaneMenu(int pane, QPoint place)
{
    auto* menu = new QMenu(this);
    menu->setObjectName("PaneMenu");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fillPaneMenu(menu, pane);
    menu->popup(place);
}

void DeckTab::paneStateChanged(int pane, const QString& text)
{
    m_deck->SetFunctionParam(pane, m_mouseFunction);
    if (!text.isEmpty())
        tell(text);
}

void DeckTab::showSaved(const QString& path)
{
    constexpr int Toolbar = 60;
    if (!m_saved)
        m_saved = new SavedBar(m_deck, Toolbar);
    m_saved->tell(path);
}
