#include "panes/DeckReporter.h"

#include "cameras/CameraList.h"
#include "cameras/CameraTree.h"
#include "common/EventLog.h"

#include <CPaneDeck.h>

namespace {

QString TextOf(int value)
{
    return QString::number(value);
}

QString TextOf(bool value)
{
    return value ? "true" : "false";
}

QString TextOf(const QPoint& point)
{
    return QString("%1:%2").arg(point.x()).arg(point.y());
}

QString TextOf(Qt::WindowStates states)
{
    return QString::number(int(states));
}

QString TextOf(QTreeWidgetItem* item)
{
    const CameraRecord* camera = CameraTree::CameraOf(item);
    return camera ? camera->name : QString("no camera");
}

} // namespace

template <class... Arguments>
void DeckReporter::Report(void (CPaneDeck::*signal)(Arguments...), const char* name)
{
    connect(m_pDeck, signal, this, [this, name](Arguments... arguments) {
        const QStringList texts{TextOf(arguments)...};
        m_pLog->Add(m_strOrigin, QString("%1(%2)").arg(name, texts.join(", ")));
    });
}

DeckReporter::DeckReporter(CPaneDeck* deck, const QString& origin, EventLog* log)
    : QObject(deck), m_pDeck(deck), m_strOrigin(origin), m_pLog(log)
{
    Report(&CPaneDeck::sig_wndNumberChanged, "sig_wndNumberChanged");
    Report(&CPaneDeck::sig_activeWnd, "sig_activeWnd");
    Report(&CPaneDeck::sig_OnRightMouseClick, "sig_OnRightMouseClick");
    Report(&CPaneDeck::sig_OnWndBtnClick, "sig_OnWndBtnClick");
    Report(&CPaneDeck::sig_btnStopClick, "sig_btnStopClick");
    Report(&CPaneDeck::sig_btnCloseClick, "sig_btnCloseClick");
    Report(&CPaneDeck::sig_SliderMoved, "sig_SliderMoved");
    Report(&CPaneDeck::sig_SendPtzCommand, "sig_SendPtzCommand");
    Report(&CPaneDeck::sig_RectanglePoint, "sig_RectanglePoint");
    Report(&CPaneDeck::sig_SelectRegion, "sig_SelectRegion");
    Report(&CPaneDeck::sig_DbClickWnd, "sig_DbClickWnd");
    Report(&CPaneDeck::sig_VoiceChanged, "sig_VoiceChanged");
    Report(&CPaneDeck::sig_DragEvent, "sig_DragEvent");
    Report(&CPaneDeck::sig_TimerSliderdbClicked, "sig_TimerSliderdbClicked");
    Report(&CPaneDeck::sig_TimerSliderReleased, "sig_TimerSliderReleased");
    Report(&CPaneDeck::sig_ChangeWnd, "sig_ChangeWnd");
    Report(&CPaneDeck::sig_btnDownload_click, "sig_btnDownload_click");
    Report(&CPaneDeck::sig_sendMouseMsg, "sig_sendMouseMsg");
    Report(&CPaneDeck::sig_Activechangebefor, "sig_Activechangebefor");
    Report(&CPaneDeck::sig_OnStateChanged, "sig_OnStateChanged");
    Report(&CPaneDeck::sig_SwitchVideo, "sig_SwitchVideo");
    Report(&CPaneDeck::sig_ReplaySeek, "sig_ReplaySeek");
}
