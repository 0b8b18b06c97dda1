#include "archive/DayColors.h"

#include <QDateTime>

#include <algorithm>

namespace {

constexpr int SecondsPerDay = 86400;

QDateTime localTime(qint64 ms, const QTimeZone& zone)
{
    return QDateTime::fromMSecsSinceEpoch(ms, zone);
}

/// Colours the seconds from one moment to another, a stretch of even offset from UTC at a time.
class DayPainter
{
public:
    DayPainter(const QDate& day, const QTimeZone& zone, DayTable& table)
        : m_zone(zone), m_table(table), m_startMs(dayStart(day, zone)),
          m_endMs(dayStart(day.addDays(1), zone))
    {
    }

    void paint(qint64 fromMs, qint64 toMs, QRgb color)
    {
        qint64 from = std::max(fromMs, m_startMs);
        const qint64 to = std::min(toMs, m_endMs);
        while (from < to) {
            const qint64 end = std::min(to, nextChange(from));
            paintEven(from, end, color);
            from = end;
        }
    }

private:
    qint64 nextChange(qint64 ms) const
    {
        const auto next = m_zone.nextTransition(localTime(ms, m_zone));
        return next.atUtc.isValid() ? next.atUtc.toMSecsSinceEpoch() : m_endMs;
    }

    void paintEven(qint64 fromMs, qint64 toMs, QRgb color)
    {
        const int first = secondOfDay(fromMs, m_zone);
        const qint64 seconds = (toMs - fromMs + 999) / 1000;
        const int last = int(std::min<qint64>(SecondsPerDay, first + seconds));
        std::fill(m_table.begin() + first, m_table.begin() + last, color);
    }

    const QTimeZone& m_zone;
    DayTable& m_table;
    qint64 m_startMs;
    qint64 m_endMs;
};

} // namespace

DayTable dayColors(const QDate& day, const QTimeZone& zone, const QVector<Segment>& segments,
                   const QVector<Span>& spans, const DayPalette& palette)
{
    DayTable table;
    table.fill(palette.empty);
    DayPainter painter(day, zone, table);
    for (const Segment& segment : segments)
        painter.paint(segment.startMs, segment.endMs, palette.recording);
    for (const Span::Kind kind : {Span::Motion, Span::Alarm}) {
        for (const Span& span : spans) {
            if (span.kind == kind)
                painter.paint(span.startMs, span.endMs, kind == Span::Alarm ? palette.alarm : palette.motion);
        }
    }
    return table;
}

qint64 dayStart(const QDate& day, const QTimeZone& zone)
{
    return day.startOfDay(zone).toMSecsSinceEpoch();
}

qint64 momentOf(const QDate& day, int secondOfDay, const QTimeZone& zone)
{
    const QDateTime time(day, QTime(0, 0).addSecs(std::clamp(secondOfDay, 0, SecondsPerDay - 1)), zone);
    return time.toMSecsSinceEpoch();
}

int secondOfDay(qint64 ms, const QTimeZone& zone)
{
    return QTime(0, 0).secsTo(localTime(ms, zone).time());
}
