#pragma once

#include "cameras/SourceAddress.h"

#include <QDeadlineTimer>
#include <QHash>

#include <functional>
#include <mutex>

/// For how long one waits for relays. One that keeps silent is taken for away by all for a while, so that of
/// many who want it few wait. Any thread.
class RelayPatience
{
public:
    /// A relay asks at once for the login, before it asks its camera, and has so many milliseconds for it;
    /// one that was silent rests that long.
    explicit RelayPatience(int answerMs = 2500, int restMs = 30'000) : m_answerMs(answerMs), m_restMs(restMs)
    {
    }

    /// True if the relay of that address says something. Waits for it, but not while `isStopped` is true.
    bool answers(const SourceAddress& relay, const std::function<bool()>& isStopped);

private:
    bool rests(const QString& place);

    const int m_answerMs;
    const int m_restMs;
    std::mutex m_mutex;
    QHash<QString, QDeadlineTimer> m_resting; ///< by host and port
};
