#pragma once

#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/SignalLog.h"
#include "timeline/CPlaybackSliderWidget.h"
#include "timeline/CShapeWidget.h"
#include "timeline/CTimerLine.h"
#include "timeline/CTimerSlider.h"
#include "timeline/ThumbPicture.h"

/// A day slider with its first paint done. A thumb width of 0 stands for no picture.
struct DaySliderScene
{
    explicit DaySliderScene(int width = 800, int thumbWidth = 20)
    {
        if (thumbWidth > 0)
            WriteThumb(installation, thumbWidth);
        day.reset(new CPlaybackSliderWidget(nullptr));
        slider = day->findChild<CTimerSlider*>("m_dayWidget");
        thumb = day->findChild<CShapeWidget*>();
        line = day->findChild<CTimerLine*>();
        // A value that comes before the first paint doesn't place the thumb.
        slider->slot_SetCurNum(43200);
        day->resize(width, 50);
        day->show();
        day->grab();
        log.WatchAll(slider, "scale ");
        log.WatchAll(day.data());
    }

    /// Turns the wheel notch by notch over a point of the viewport.
    void Wheel(int notches, int at = 400)
    {
        for (int i = 0; i < qAbs(notches); ++i)
            Mouse::Wheel(slider, QPoint(at - slider->x(), 5), notches > 0 ? 120 : -120);
        day->grab();
    }

    void DragThumb(int by)
    {
        const QPoint grip(thumb->width() / 2, 7);
        Mouse::Drag(thumb, grip, {grip + QPoint(by, 0)});
    }

    QString Time() const
    {
        short part[6];
        day->GetSelectedTime(part[0], part[1], part[2], part[3], part[4], part[5]);
        QStringList texts;
        for (short value : part)
            texts.append(QString::number(value));
        return texts.join(' ');
    }

    Installation installation;
    ExpectedWarning warning{"Specified color without alpha value but alpha given"};
    QScopedPointer<CPlaybackSliderWidget> day;
    CTimerSlider* slider;
    CShapeWidget* thumb;
    CTimerLine* line;
    SignalLog log;
};
