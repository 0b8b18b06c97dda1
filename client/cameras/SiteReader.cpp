#include "cameras/SiteReader.h"

template <class Answer, class... Values>
Answer SiteReader::ask(Answer (RecordingReader::*question)(const QString&, Values...), const QString& camera,
                       Values... values)
{
    for (const Site& site : m_sites) {
        const QString own = site.names.archiveNameOf(camera);
        if (!own.isEmpty())
            return ((*site.reader).*question)(own, values...);
    }
    return Answer();
}

std::optional<QVector<Segment>> SiteReader::segments(const QString& camera, qint64 fromMs, qint64 toMs)
{
    return ask(&RecordingReader::segments, camera, fromMs, toMs);
}

std::optional<QVector<Span>> SiteReader::spans(const QString& camera, qint64 fromMs, qint64 toMs)
{
    return ask(&RecordingReader::spans, camera, fromMs, toMs);
}

QHash<QString, RecordedTimes> SiteReader::times(const QStringList& cameras, qint64 fromMs, qint64 toMs)
{
    QHash<QString, RecordedTimes> all;
    for (const Site& site : m_sites) {
        QHash<QString, QString> keys; ///< by the name that the site has for it
        for (const QString& camera : cameras) {
            if (const QString own = site.names.archiveNameOf(camera); !own.isEmpty())
                keys.insert(own, camera);
        }
        const auto found = keys.isEmpty() ? decltype(all)() : site.reader->times(keys.keys(), fromMs, toMs);
        for (auto it = found.begin(); it != found.end(); ++it)
            all.insert(keys.value(it.key()), it.value());
    }
    return all;
}

int SiteReader::camerasAtOnce() const
{
    return m_sites.empty() ? 1 : m_sites.front().reader->camerasAtOnce();
}

std::optional<TrackStretch> SiteReader::stretch(const QString& camera, qint64 fromMs, qint64 toMs)
{
    return ask(&RecordingReader::stretch, camera, fromMs, toMs);
}

std::optional<qint64> SiteReader::newestMs(const QString& camera)
{
    return ask(&RecordingReader::newestMs, camera);
}

std::optional<Span> SiteReader::spanAfter(const QString& camera, qint64 ms)
{
    return ask(&RecordingReader::spanAfter, camera, ms);
}

std::optional<Span> SiteReader::spanBefore(const QString& camera, qint64 ms)
{
    return ask(&RecordingReader::spanBefore, camera, ms);
}
