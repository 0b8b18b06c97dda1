#include "panes/CVideoTitleWidget.h"

#include "common/FormParts.h"
#include "deck/CPaneDeck.h"
#include "text/LangText.h"

#include <QLabel>
#include <QPushButton>

namespace {

constexpr int BarHeight = 20;
constexpr int ButtonWidth = 16;

} // namespace

const CVideoTitleWidget::TitleButton CVideoTitleWidget::Buttons[7] = {
    {&CVideoTitleWidget::m_pBtnRemoteControl, "btnRemoteControl", "PaneDeck.Close btnRemote Control", false,
     BTN_REMOTE_CONTROL},
    {&CVideoTitleWidget::m_pBtnLocalRecord, "btnLocalRecord", "PaneDeck.Local Record", true, BTN_RECORD},
    {&CVideoTitleWidget::m_pBtnSnapshot, "btnsnapshot", "PaneDeck.Snapshot", false, BTN_SNAPSHOT},
    {&CVideoTitleWidget::m_pBtnAudio, "btnAudio", "PaneDeck.Audio", true, BTN_AUDIO},
    {&CVideoTitleWidget::m_pBtnInstant, "btninstant", "LiveView.Instant playback", true,
     BTN_INSTANT_PLAYBACK},
    {&CVideoTitleWidget::m_pBtnZoomIn, "btnZoomIn", "PaneDeck.Zoom", true, BTN_ZOOM},
    {&CVideoTitleWidget::m_pBtnClose, "btnclose", "PaneDeck.Close Video", false, BTN_CLOSE_VIDEO},
};

CVideoTitleWidget::CVideoTitleWidget(QWidget* parent) : QWidget(parent)
{
    setWindowFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setFixedHeight(BarHeight);
    auto* outer = new QHBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* inner = FormParts::AddWidget<QWidget>(outer, this, "TitleWidget");
    m_pLayout = FormParts::NewLayout<QHBoxLayout>(inner, QString(), 5);
    m_pTitleLabel = new QLabel(inner);
    m_pTitleLabel->setStyleSheet("QLabel{color:#eeeeee;border:none;background:transparent;}");
    m_pLayout->addWidget(m_pTitleLabel);
    m_pLayout->addStretch(1);
    m_pLayout->addItem(new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Expanding));
    for (const TitleButton& entry : Buttons) {
        auto* button = FormParts::AddWidget<QPushButton>(m_pLayout, inner, entry.objectName);
        button->setFixedWidth(ButtonWidth);
        button->setToolTip(LangText(entry.toolTipKey));
        button->setAccessibleName(LangText(entry.toolTipKey));
        button->setCheckable(entry.checkable);
        connect(button, SIGNAL(clicked()), SLOT(slot_wndBtnClick()));
        this->*entry.field = button;
    }
    m_pBtnRemoteControl->hide();
}

void CVideoTitleWidget::SetText(QString strText)
{
    m_pTitleLabel->setText(strText);
}

void CVideoTitleWidget::SetBtnChecked(Btn_type_EX btnType, bool bCheck)
{
    for (const TitleButton& entry : Buttons) {
        if (entry.type == btnType && entry.checkable)
            (this->*entry.field)->setChecked(bCheck);
    }
}

void CVideoTitleWidget::ShowRemoteControl(bool bShow)
{
    m_pBtnRemoteControl->setVisible(bShow);
}

void CVideoTitleWidget::SetStopOnly()
{
    for (const TitleButton& entry : Buttons) {
        if (entry.field != &CVideoTitleWidget::m_pBtnClose)
            (this->*entry.field)->hide();
    }
    connect(m_pBtnClose, SIGNAL(clicked()), SLOT(slot_onStopClick()));
}

void CVideoTitleWidget::HideLiveButtons()
{
    m_pBtnLocalRecord->hide();
    m_pBtnAudio->hide();
    m_pBtnInstant->hide();
}

void CVideoTitleWidget::slot_wndBtnClick()
{
    for (const TitleButton& entry : Buttons) {
        if (this->*entry.field != sender())
            continue;
        static_cast<CPaneDeck*>(parent())->slot_wndBtnClick(entry.type);
        return;
    }
}

void CVideoTitleWidget::slot_onStopClick()
{
    static_cast<CPaneDeck*>(parent())->slot_wndBtnClick(BTN_TITLE_STOP);
}

void CVideoTitleWidget::leaveEvent(QEvent*)
{
    // Null while the deck's destructor takes its children down.
    if (auto* deck = qobject_cast<CPaneDeck*>(parent()))
        deck->hideTit();
}
