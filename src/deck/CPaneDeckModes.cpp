#include "deck/CPaneDeck.h"

#include "deck/DeckSteps.h"
#include "panes/CAlarmWidget.h"
#include "panes/CVideoTitleWidget.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QScreen>

namespace {

constexpr int TitleHeight = 20;

QRect ScreenUnderCursor()
{
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry() : QRect();
}

} // namespace

void CPaneDeck::GetShowMode(__WND_SHOW_MODE& eMode)
{
    eMode = __WND_SHOW_MODE(m_eShowMode);
}

void CPaneDeck::slot_dbWndClick(int nWndIndex, int nParam)
{
    CVideoWidget* pane = GetVideoWidget(nWndIndex);
    if (!pane || pane->mousMsg() || m_eType == WND_TYPE_TOUR)
        return;
    if (nParam != 1 && m_eShowMode == WND_SHOW_SPLIT)
        DeckSteps::Enlarge(this, pane);
    else if (nParam != 1 && m_eShowMode == WND_SHOW_ENLARGED)
        DeckSteps::Split(this);
    Q_EMIT sig_DbClickWnd(nWndIndex);
}

void CPaneDeck::setMousMsg(int nWndIndex, bool bMouseMsg)
{
    const QPointer<CVideoWidget> pane(GetVideoWidget(nWndIndex));
    if (!pane)
        return;
    if (bMouseMsg) {
        DeckSteps::Enlarge(this, pane);
        slot_wndfullScreen();
        if (!pane)
            return;
        m_nMouseWnd = nWndIndex;
    } else {
        m_nFullScreen = 0;
        setWindowFlags(Qt::SubWindow);
        // As showNormal() does, but a receiver of the state change may have deleted the deck in between.
        setWindowState(windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen));
        if (!pane)
            return;
        show();
        DeckSteps::Split(this);
        m_nMouseWnd = -1;
    }
    pane->setMousMsg(bMouseMsg);
}

bool CPaneDeck::mousMsg(int nWndIndex)
{
    CVideoWidget* pane = GetVideoWidget(nWndIndex);
    return pane && pane->mousMsg();
}

void CPaneDeck::ChangeFull(bool bFull)
{
    m_pTitle->hide();
    if (bFull)
        DeckSteps::EnterFullScreen(this, ScreenUnderCursor());
    else
        DeckSteps::LeaveFullScreen(this);
}

void CPaneDeck::slot_wndfullScreen()
{
    ChangeFull(true);
}

void CPaneDeck::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        ChangeFull(false);
}

void CPaneDeck::ExchangeDisplay(int nSrcWnd, int nDisWnd)
{
    CVideoWidget* source = GetVideoWidget(nSrcWnd);
    CVideoWidget* target = GetVideoWidget(nDisWnd);
    if (!source || !target)
        return;
    const WndScase sourceScale = source->getScaseType();
    const WndScase targetScale = target->getScaseType();
    QSize sourceSize;
    QSize targetSize;
    source->GetVideoSize(sourceSize.rwidth(), sourceSize.rheight());
    target->GetVideoSize(targetSize.rwidth(), targetSize.rheight());
    source->setScaseType(targetScale);
    source->SetVideoSize(targetSize.width(), targetSize.height());
    target->setScaseType(sourceScale);
    target->SetVideoSize(sourceSize.width(), sourceSize.height());
}

bool CPaneDeck::eventFilter(QObject* watched, QEvent* event)
{
    const bool consumed = QWidget::eventFilter(watched, event);
    const QPointer<CPaneDeck> alive(this);
    if (watched != this)
        DeckSteps::FollowDrag(this, event);
    else if (event->type() == QEvent::WindowStateChange)
        Q_EMIT sig_OnStateChanged(windowState());
    if (alive)
        return consumed;
    // The watched object died with the deck: the event must go no further.
    event->accept();
    return true;
}

void CPaneDeck::showTitle(int nWndIndex)
{
    const CVideoWidget* pane = GetVideoWidget(nWndIndex);
    if (!pane)
        return;
    m_nTitleWnd = nWndIndex;
    m_pTitle->SetText(pane->m_strFullTitle);
    m_pTitle->ShowRemoteControl(pane->mousMsg());
    m_pTitle->SetBtnChecked(BTN_ZOOM, pane->m_bZoom);
    m_pTitle->SetBtnChecked(BTN_RECORD, pane->m_bRecord);
    m_pTitle->SetBtnChecked(BTN_AUDIO, pane->m_bAudio);
    m_pTitle->SetBtnChecked(BTN_INSTANT_PLAYBACK, pane->m_bInstant);
    const QRect rect = pane->geometry();
    m_pTitle->setMinimumWidth(rect.width() - 2);
    m_pTitle->setGeometry(rect.x() + 1, rect.y() + 1, rect.width() - 2, TitleHeight);
    setTitleShow(true);
}

void CPaneDeck::setTitleShow(bool bShow)
{
    m_pTitle->setVisible(bShow);
    if (bShow)
        m_pTitle->raise();
    m_pTitle->update();
}

void CPaneDeck::hideTitle(int nWndIndex)
{
    if (nWndIndex != m_nTitleWnd)
        return;
    m_nTitleWnd = -1;
    setTitleShow(false);
}

void CPaneDeck::hideTit()
{
    if (CVideoWidget* pane = GetVideoWidget(m_nTitleWnd))
        pane->HideTitleIfOutside();
}

void CPaneDeck::setText(QString strText, int nWndIndex)
{
    if (nWndIndex == m_nTitleWnd)
        m_pTitle->SetText(strText);
}

void CPaneDeck::setChecked(Btn_type_EX btnType, bool bCheck, int nWndIndex)
{
    if (nWndIndex == m_nTitleWnd)
        m_pTitle->SetBtnChecked(btnType, bCheck);
}

void CPaneDeck::setTitleMousMsg(bool bMouseMsg, int nWndIndex)
{
    if (nWndIndex == m_nTitleWnd)
        m_pTitle->ShowRemoteControl(bMouseMsg);
}

void CPaneDeck::slot_wndBtnClick(Btn_type_EX btnType)
{
    CVideoWidget* pane = GetVideoWidget(m_nTitleWnd);
    if (!pane)
        return;
    if (btnType != BTN_TITLE_STOP)
        pane->slot_wndBtnClick(btnType);
    else if (auto* alarm = qobject_cast<CAlarmWidget*>(pane))
        alarm->slot_onStopClick();
}
