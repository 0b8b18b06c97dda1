#include "deck/CPaneDeck.h"

#include "panes/CVideoWidget.h"
#include "timeline/CTimerSlider.h"
#include "timeline/ToPixel.h"
#include "toolbars/CMonitorToolBar.h"
#include "toolbars/CPlaybackToolBar.h"

#include <QAbstractButton>

QString CPaneDeck::GetSpeedInfo()
{
    CVideoWidget* pane = GetVideoWidget(m_nActiveWnd);
    return pane ? pane->GetSpeedInfo() : QString();
}

void CPaneDeck::SetWndBtnState(int nWndIndex, Btn_type_EX btnType, int nState)
{
    if (m_pPlaybackBar && nWndIndex == m_nActiveWnd)
        m_pPlaybackBar->SetWndBtnState(btnType, nState);
    if (btnType == BTN_RECORD)
        SetWndRecord(nWndIndex, nState != 0);
    else if (btnType == BTN_AUDIO)
        SetWndAudio(nWndIndex, nState != 0);
    else if (btnType == BTN_PLAY)
        SetWndPlay(nWndIndex, nState != 0);
}

void CPaneDeck::SetProgressValue(int nWndIndex, int nValue)
{
    if (m_pPlaybackBar && nWndIndex == m_nActiveWnd)
        m_pPlaybackBar->SetProgressValue(nValue);
}

void CPaneDeck::SetVoiceValue(int nWndIndex, int nValue)
{
    if (m_pPlaybackBar && nWndIndex == m_nActiveWnd)
        m_pPlaybackBar->SetVoiceValue(nValue);
}

void CPaneDeck::SetToolBtnEnable(bool bEnable, bool bAudio)
{
    if (m_pPlaybackBar)
        m_pPlaybackBar->SetToolBtnEnable(bEnable, bAudio);
}

void CPaneDeck::ChangePlaybackViewType(PlaybackViewType eType)
{
    if (m_pPlaybackBar)
        m_pPlaybackBar->ChangePlaybackViewType(eType);
}

void CPaneDeck::GetSelectedTime(short& nHour, short& nMinute, short& nSecond, short& nEndHour,
                                short& nEndMinute, short& nEndSecond)
{
    if (m_pPlaybackBar)
        m_pPlaybackBar->GetSelectedTime(nHour, nMinute, nSecond, nEndHour, nEndMinute, nEndSecond);
}

void CPaneDeck::SetTimerSliderPose(short& nHour, short& nMinute, short& nSecond)
{
    if (m_pPlaybackBar)
        m_pPlaybackBar->SetTimerSliderPose(nHour, nMinute, nSecond);
}

QTime CPaneDeck::SelectedTime()
{
    short hour = -1, minute = 0, second = 0, endHour = 0, endMinute = 0, endSecond = 0;
    GetSelectedTime(hour, minute, second, endHour, endMinute, endSecond);
    return QTime(hour, minute, second);
}

void CPaneDeck::SetSelectedTime(QTime time)
{
    if (!time.isValid())
        return;
    short hour = short(time.hour()), minute = short(time.minute()), second = short(time.second());
    SetTimerSliderPose(hour, minute, second);
}

void CPaneDeck::SetTimerPeriod(const QVector<QRgb>& colors)
{
    constexpr int secondsOfDay = 86400;
    if (colors.size() != secondsOfDay) {
        qWarning("CPaneDeck: a day has 86400 colours, not %d", int(colors.size()));
        return;
    }
    // The toolbar copies the table and writes nothing to it.
    SetTimerPeriod(const_cast<QRgb*>(colors.constData()));
}

void CPaneDeck::SetTimerPeriod(unsigned int* pColors)
{
    if (m_pPlaybackBar)
        m_pPlaybackBar->SetTimerPeriod(pColors);
}

PlaybackViewType CPaneDeck::GetPlaybackViewType()
{
    return m_pPlaybackBar ? m_pPlaybackBar->ViewType() : PLAYBACK_VIEW_TIMER;
}

int CPaneDeck::GetProgressValue()
{
    return m_pPlaybackBar ? m_pPlaybackBar->ProgressValue() : -1;
}

int CPaneDeck::GetVoiceValue()
{
    return m_pPlaybackBar ? m_pPlaybackBar->VoiceValue() : -1;
}

bool CPaneDeck::IsToolBtnEnabled(Btn_type_EX btnType)
{
    const QAbstractButton* button = m_pPlaybackBar ? m_pPlaybackBar->ButtonOf(btnType) : nullptr;
    return button && button->isEnabled();
}

bool CPaneDeck::IsToolBtnChecked(Btn_type_EX btnType)
{
    const QAbstractButton* button = m_pPlaybackBar ? m_pPlaybackBar->ButtonOf(btnType) : nullptr;
    return button && button->isChecked();
}

QRect CPaneDeck::TimeScaleRect()
{
    const CTimerSlider* scale = m_pPlaybackBar ? m_pPlaybackBar->Scale() : nullptr;
    if (!scale || !scale->isVisible())
        return QRect();
    const QWidget* viewport = scale->parentWidget();
    return QRect(viewport->mapTo(this, QPoint()), viewport->size());
}

QRect CPaneDeck::DayRect()
{
    const QRect shown = TimeScaleRect();
    return shown.isNull() ? shown : m_pPlaybackBar->Scale()->geometry().translated(shown.topLeft());
}

void CPaneDeck::SetDayRect(int nLeft, int nWidth)
{
    const QRect shown = TimeScaleRect();
    if (!shown.isNull())
        m_pPlaybackBar->Scale()->SetView(ToPixel(double(nLeft) - shown.left()), nWidth);
}

void CPaneDeck::addWidget(QWidget* pWidget)
{
    if (m_pMonitorBar)
        m_pMonitorBar->addWidget(pWidget);
}

void CPaneDeck::insertWidget(int nIndex, QWidget* pWidget)
{
    if (m_pMonitorBar)
        m_pMonitorBar->insertWidget(nIndex, pWidget);
}

void CPaneDeck::slot_OnWndBtnClicked(Btn_type_EX btnType)
{
    if (btnType == BTN_PREV_PAGE || btnType == BTN_NEXT_PAGE) {
        m_nPageType = btnType;
        btnType == BTN_NEXT_PAGE ? OnNextPage() : OnPreviePage();
        return;
    }
    if (btnType == BTN_DOWNLOAD) {
        Q_EMIT sig_btnDownload_click();
        return;
    }
    // The test has no lower bound: an active pane of an earlier page keeps its buttons.
    const bool reachable = btnType == BTN_SAVE_VIEW || m_nActiveWnd < (m_nPage + 1) * m_nPageWnds;
    if (m_nActiveWnd >= 0 && reachable)
        Q_EMIT sig_OnWndBtnClick(m_nActiveWnd, btnType);
}

void CPaneDeck::slot_SliderMoved(int nValue)
{
    Q_EMIT sig_SliderMoved(m_nActiveWnd, nValue);
}

void CPaneDeck::slot_VoiceChanged(int nValue)
{
    Q_EMIT sig_VoiceChanged(m_nActiveWnd, nValue);
}

void CPaneDeck::slot_TimerSliderMoved()
{
    Q_EMIT sig_TimerSliderReleased(m_nActiveWnd);
}

void CPaneDeck::slot_TimerSliderDbClick()
{
    Q_EMIT sig_TimerSliderdbClicked(m_nActiveWnd);
}

void CPaneDeck::slot_MouseBtnRelease() {}
