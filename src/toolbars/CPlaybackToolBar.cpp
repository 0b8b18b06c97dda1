#include "toolbars/CPlaybackToolBar.h"

#include "deck/CPaneDeck.h"
#include "layouts/CSplitCatalog.h"
#include "text/LangText.h"
#include "timeline/CLinSliderWidget.h"
#include "timeline/CPlaybackSliderWidget.h"
#include "toolbars/CPictureIcon.h"
#include "toolbars/CVideoPicButton.h"

#include <QCursor>
#include <QEvent>
#include <QPointer>
#include <QPushButton>
#include <QSlider>
#include <QToolTip>

#include <utility>

namespace {

// What SetWndBtnState makes of the audio and the play button.
void SetCheckedByState(QAbstractButton* pButton, int nState)
{
    if (nState == 0 || nState == 1)
        pButton->setChecked(nState == 1);
}

} // namespace

CPlaybackToolBar::CPlaybackToolBar(QWidget* parent) : QFrame(parent)
{
    ui.setupUi(this);
    SetUp();
    Connect();
    ChangePlaybackViewType(PLAYBACK_VIEW_TIMER);
}

void CPlaybackToolBar::SetUp()
{
    setStyleSheet(CSplitCatalog::Instance()->StyleSheet("/playbacksheet.qss"));
    for (QWidget* control :
         QList<QWidget*>{ui.m_downloadBtn, ui.m_playBtn, ui.m_stopBtn, ui.m_quickBtn, ui.m_slowBtn,
                         ui.m_openBtn, ui.m_saveBtn, ui.m_clipBtn, ui.m_audioSlider, ui.m_audioBtn,
                         ui.m_screenshotBtn, ui.m_typeBtn, ui.m_btn4, ui.m_btn8})
        control->setFocusPolicy(Qt::NoFocus);
    ui.m_downloadBtn->setToolTip(LangText("PaneDeck.download"));
    ui.m_playBtn->setCheckable(true);
    ui.m_saveBtn->setCheckable(true);
    ui.m_typeBtn->LoadPictures("PaneDeck_Switch_bar", true, "PicSetting.Conf");
    ui.m_typeBtn->hide();
    ui.m_btnFreezePlay->hide();
    ui.m_audioBtn->setCheckable(true);
    ui.m_audioSlider->setSingleStep(1);
    ui.m_audioSlider->setRange(1, 10);
    ui.m_audioSlider->setTracking(false);
    ui.m_fileTypeWidget->SetRange(0, 1000);
    for (QWidget* button :
         QList<QWidget*>{ui.m_quickBtn, ui.m_slowBtn, ui.m_playBtn, ui.m_stopBtn, ui.m_openBtn,
                         ui.m_screenshotBtn, ui.m_saveBtn, ui.m_clipBtn, ui.m_typeBtn})
        button->installEventFilter(this);
    ui.btnPVplayer->setToolTip(LangText("PaneDeck.full Screen"));
    NameControls();
}

/// What tips say only while the mouse is there, and pictures to nobody who can't see them.
void CPlaybackToolBar::NameControls()
{
    const std::pair<QWidget*, const char*> keys[] = {
        {ui.m_downloadBtn, "PaneDeck.download"},
        {ui.m_openBtn, "PaneDeck.Open"},
        {ui.m_screenshotBtn, "PaneDeck.Snap"},
        {ui.m_saveBtn, "PaneDeck.Record"},
        {ui.m_clipBtn, "PaneDeck.Time Clip"},
        {ui.m_slowBtn, "PaneDeck.Slow"},
        {ui.m_playBtn, "PaneDeck.Play"},
        {ui.m_stopBtn, "PaneDeck.Stop"},
        {ui.m_quickBtn, "PaneDeck.Quick"},
        {ui.m_audioBtn, "PaneDeck.Audio"},
        {ui.m_audioSlider, "Volume"},
        {ui.m_typeBtn, "PaneDeck.Switch Bar"},
        {ui.btnPVplayer, "PaneDeck.full Screen"},
    };
    for (const auto& [control, key] : keys)
        control->setAccessibleName(LangText(key).trimmed());
    const std::pair<QWidget*, int> counts[] = {
        {ui.m_btn1, 1}, {ui.m_btn4, 4}, {ui.m_btn6, 6}, {ui.m_btn8, 8}, {ui.m_btn9, 9}};
    for (const auto& [button, count] : counts)
        button->setAccessibleName(LangText("%1 panes").arg(count));
}

