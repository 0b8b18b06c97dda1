#pragma once

#include "archive/ArchiveIndex.h"
#include "fleet/SpoolReader.h"
#include "fleet/SpoolSender.h"

#include <QTemporaryDir>

/// A recorder's index, and what sends it on once that is started.
struct Told
{
    explicit Told(const FleetAddress& address, const FleetRecorder& recorder)
        : sender(address, recorder, directory.path() + "/index.sqlite")
    {
        index.setSpooled(true);
        QString error;
        index.open(directory.path(), &error);
    }

    bool isEmpty() const
    {
        const auto batch = SpoolReader(directory.path() + "/index.sqlite").next(1);
        return batch && batch->last == 0;
    }

    QTemporaryDir directory;
    ArchiveIndex index;
    SpoolSender sender;
};
