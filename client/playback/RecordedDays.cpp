#include "playback/RecordedDays.h"

#include "archive/DayColors.h"
#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"

#include <QCalendarWidget>
#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QTextCharFormat>
#include <QThreadPool>

#include <algorithm>

namespace {

QTextCharFormat recordedFormat()
{
    QTextCharFormat format;
    format.setFontWeight(QFont::Bold);
    format.setForeground(QColor(DayPalette().recording));
    return format;
}

bool isAnyRecorded(RecordingReader& reader, const QStringList& keys, qint64 fromMs, qint64 toMs)
{
    const auto times = reader.times(keys, fromMs, toMs);
    return std::any_of(times.begin(), times.end(),
                       [](const RecordedTimes& one) { return !one.segments.isEmpty(); });
}

/// What is recorded all day is found at its begin, which is read soonest.
bool isRecorded(RecordingReader& reader, const QStringList& keys, const QDate& day)
{
    const qint64 from = dayStart(day);
    const int atOnce = reader.camerasAtOnce();
    for (int first = 0; first < keys.size(); first += atOnce) {
        const QStringList some = keys.mid(first, atOnce);
        if (isAnyRecorded(reader, some, from, from + 1) ||
            isAnyRecorded(reader, some, from, dayStart(day.addDays(1))))
            return true;
    }
    return false;
}

/// Those of a month on which any camera was recorded.
QVector<QDate> recordedDays(RecordingReader& reader, const QStringList& keys, const QDate& month)
{
    QVector<QDate> days;
    for (QDate day = month; day.month() == month.month(); day = day.addDays(1)) {
        if (isRecorded(reader, keys, day))
            days.append(day);
    }
    return days;
}

} // namespace

RecordedDays::RecordedDays(QCalendarWidget* calendar, const ClientArchive* archive)
    : QObject(calendar), m_calendar(calendar), m_archive(archive)
{
    calendar->installEventFilter(this);
    connect(calendar, &QCalendarWidget::currentPageChanged, this, &RecordedDays::look);
}

bool RecordedDays::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show)
        look();
    return QObject::eventFilter(watched, event);
}

void RecordedDays::look()
{
    QStringList keys;
    for (const CameraRecord* camera : m_archive->cameras())
        keys.append(m_archive->keyOf(camera->name));
    const QDate month(m_calendar->yearShown(), m_calendar->monthShown(), 1);
    const QPointer<RecordedDays> alive(this);
    QThreadPool::globalInstance()->start(
        [alive, look = ++m_look, keys, month, make = m_archive->readerMaker()] {
            const QVector<QDate> days = recordedDays(*make(), keys, month);
            QMetaObject::invokeMethod(qApp, [alive, look, days] {
                if (alive && alive->m_look == look)
                    alive->mark(days);
            });
        });
}

void RecordedDays::mark(const QVector<QDate>& days)
{
    m_calendar->setDateTextFormat(QDate(), QTextCharFormat());
    for (const QDate& day : days)
        m_calendar->setDateTextFormat(day, recordedFormat());
}
