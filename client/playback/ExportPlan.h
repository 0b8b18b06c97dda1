#pragma once

#include "archive/RecordingExporter.h"

class ClientArchive;

/// What an export would take, as far as the index tells.
struct ExportPlan
{
    QVector<ExportTask> tasks; ///< of the cameras that have something there
    qint64 bytes = 0;          ///< about so many
    QStringList without;       ///< cameras that have nothing there

    /// Looks up what cameras have from one moment to before another, milliseconds since 1970.
    static ExportPlan of(const ClientArchive& archive, const QStringList& cameras, qint64 fromMs,
                         qint64 toMs);
};
