#include "panes/DeckReporter.h"

#include "cameras/CameraList.h"
#include "cameras/CameraTree.h"
#include "common/EventLog.h"

#include <CPaneDeck.h>

namespace {

QString textOf(int value)
{
    return QString::number(value);
}

QString textOf(bool value)
{
    return value ? "true" : "false";
}

QString textOf(const QPoint& point)
{
    return QString("%1:%2").arg(point.x()).arg(point.y());
}

QString textOf(Qt::WindowStates states)
{
    return QString::number(int(states));
}

QString textOf(QTreeWidgetItem* item)
{
    const CameraRecord* camera = CameraTree::cameraOf(item);
    return camera ? camera->name : QString("no camera");
}

} // namespace

template <class... Arguments>
void DeckReporter::report(void (CPaneDeck::*signal)(Arguments...), const char* name)
{
    connect(m_deck, signal, this, [this, name](Arguments... arguments) {
        const QStringList texts{textOf(arguments)...};
        m_log->add(m_origin, QString("%1(%2)").arg(name, texts.join(", ")), EventLog::Level::Technical);
    });
}

DeckReporter::DeckReporter(CPaneDeck* deck, const QString& origin, EventLog* log)
    : QObject(deck), m_deck(deck), m_origin(origin), m_log(log)
{
    report(&CPaneDeck::sig_wndNumberChanged, "sig_wndNumberChanged");
    report(&CPaneDeck::sig_activeWnd, "sig_activeWnd");
    report(&CPaneDeck::sig_OnRightMouseClick, "sig_OnRightMouseClick");
    report(&CPaneDeck::sig_OnWndBtnClick, "sig_OnWndBtnClick");
    report(&CPaneDeck::sig_btnStopClick, "sig_btnStopClick");
    report(&CPaneDeck::sig_btnCloseClick, "sig_btnCloseClick");
    report(&CPaneDeck::sig_SliderMoved, "sig_SliderMoved");
    report(&CPaneDeck::sig_SendPtzCommand, "sig_SendPtzCommand");
    report(&CPaneDeck::sig_RectanglePoint, "sig_RectanglePoint");
    report(&CPaneDeck::sig_SelectRegion, "sig_SelectRegion");
    report(&CPaneDeck::sig_DbClickWnd, "sig_DbClickWnd");
    report(&CPaneDeck::sig_VoiceChanged, "sig_VoiceChanged");
    report(&CPaneDeck::sig_DragEvent, "sig_DragEvent");
    report(&CPaneDeck::sig_TimerSliderdbClicked, "sig_TimerSliderdbClicked");
    report(&CPaneDeck::sig_TimerSliderReleased, "sig_TimerSliderReleased");
    report(&CPaneDeck::sig_ChangeWnd, "sig_ChangeWnd");
    report(&CPaneDeck::sig_btnDownload_click, "sig_btnDownload_click");
    report(&CPaneDeck::sig_sendMouseMsg, "sig_sendMouseMsg");
    report(&CPaneDeck::sig_Activechangebefor, "sig_Activechangebefor");
    report(&CPaneDeck::sig_OnStateChanged, "sig_OnStateChanged");
    report(&CPaneDeck::sig_SwitchVideo, "sig_SwitchVideo");
    report(&CPaneDeck::sig_ReplaySeek, "sig_ReplaySeek");
    report(&CPaneDeck::sig_LayoutEdited, "sig_LayoutEdited");
    report(&CPaneDeck::sig_FullScreenChanged, "sig_FullScreenChanged");
}
