#include "panes/CVideoWidget.h"

#include "common/Accessible.h"
#include "deck/CPaneDeck.h"
#include "panes/CTimePlayBackWidget.h"
#include "panes/QMyLabel.h"
#include "panes/QSubWidget.h"

#include <QCursor>
#include <QResizeEvent>
#include <QVBoxLayout>

CVideoWidget::CVideoWidget(QWidget* parent, int nWndIndex) : QFrame(parent), m_nWndIndex(nWndIndex)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setObjectName("CVideoWidget");
    m_pLayout = new QVBoxLayout(this);
    m_pLayout->setSpacing(0);
    m_pLayout->setContentsMargins(0, 0, 0, 0);
    m_pSubWidget = new QSubWidget(this, nWndIndex);
    m_pSubWidget->setObjectName("SubWidget");
    m_pLayout->addWidget(m_pSubWidget);
    // A new widget waits for a first resize, which grab() sends it even while it is hidden: a pane that no
    // layout has shown yet would take the title bar. The deck's layouts are what sizes a pane.
    setAttribute(Qt::WA_PendingResizeEvent, false);
    MakeConnections();
}

CPaneDeck* CVideoWidget::Deck() const
{
    // Null while the deck's destructor takes its children down: a dying pane may still make the mouse leave
    // or enter another one.
    return qobject_cast<CPaneDeck*>(parent());
}

void CVideoWidget::SetActive(bool bActive)
{
    m_bActive = bActive;
    m_pSubWidget->SetSelected(bActive);
    m_pSubWidget->update();
    TellSelected(this);
}

QString CVideoWidget::GetSpeedInfo()
{
    return m_strSpeed;
}

void* CVideoWidget::GetHWND()
{
    return m_pSubWidget->GetLabel();
}

void CVideoWidget::SetFunctionParam(int nParam)
{
    m_pSubWidget->SetFunctionMode(nParam);
}

void CVideoWidget::SetCursorZone(int nZone)
{
    m_pSubWidget->SetCursorZone(nZone);
}

bool* CVideoWidget::CheckFlag(Btn_type_EX btnType)
{
    switch (btnType) {
    case BTN_RECORD:
        return &m_bRecord;
    case BTN_AUDIO:
        return &m_bAudio;
    case BTN_ZOOM:
        return &m_bZoom;
    default:
        return nullptr;
    }
}

void CVideoWidget::SetBtnCheck(Btn_type_EX btnType, bool bCheck)
{
    Q_EMIT sig_setBtnCheck(btnType, bCheck);
}

bool CVideoWidget::btncheck(Btn_type_EX btnType)
{
    const bool* flag = CheckFlag(btnType);
    return flag && *flag;
}

void CVideoWidget::setBtnCheck(Btn_type_EX btnType)
{
    bool* flag = CheckFlag(btnType);
    if (!flag)
        return;
    *flag = !*flag;
    TellAccessible(this, QAccessible::DescriptionChanged);
    if (CPaneDeck* deck = Deck())
        deck->setChecked(btnType, *flag, m_nWndIndex);
}

void CVideoWidget::slot_setBtnCheck(Btn_type_EX btnType, bool bCheck)
{
    if (bool* flag = CheckFlag(btnType))
        *flag = bCheck;
    TellAccessible(this, QAccessible::DescriptionChanged);
    if (CPaneDeck* deck = Deck())
        deck->setChecked(btnType, bCheck, m_nWndIndex);
}

void CVideoWidget::ResetWnd()
{
    Q_EMIT sig_resetWnd();
}

void CVideoWidget::slot_resetWnd()
{
    m_pSubWidget->SetRefreshEnabled(true);
    m_pSubWidget->ResetSurface();
    m_strFullTitle.clear();
    m_strSubTitle.clear();
    m_strTitle.clear();
    m_bZoom = false;
    m_bRecord = false;
    m_bAudio = false;
    m_strSpeed.clear();
    ClosePlayBackSlider();
    TellAccessible(this, QAccessible::NameChanged);
    TellAccessible(this, QAccessible::DescriptionChanged);
    if (CPaneDeck* deck = Deck())
        deck->hideTitle(m_nWndIndex);
}

void CVideoWidget::SendMesInfo(WndMessage_type type, int nParam1, QString strParam2)
{
    Q_EMIT sig_wndMesInfo(type, nParam1, strParam2);
}

void CVideoWidget::slot_wndMesInfo(WndMessage_type type, int, QString strParam2)
{
    if (type == WNDMSG_TEXT)
        m_pSubWidget->SetText(strParam2);
    if (type != WNDMSG_TITLE && type != WNDMSG_SUBTITLE)
        return;
    (type == WNDMSG_TITLE ? m_strTitle : m_strSubTitle) = strParam2;
    JoinTitle();
}

