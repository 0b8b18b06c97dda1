#pragma once

#include "archive/ArchiveIndex.h"

#include <QMetaType>

/// A stretch in which something was seen, as all desks know it.
struct FleetMark
{
    Span span;
    bool isAcknowledged = false;
};

Q_DECLARE_METATYPE(QVector<FleetMark>)
