#include "timeline/CLinSliderWidget.h"
#include "timeline/CPlaybackSliderWidget.h"
#include "toolbars/CPictureIcon.h"
#include "toolbars/CPlaybackToolBar.h"
#include "toolbars/CVideoPicButton.h"

#include <QSlider>

CTimerSlider* CPlaybackToolBar::Scale() const
{
    return ui.m_timerTypeWidget->Scale();
}

const ScaleWatch* CPlaybackToolBar::Watch() const
{
    return ui.m_timerTypeWidget->Watch();
}

int CPlaybackToolBar::ProgressValue() const
{
    return ui.m_fileTypeWidget->Value();
}

int CPlaybackToolBar::VoiceValue() const
{
    return ui.m_audioSlider->value();
}

QList<QPair<const QAbstractButton*, Btn_type_EX>> CPlaybackToolBar::Buttons() const
{
    return {
        {ui.m_stopBtn, BTN_STOP},         {ui.m_saveBtn, BTN_RECORD}, {ui.m_screenshotBtn, BTN_SNAPSHOT},
        {ui.m_audioBtn, BTN_AUDIO},       {ui.m_openBtn, BTN_OPEN},   {ui.m_playBtn, BTN_PLAY},
        {ui.m_quickBtn, BTN_QUICK},       {ui.m_slowBtn, BTN_SLOW},   {ui.m_typeBtn, BTN_SWITCH_BAR},
        {ui.m_btn1, BTN_SPLIT_1},         {ui.m_btn4, BTN_SPLIT_4},   {ui.m_btn6, BTN_SPLIT_6},
        {ui.m_btn8, BTN_SPLIT_8},         {ui.m_btn9, BTN_SPLIT_9},   {ui.m_clipBtn, BTN_TIME_CLIP},
        {ui.m_downloadBtn, BTN_DOWNLOAD},
    };
}

std::optional<Btn_type_EX> CPlaybackToolBar::TypeOf(const QObject* pButton) const
{
    for (const auto& [button, type] : Buttons()) {
        if (button == pButton)
            return type;
    }
    return std::nullopt;
}

const QAbstractButton* CPlaybackToolBar::ButtonOf(Btn_type_EX btnType) const
{
    for (const auto& [button, type] : Buttons()) {
        if (type == btnType)
            return button;
    }
    return nullptr;
}
