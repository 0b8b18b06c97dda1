#include "archive/DayColors.h"

#include <QDateTime>

#include <algorithm>

namespace {

constexpr int SecondsPerDay = 86400;

QDateTime LocalTime(qint64 ms, const QTimeZone& zone)
{
    return QDateTime::fromMSecsSinceEpoch(ms, zone);
}

/// Colours the seconds from one moment to another, a stretch of even offset from UTC at a time.
class DayPainter
{
public:
    DayPainter(const QDate& day, const QTimeZone& zone, DayTable& table)
        : m_zone(zone), m_table(table), m_startMs(DayStart(day, zone)),
          m_endMs(DayStart(day.addDays(1), zone))
    {
    }

    void Paint(qint64 fromMs, qint64 toMs, QRgb color)
    {
        qint64 from = std::max(fromMs, m_startMs);
        const qint64 to = std::min(toMs, m_endMs);
        while (from < to) {
            const qint64 end = std::min(to, NextChange(from));
            PaintEven(from, end, color);
            from = end;
        }
    }

private:
    qint64 NextChange(qint64 ms) const
    {
        const auto next = m_zone.nextTransition(LocalTime(ms, m_zone));
        return next.atUtc.isValid() ? next.atUtc.toMSecsSinceEpoch() : m_endMs;
    }

    void PaintEven(qint64 fromMs, qint64 toMs, QRgb color)
    {
        const int first = SecondOfDay(fromMs, m_zone);
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

DayTable DayColors(const QDate& day, const QTimeZone& zone, const QVector<Segment>& segments,
                   const QVector<Span>& spans, const DayPalette& palette)
{
    DayTable table;
    table.fill(palette.empty);
    DayPainter painter(day, zone, table);
    for (const Segment& segment : segments)
        painter.Paint(segment.startMs, segment.endMs, palette.recording);
    for (const Span::Kind kind : {Span::Motion, Span::Alarm}) {
        for (const Span& span : spans) {
            if (span.kind == kind)
                painter.Paint(span.startMs, span.endMs, kind == Span::Alarm ? palette.alarm : palette.motion);
        }
    }
    return table;
}

qint64 DayStart(const QDate& day, const QTimeZone& zone)
{
    return day.startOfDay(zone).toMSecsSinceEpoch();
}

qint64 MomentOf(const QDate& day, int secondOfDay, const QTimeZone& zone)
{
    const QDateTime time(day, QTime(0, 0).addSecs(std::clamp(secondOfDay, 0, SecondsPerDay - 1)), zone);
    return time.toMSecsSinceEpoch();
}

int SecondOfDay(qint64 ms, const QTimeZone& zone)
{
    return QTime(0, 0).secsTo(LocalTime(ms, zone).time());
}
