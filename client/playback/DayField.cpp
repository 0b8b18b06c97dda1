#include "playback/DayField.h"

#include "common/Languages.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QTextCharFormat>

DayField::DayField(QWidget* parent) : QDateEdit(QDate::currentDate(), parent)
{
    setObjectName("PlaybackDay");
    setCalendarPopup(true);
    setLayoutDirection(Qt::LeftToRight); // else the format below turns round
    setDisplayFormat("yyyy-MM-dd");
    calendarWidget()->setObjectName("PlaybackCalendar");
    calendarWidget()->setLayoutDirection(QApplication::layoutDirection());
    calendarWidget()->setLocale(QLocale(startLanguage()));
    calendarWidget()->setFirstDayOfWeek(Qt::Monday);
    calendarWidget()->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    // Red is for alarms.
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        calendarWidget()->setWeekdayTextFormat(day, QTextCharFormat());
}
