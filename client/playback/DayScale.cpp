#include "playback/DayScale.h"

#include "archive/DayColors.h"
#include "archive/SegmentTrack.h"
#include "cameras/ClientArchive.h"
#include "playback/DayField.h"

#include <CPaneDeck.h>

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
    m_deck->SetSelectedTime(moment.time());
}

qint64 DayScale::dayBegin() const
{
    return dayStart(m_field->date());
}

qint64 DayScale::dayEnd() const
{
    return dayStart(m_field->date().addDays(1));
}

qint64 DayScale::firstMoment(const SegmentTrack* track) const
{
    const qint64 start = dayBegin();
    if (!track || track->at(start))
        return start;
    const qint64 first = track->nextStart(start).value_or(start);
    return first < dayEnd() ? first : start;
}

qint64 DayScale::momentAt(int second) const
{
    return momentOf(m_field->date(), second, QTimeZone::systemTimeZone());
}

qint64 DayScale::chosenMoment() const
{
    return momentAt(m_deck->SelectedTime().msecsSinceStartOfDay() / 1000);
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
    const auto times = m_archive->times({m_camera}, dayBegin(), dayEnd());
    if (times.isEmpty())
        return;
    const RecordedTimes& own = *times.begin();
    DayTable table = dayColors(m_field->date(), QTimeZone::systemTimeZone(), own.segments, own.spans);
    m_deck->SetTimerPeriod(table.data());
}