void CVideoWidget::JoinTitle()
{
    m_strFullTitle = m_strTitle + m_strSubTitle;
    TellAccessible(this, QAccessible::NameChanged);
    if (CPaneDeck* deck = Deck())
        deck->setText(m_strFullTitle, m_nWndIndex);
}

bool CVideoWidget::UpdateEnable() const
{
    return m_pSubWidget->IsRefreshEnabled();
}

void CVideoWidget::EnableRefresh(bool bEnable)
{
    m_pSubWidget->SetRefreshEnabled(bEnable);
    TellAccessible(this, QAccessible::DescriptionChanged);
}

void CVideoWidget::setMousMsg(bool bMouseMsg)
{
    m_pSubWidget->SetMouseMsg(bMouseMsg);
    if (CPaneDeck* deck = Deck())
        deck->setTitleMousMsg(bMouseMsg, m_nWndIndex);
}

bool CVideoWidget::mousMsg() const
{
    return m_pSubWidget->IsMouseMsg();
}

void CVideoWidget::setText(QString strText)
{
    m_pSubWidget->SetText(strText);
}

WndScase CVideoWidget::getScaseType() const
{
    return m_pSubWidget->GetScale();
}

void CVideoWidget::setScaseType(WndScase eScale)
{
    m_pSubWidget->SetScale(eScale);
}

void CVideoWidget::GetVideoSize(int& width, int& height) const
{
    m_pSubWidget->GetVideoSize(width, height);
}

void CVideoWidget::SetVideoSize(int width, int height)
{
    m_pSubWidget->slot_VideoResize(width, height);
}

void CVideoWidget::SetFrame(const QImage& frame, const QRect& source, const QSize& videoSize)
{
    m_pSubWidget->GetLabel()->SetFrame(frame, source, videoSize);
}

void CVideoWidget::ChangeFreeze(bool bFreeze)
{
    m_pSubWidget->ShowAlarmMark(bFreeze);
    TellAccessible(this, QAccessible::DescriptionChanged);
}

bool CVideoWidget::IsFrozen() const
{
    return m_pSubWidget->IsAlarmMarked();
}

void CVideoWidget::SetTourKind()
{
    m_pSubWidget->SetLabelKindTour();
}

void CVideoWidget::OpenPlayBackSlider()
{
    if (!m_pPlayBack) {
        Q_EMIT sig_setBtnCheck(BTN_INSTANT_PLAYBACK, true);
        m_bInstant = true;
        m_pPlayBack = new CTimePlayBackWidget(this);
        connect(m_pPlayBack, SIGNAL(sig_btnStopClick(bool)), SLOT(slot_btnStopClick(bool)));
        connect(m_pPlayBack, SIGNAL(sig_btnCloseClick()), SLOT(slot_btnCloseClick()));
        connect(m_pPlayBack, SIGNAL(sig_ReplaySeek(int)), SLOT(slot_ReplaySeek(int)));
    }
    m_pLayout->addWidget(m_pPlayBack);
}

void CVideoWidget::ClosePlayBackSlider()
{
    if (!m_pPlayBack)
        return;
    m_pLayout->removeWidget(m_pPlayBack);
    m_bInstant = false;
    Q_EMIT sig_setBtnCheck(BTN_INSTANT_PLAYBACK, false);
    // One of the bar's own signals may have led here, so its widgets must outlive this call.
    m_pPlayBack->hide();
    m_pPlayBack->deleteLater();
    m_pPlayBack = nullptr;
}

void CVideoWidget::SetPlayBackSliderPos(int nPos, long lTime)
{
    if (!m_pPlayBack)
        return;
    Q_EMIT sig_setBtnCheck(BTN_INSTANT_PLAYBACK, true);
    m_pPlayBack->SetSliderPos(nPos, lTime);
}

bool CVideoWidget::WantsTitle() const
{
    return m_bTitle && (!UpdateEnable() || m_eKind == WND_TYPE_ALARM);
}

bool CVideoWidget::IsUnderCursor() const
{
    return geometry().contains(parentWidget()->mapFromGlobal(QCursor::pos()));
}

void CVideoWidget::enterEvent(EnterEvent*)
{
    CPaneDeck* deck = Deck();
    if (deck && deck->m_nTitleWnd != m_nWndIndex && WantsTitle())
        deck->showTitle(m_nWndIndex);
}

void CVideoWidget::leaveEvent(QEvent*)
{
    HideTitleIfOutside();
}

void CVideoWidget::HideTitleIfOutside()
{
    if (!IsUnderCursor())
        Q_EMIT sig_hideTit();
}

void CVideoWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    CPaneDeck* deck = Deck();
    if (deck && IsUnderCursor() && WantsTitle())
        deck->showTitle(m_nWndIndex);
}
