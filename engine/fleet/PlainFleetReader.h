#pragma once

#include "archive/RecordingReader.h"
#include "fleet/FleetIndex.h"

#include <QDeadlineTimer>

/// The shared index for a thread that may wait for the server. A lost connection is made anew, at most once a
/// second.
class PlainFleetReader : public RecordingReader
{
public:
    explicit PlainFleetReader(const FleetAddress& address) : m_database(address), m_index(m_database) {}

    std::optional<QVector<Segment>> segments(const QString& camera, qint64 fromMs, qint64 toMs) override;
    std::optional<QVector<Span>> spans(const QString& camera, qint64 fromMs, qint64 toMs) override;
    QHash<QString, RecordedTimes> times(const QStringList& cameras, qint64 fromMs, qint64 toMs) override;
    int camerasAtOnce() const override { return FleetIndex::CamerasAtOnce; }
    std::optional<TrackStretch> stretch(const QString& camera, qint64 fromMs, qint64 toMs) override;
    std::optional<qint64> newestMs(const QString& camera) override;
    std::optional<Span> spanAfter(const QString& camera, qint64 ms) override;
    std::optional<Span> spanBefore(const QString& camera, qint64 ms) override;

private:
    template <class Answer> Answer kept(Answer answer);
    bool isReady();

    FleetDatabase m_database;
    FleetIndex m_index;
    QDeadlineTimer m_restsUntil;
};

/// What there is to play, from lists of the shared index; `nextMs` is 0 if nothing comes behind them.
TrackStretch stretchOf(const QVector<Segment>& segments, qint64 nextMs, qint64 fromMs, qint64 toMs);
/// The only one, if there is one.
std::optional<Span> firstOf(const std::optional<QVector<Span>>& spans);
