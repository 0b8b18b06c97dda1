#pragma once

#include "deck/PaneDeckTypes.h"
#include "toolbars/Ui_CPlaybackToolBar.h"

#include <QFrame>
#include <QList>
#include <QPair>

#include <optional>

class CTimerSlider;
class QAbstractButton;
class ScaleWatch;

/// The strip below the panes of a playback deck: the playing position in one of two views, and the buttons.
/// It decides nothing about playback, only reports what the user does and shows what the deck tells it. Its
/// parent is the deck, whose active pane's speed stands in the tool tips.
class CPlaybackToolBar : public QFrame
{
    Q_OBJECT

public:
    explicit CPlaybackToolBar(QWidget* parent);

    /// Shows the timer view for PLAYBACK_VIEW_TIMER, the file view for any other value.
    void ChangePlaybackViewType(PlaybackViewType type);

    /// Moves the file view's slider, 0 to 1000. Dropped while the user holds it.
    void SetProgressValue(int nValue);

    /// Moves the audio slider, 1 to 10; a new value is reported as voiceChanged as well.
    void SetVoiceValue(int nValue);

    /// BTN_RECORD: -1 disables the button, 0 unchecks it, anything else checks it. BTN_AUDIO and BTN_PLAY: 0
    /// unchecks, 1 checks. Everything else does nothing.
    void SetWndBtnState(Btn_type_EX btnType, int nState);

    /// Enables what needs a playing pane and what needs its sound. Without a playing pane the position goes
    /// back to the start and the strip becomes grey.
    void SetToolBtnEnable(bool bEnable, bool bAudio);

    void GetSelectedTime(short& nHour, short& nMinute, short& nSecond, short& nEndHour, short& nEndMinute,
                         short& nEndSecond) const;
    void SetTimerSliderPose(short& nHour, short& nMinute, short& nSecond);

    /// Takes the colours of 86400 seconds; they are copied.
    void SetTimerPeriod(const unsigned int* pColors);

    CTimerSlider* Scale() const;
    const ScaleWatch* Watch() const;
    PlaybackViewType ViewType() const { return m_nViewType; }
    int ProgressValue() const;
    int VoiceValue() const;

    /// The button that a click tells by this type, null if there is none.
    const QAbstractButton* ButtonOf(Btn_type_EX btnType) const;

Q_SIGNALS:
    /// The file view's slider was released at this value, 0 to 1000.
    void playposeChanged(int nValue);
    void voiceChanged(int nValue);
    void wndBtnClicked(Btn_type_EX btnType);
    void sig_TimerSliderMoved();
    void sig_TimerSliderDbClicked();
    void wndfullScreen();

public Q_SLOTS:
    void OnWndBtnClicked();
    void StepValueChanged(int nValue);
    void slot_onBtnRelease();
    void slot_sliderPresed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SetUp();
    void NameControls();
    void Connect();
    QList<QPair<const QAbstractButton*, Btn_type_EX>> Buttons() const;
    std::optional<Btn_type_EX> TypeOf(const QObject* pButton) const;
    Btn_type_EX ToggleFreeze();
    QString ToolTipOf(const QObject* pButton) const;
    QString SpeedInfo() const;

    Ui_CPlaybackToolBar ui;
    bool m_bSliderPressed = false;
    bool m_bFreeze = false;
    PlaybackViewType m_nViewType = PLAYBACK_VIEW_TIMER;
};
