#pragma once

#include "archive/ArchivePaths.h"
#include "archive/RecordingReader.h"

#include <chrono>
#include <memory>

/// What an archive holds, whoever records there. Each answer comes within a few milliseconds, or not at all
/// while the index can't be read.
class ArchiveReader : public RecordingReader
{
public:
    explicit ArchiveReader(std::shared_ptr<ArchivePaths> paths) : m_paths(std::move(paths)) {}

    std::optional<QVector<Segment>> segments(const QString& camera, qint64 fromMs, qint64 toMs) override;
    std::optional<QVector<Span>> spans(const QString& camera, qint64 fromMs, qint64 toMs) override;
    std::optional<TrackStretch> stretch(const QString& camera, qint64 fromMs, qint64 toMs) override;
    std::optional<qint64> newestMs(const QString& camera) override;
    std::optional<Span> spanAfter(const QString& camera, qint64 ms) override;
    std::optional<Span> spanBefore(const QString& camera, qint64 ms) override;

private:
    using Clock = std::chrono::steady_clock;

    template <class List>
    std::optional<List> read(List (ArchiveIndex::*list)(const QString&, qint64, qint64) const,
                             const QString& camera, qint64 fromMs, qint64 toMs);
    bool isReady();

    std::shared_ptr<ArchivePaths> m_paths;
    ArchiveIndex m_index;
    Clock::time_point m_restsUntil;
};
