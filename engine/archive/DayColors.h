#pragma once

#include "archive/ArchiveIndex.h"

#include <QDate>
#include <QRgb>
#include <QTimeZone>

#include <array>

/// The colours of the day's scale.
struct DayPalette
{
    QRgb empty = qRgb(128, 128, 128);
    QRgb recording = qRgb(58, 134, 196);
    QRgb motion = qRgb(222, 164, 44);
    QRgb alarm = qRgb(214, 62, 58);
};

/// One colour for each second of the clock from 0:00:00 to 23:59:59.
using DayTable = std::array<unsigned int, 86400>;

/// The table of a day in a time zone. The scale is the clock on the wall: on a day of 25 hours both passes of
/// the hour that comes twice lie over each other, and on a day of 23 the hour that does not exist is empty.
/// Alarm goes over motion, motion over recording.
DayTable dayColors(const QDate& day, const QTimeZone& zone, const QVector<Segment>& segments,
                   const QVector<Span>& spans, const DayPalette& palette = {});

/// The first moment of a day, and the first one after it, milliseconds since 1970.
qint64 dayStart(const QDate& day, const QTimeZone& zone = QTimeZone::systemTimeZone());

/// The moment at which the clock shows a second of the day; of an hour that comes twice the first pass, of
/// one that does not exist the moment the clock goes on.
qint64 momentOf(const QDate& day, int secondOfDay, const QTimeZone& zone);

/// What the clock shows at a moment, as a second of its day, 0 to 86399.
int secondOfDay(qint64 ms, const QTimeZone& zone);
