#pragma once

#include <QFrame>

#include <memory>

class CTimerSlider;
class ScaleWatch;
class QVBoxLayout;

/// The widgets of CPlaybackSliderWidget under the names that style sheets address.
struct Ui_CPlaybackSliderWidget
{
    void setupUi(QFrame* pFrame);

    QVBoxLayout* verticalLayout_2 = nullptr;
    QWidget* m_widget = nullptr;
    QVBoxLayout* verticalLayout = nullptr;
    CTimerSlider* m_dayWidget = nullptr;
};

/// The timer view of the playing position: the scale of a day, its colour table, and the selected time.
class CPlaybackSliderWidget : public QFrame
{
    Q_OBJECT

public:
    /// The entries of a day's table, one for each second.
    static constexpr int DaySeconds = 86400;

    explicit CPlaybackSliderWidget(QWidget* parent);

    /// Copies DaySeconds colours and shows them. Null does nothing.
    void SetTimerPeriod(const unsigned int* pColors);

    /// Shows the grey of an empty table.
    void ClearTimerPeriod();

    /// Selects a time and places the thumb for it. While the thumb is held, or for a time past 24:00:00,
    /// nothing happens. 24:00:00 puts the thumb on the last tick and selects 23:59:59.
    void SetTimerSliderPose(short nHour, short nMinute, short nSecond);

    /// The selected time, and the end of the day, 23:59:59.
    void GetSelectedTime(short& nHour, short& nMinute, short& nSecond, short& nEndHour, short& nEndMinute,
                         short& nEndSecond) const;

    CTimerSlider* Scale() const { return ui.m_dayWidget; }
    const ScaleWatch* Watch() const { return m_pWatch; }

public Q_SLOTS:
    void slot_SliderMoved(int nNum);
    void slot_SliderReleased(int nNum);
    void slot_MouseDbClicked(int nNum);

Q_SIGNALS:
    /// The thumb was released. It doesn't fire during the drag.
    void sig_SliderMoved();

    /// The strip was double-clicked.
    void sig_SliderDbClicked();

private:
    void UpdateTime(CTimerSlider* pSender, int nNum);

    Ui_CPlaybackSliderWidget ui;
    ScaleWatch* m_pWatch = nullptr;
    std::unique_ptr<unsigned int[]> m_pDayColors;
    short m_nHour = 0;
    short m_nMinute = 0;
    short m_nSecond = 0;
};