void CPlaybackToolBar::Connect()
{
    for (QAbstractButton* button : findChildren<QAbstractButton*>())
        connect(button, SIGNAL(clicked()), this, SLOT(OnWndBtnClicked()));
    connect(ui.m_audioSlider, SIGNAL(valueChanged(int)), this, SIGNAL(voiceChanged(int)));
    connect(ui.m_audioSlider, SIGNAL(valueChanged(int)), this, SLOT(StepValueChanged(int)));
    connect(ui.m_fileTypeWidget, SIGNAL(sliderReleased()), this, SLOT(slot_onBtnRelease()));
    connect(ui.m_fileTypeWidget, SIGNAL(sliderPressed()), this, SLOT(slot_sliderPresed()));
    connect(ui.m_timerTypeWidget, SIGNAL(sig_SliderMoved()), this, SIGNAL(sig_TimerSliderMoved()));
    connect(ui.m_timerTypeWidget, SIGNAL(sig_SliderDbClicked()), this, SIGNAL(sig_TimerSliderDbClicked()));
}

void CPlaybackToolBar::ChangePlaybackViewType(PlaybackViewType type)
{
    m_nViewType = type;
    ui.m_timerTypeWidget->setVisible(type == PLAYBACK_VIEW_TIMER);
    ui.m_fileTypeWidget->setVisible(type != PLAYBACK_VIEW_TIMER);
}

void CPlaybackToolBar::SetProgressValue(int nValue)
{
    if (!m_bSliderPressed)
        ui.m_fileTypeWidget->SetValue(nValue);
}

void CPlaybackToolBar::SetVoiceValue(int nValue)
{
    ui.m_audioSlider->setValue(nValue);
}

void CPlaybackToolBar::SetWndBtnState(Btn_type_EX btnType, int nState)
{
    if (btnType == BTN_AUDIO)
        SetCheckedByState(ui.m_audioBtn, nState);
    else if (btnType == BTN_PLAY)
        SetCheckedByState(ui.m_playBtn, nState);
    else if (btnType == BTN_RECORD && nState == -1)
        ui.m_saveBtn->SetBtnEnabled(false);
    else if (btnType == BTN_RECORD)
        ui.m_saveBtn->setChecked(nState != 0);
}

void CPlaybackToolBar::SetToolBtnEnable(bool bEnable, bool bAudio)
{
    if (!bEnable) {
        ui.m_saveBtn->setChecked(false);
        ui.m_playBtn->setChecked(false);
        ui.m_fileTypeWidget->SetValue(0);
        ui.m_timerTypeWidget->SetTimerSliderPose(0, 0, 0);
        ui.m_timerTypeWidget->ClearTimerPeriod();
    }
    if (!bAudio)
        SetWndBtnState(BTN_AUDIO, 0);
    for (CVideoPicButton* button :
         {ui.m_playBtn, ui.m_stopBtn, ui.m_quickBtn, ui.m_slowBtn, ui.m_saveBtn, ui.m_clipBtn})
        button->SetBtnEnabled(bEnable);
    ui.m_audioBtn->setEnabled(bAudio);
    // A slider that is held reports its value when it is disabled, and a receiver may delete the deck.
    const QPointer<CPlaybackToolBar> alive(this);
    ui.m_audioSlider->setEnabled(bAudio);
    if (alive)
        ui.m_fileTypeWidget->SetSliderEnabled(bEnable);
    if (alive)
        ui.m_screenshotBtn->SetBtnEnabled(bEnable);
}

