#include "tabs/DeckTab.h"

#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/CameraTree.h"
#include "common/EventLog.h"
#include "common/UserFiles.h"
#include "common/Words.h"
#include "panes/DeckReporter.h"
#include "panes/DeckStreams.h"
#include "panes/PaneRecorders.h"
#include "panes/PaneSound.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

#include <QMenu>
#include <QTimer>
#include <QVBoxLayout>

DeckTab::DeckTab(const QString& name, _WND_TYPE type, int paneCount, CameraHub* hub, EventLog* log)
    : m_strName(name), m_pLog(log), m_pDeck(new CPaneDeck(this, type, paneCount)),
      m_pStreams(new DeckStreams(m_pDeck, paneCount, hub, this)),
      m_pRecorders(new PaneRecorders(m_pDeck, hub, this)),
      m_pSound(new PaneSound(m_pDeck, m_pStreams, hub->Speaker(), this))
{
    setObjectName(name + "Tab");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pDeck);
    new DeckReporter(m_pDeck, name, log);
    connect(m_pDeck, SIGNAL(sig_DragEvent(QTreeWidgetItem*,int)), SLOT(slot_dragEvent(QTreeWidgetItem*,int)));
    connect(m_pDeck, SIGNAL(sig_OnWndBtnClick(int,Btn_type_EX)), SLOT(slot_button(int,Btn_type_EX)));
    connect(m_pDeck, SIGNAL(sig_OnRightMouseClick(int)), SLOT(slot_rightClick(int)));
    connect(m_pDeck, SIGNAL(sig_SendPtzCommand(int,int,int)), SLOT(slot_ptz(int,int,int)));
    connect(m_pStreams, SIGNAL(stateChanged(int,QString)), SLOT(slot_paneState(int,QString)));
    connect(m_pStreams, SIGNAL(cleared(int)), m_pRecorders, SLOT(slot_stop(int)));
    connect(m_pRecorders, SIGNAL(told(QString)), SLOT(Log(QString)));
    connect(m_pSound, SIGNAL(told(QString)), SLOT(Log(QString)));
}

DeckTab::~DeckTab()
{
    m_pRecorders->StopAll();
}

void DeckTab::ShowCamera(const CameraRecord& camera, int pane)
{
    m_pStreams->Assign(pane < 0 ? m_pDeck->GetCurrentWnd() : pane, camera);
}

void DeckTab::SetMouseFunction(int function)
{
    m_nFunction = function;
    for (int pane = 0; pane < m_pStreams->PaneCount(); ++pane)
        m_pDeck->SetFunctionParam(pane, function);
}

void DeckTab::SetScale(WndScase scale)
{
    for (int pane = 0; pane < m_pStreams->PaneCount(); ++pane)
        m_pDeck->setScaseType(scale, pane);
}

void DeckTab::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_bShown)
        return;
    m_bShown = true;
    // Splitters and tabs give out their sizes only after they have been shown.
    QTimer::singleShot(0, this, [this] { FirstShown(); });
}

void DeckTab::ButtonClicked(int pane, Btn_type_EX button)
{
    if (button == BTN_SNAPSHOT)
        SaveSnapshot(pane);
    else if (button == BTN_RECORD)
        m_pRecorders->Toggle(pane, m_pStreams->CameraAt(pane));
    else if (button == BTN_AUDIO)
        m_pSound->Toggle(pane);
    else if (button == BTN_ZOOM)
        TellState(pane, "zoom", button);
    else if (button == BTN_INSTANT_PLAYBACK)
        m_pDeck->setChecked(button, false, pane);
    else if (button == BTN_CLOSE_VIDEO)
        ClosePane(pane);
}

void DeckTab::FillPaneMenu(QMenu* menu, int pane)
{
    menu->addAction(Word("Full screen"), m_pDeck, [this] { m_pDeck->ChangeFull(true); });
    menu->addAction(Word("Remote control"), m_pDeck, [this, pane] { m_pDeck->setMousMsg(pane, true); });
    menu->addSeparator();
    QAction* close = menu->addAction(Word("Close the camera"), this, [this, pane] { ClosePane(pane); });
    close->setEnabled(m_pStreams->CameraAt(pane));
}

void DeckTab::TellState(int pane, const QString& name, Btn_type_EX button) const
{
    const QString state = m_pDeck->btncheck(pane, button) ? "on" : "off";
    Log(QString("pane %1 %2 %3").arg(pane).arg(name, state));
}

void DeckTab::Log(const QString& text) const
{
    m_pLog->Add(m_strName, text);
}

void DeckTab::ClosePane(int pane)
{
    m_pStreams->Clear(pane);
    m_pDeck->SetFunctionParam(pane, m_nFunction);
}

void DeckTab::slot_dragEvent(QTreeWidgetItem* item, int pane)
{
    if (const CameraRecord* camera = CameraTree::CameraOf(item))
        ShowCamera(*camera, pane);
}

void DeckTab::slot_button(int pane, Btn_type_EX button)
{
    ButtonClicked(pane, button);
}

void DeckTab::slot_rightClick(int pane)
{
    auto* menu = new QMenu(this);
    menu->setObjectName("PaneMenu");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    FillPaneMenu(menu, pane);
    menu->popup(QCursor::pos());
}

void DeckTab::slot_ptz(int pane, int command, int type)
{
    if (VideoSource* source = m_pStreams->SourceAt(pane))
        source->ptz(command, type == 0);
}

void DeckTab::slot_paneState(int pane, const QString& text)
{
    m_pDeck->SetFunctionParam(pane, m_nFunction);
    if (!text.isEmpty())
        Log(QString("pane %1 %2").arg(pane).arg(text));
}

void DeckTab::SaveSnapshot(int pane)
{
    const QImage image = m_pStreams->ImageAt(pane);
    if (image.isNull()) {
        Log(Word("no picture to save"));
        return;
    }
    const QString path = UserFiles::NewPath(UserFiles::Kind::Snapshot, m_pStreams->CameraAt(pane)->name);
    Log(image.save(path) ? "snapshot saved: " + path : "can't write " + path);
}
