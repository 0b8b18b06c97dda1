#include "playback/DayScale.h"

#include "archive/DayColors.h"
#include "archive/SegmentTrack.h"
#include "cameras/ClientArchive.h"
#include "playback/DayField.h"

#include <CPaneDeck.h>

namespace {

QTime selectedTime(CPaneDeck* deck)
{
    short hour = 0, minute = 0, second = 0, endHour = 0, endMinute = 0, endSecond = 0;
    deck->GetSelectedTime(hour, minute, second, endHour, endMinute, endSecond);
    return QTime(hour, minute, second);
}

void selectTime(CPaneDeck* deck, const QTime& time)
{
    short hour = short(time.hour()), minute = short(time.minute()), second = short(time.second());
    deck->SetTimerSliderPose(hour, minute, second);
}

qint64 startOf(const QDate& day)
{
    return dayStart(day, QTimeZone::systemTimeZone());
}

} // namespace

DayScale::DayScale(CPaneDeck* deck, const ClientArchive* archive, QObject* parent)
    : QObject(parent), m_deck(deck), m_archive(archive), m_field(new DayField)
{
    connect(m_field, &DayField::dateChanged, this, &DayScale::takeDay);
}

void DayScale::setDay(const QDate& day)
{
    m_field->setDate(day);
}

void DayScale::showCamera(const QString& name)
{
    m_camera = name;
    showColors();
}

void DayScale::showMoment(qint64 ms)
{
    const QDateTime moment = QDateTime::fromMSecsSinceEpoch(ms);
    if (moment.date() != m_field->date()) {
        const QSignalBlocker blocker(m_field);
        m_field->setDate(moment.date());
        showColors();
    }
    selectTime(m_deck, moment.time());
}

qint64 DayScale::dayBegin() const
{
    return startOf(m_field->date());
}

qint64 DayScale::dayEnd() const
{
    return startOf(m_field->date().addDays(1));
}

qint64 DayScale::firstMoment(const SegmentTrack* track) const
{
    const qint64 start = startOf(m_field->date());
    if (!track || track->at(start))
        return start;
    const qint64 first = track->nextStart(start).value_or(start);
    return first < startOf(m_field->date().addDays(1)) ? first : start;
}

qint64 DayScale::momentAt(int second) const
{
    return momentOf(m_field->date(), second, QTimeZone::systemTimeZone());
}

qint64 DayScale::chosenMoment() const
{
    return momentAt(selectedTime(m_deck).msecsSinceStartOfDay() / 1000);
}

void DayScale::takeDay(const QDate& day)
{
    showColors();
    Q_EMIT dayChanged(day);
}

void DayScale::showColors()
{
    if (m_camera.isEmpty())
        return;
    const QDate day = m_field->date();
    const qint64 from = startOf(day);
    const qint64 to = startOf(day.addDays(1));
    const auto segments = m_archive->segments(m_camera, from, to);
    const auto spans = m_archive->spans(m_camera, from, to);
    if (!segments || !spans)
        return;
    DayTable table = dayColors(day, QTimeZone::systemTimeZone(), *segments, *spans);
    m_deck->SetTimerPeriod(table.data());
}