void CPlaybackToolBar::GetSelectedTime(short& nHour, short& nMinute, short& nSecond, short& nEndHour,
                                       short& nEndMinute, short& nEndSecond) const
{
    ui.m_timerTypeWidget->GetSelectedTime(nHour, nMinute, nSecond, nEndHour, nEndMinute, nEndSecond);
}

void CPlaybackToolBar::SetTimerSliderPose(short& nHour, short& nMinute, short& nSecond)
{
    ui.m_timerTypeWidget->SetTimerSliderPose(nHour, nMinute, nSecond);
}

void CPlaybackToolBar::SetTimerPeriod(const unsigned int* pColors)
{
    ui.m_timerTypeWidget->SetTimerPeriod(pColors);
}

void CPlaybackToolBar::OnWndBtnClicked()
{
    const QObject* button = sender();
    if (!button)
        return;
    if (button == ui.btnPVplayer) {
        Q_EMIT wndfullScreen();
        return;
    }
    if (button == ui.m_btnFreezePlay) {
        Q_EMIT wndBtnClicked(ToggleFreeze());
        return;
    }
    if (button == ui.m_stopBtn)
        ui.m_stopBtn->setChecked(false);
    else if (button == ui.m_audioBtn)
        SetWndBtnState(BTN_AUDIO, ui.m_audioBtn->isChecked() ? 1 : 0);
    else if (button == ui.m_typeBtn)
        ChangePlaybackViewType(m_nViewType == PLAYBACK_VIEW_FILE ? PLAYBACK_VIEW_TIMER : PLAYBACK_VIEW_FILE);
    if (const auto type = TypeOf(button))
        Q_EMIT wndBtnClicked(*type);
}

// The button's new text and what the click means.
Btn_type_EX CPlaybackToolBar::ToggleFreeze()
{
    const bool stop = !m_bFreeze;
    ui.m_btnFreezePlay->setText(LangText(stop ? "PlayBack.FreezeStop" : "PlayBack.FreezePlay"));
    m_bFreeze = stop;
    return stop ? BTN_FREEZE_STOP : BTN_FREEZE_PLAY;
}

void CPlaybackToolBar::StepValueChanged(int)
{
    // A receiver of voiceChanged may have set another value by now.
    ui.m_audioSlider->setToolTip(QString::number(ui.m_audioSlider->value()));
}

void CPlaybackToolBar::slot_sliderPresed()
{
    m_bSliderPressed = true;
}

void CPlaybackToolBar::slot_onBtnRelease()
{
    const int value = ui.m_fileTypeWidget->Value();
    m_bSliderPressed = false;
    Q_EMIT playposeChanged(value);
}

bool CPlaybackToolBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Leave)
        QToolTip::hideText();
    else if (event->type() == QEvent::Enter)
        QToolTip::showText(QCursor::pos(), ToolTipOf(watched));
    return QFrame::eventFilter(watched, event);
}

QString CPlaybackToolBar::ToolTipOf(const QObject* pButton) const
{
    const std::pair<const QObject*, const char*> keys[] = {
        {ui.m_quickBtn, "PaneDeck.Quick"},
        {ui.m_slowBtn, "PaneDeck.Slow"},
        {ui.m_stopBtn, "PaneDeck.Stop"},
        {ui.m_screenshotBtn, "PaneDeck.Snap"},
        {ui.m_saveBtn, "PaneDeck.Record"},
        {ui.m_clipBtn, "PaneDeck.Time Clip"},
        {ui.m_openBtn, "PaneDeck.Open"},
        {ui.m_typeBtn, "PaneDeck.Switch Bar"},
        {ui.m_playBtn, ui.m_playBtn->isChecked() ? "PaneDeck.Pause" : "PaneDeck.Play"},
    };
    for (const auto& [button, key] : keys) {
        if (button == pButton)
            return LangText(key) +
                   (button == ui.m_quickBtn || button == ui.m_slowBtn ? SpeedInfo() : QString());
    }
    return QString();
}

// The speed of the deck's active pane as it is now.
QString CPlaybackToolBar::SpeedInfo() const
{
    auto* deck = qobject_cast<CPaneDeck*>(parent());
    return deck ? deck->GetSpeedInfo() : QString();
}
