#pragma once

#include "archive/RecordingReader.h"
#include "cameras/SiteNames.h"

#include <vector>

/// The recordings of several sites as those of one: each question goes to the site that the camera's key
/// tells, and to no other one.
class SiteReader : public RecordingReader
{
public:
    struct Site
    {
        SiteNames names;
        std::shared_ptr<RecordingReader> reader;
    };

    explicit SiteReader(std::vector<Site> sites) : m_sites(std::move(sites)) {}

    std::optional<QVector<Segment>> segments(const QString& camera, qint64 fromMs, qint64 toMs) override;
    std::optional<QVector<Span>> spans(const QString& camera, qint64 fromMs, qint64 toMs) override;
    QHash<QString, RecordedTimes> times(const QStringList& cameras, qint64 fromMs, qint64 toMs) override;
    int camerasAtOnce() const override;
    std::optional<TrackStretch> stretch(const QString& camera, qint64 fromMs, qint64 toMs) override;
    std::optional<qint64> newestMs(const QString& camera) override;
    std::optional<Span> spanAfter(const QString& camera, qint64 ms) override;
    std::optional<Span> spanBefore(const QString& camera, qint64 ms) override;

private:
    template <class Answer, class... Values>
    Answer ask(Answer (RecordingReader::*question)(const QString&, Values...), const QString& camera,
               Values... values);

    std::vector<Site> m_sites;
};
