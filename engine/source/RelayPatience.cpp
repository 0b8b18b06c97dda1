#include "source/RelayPatience.h"

#include "packets/FFmpeg.h"
#include "source/LoginQuestion.h"

#include <QUrl>

namespace {

struct Wait
{
    const std::function<bool()>& isStopped;
    QDeadlineTimer deadline;
};

int isOver(void* wait)
{
    const auto* self = static_cast<Wait*>(wait);
    return self->deadline.hasExpired() || self->isStopped();
}

} // namespace

bool RelayPatience::answers(const SourceAddress& relay, const std::function<bool()>& isStopped)
{
    prepareFFmpeg();
    const QUrl url(relay.location());
    const QString place = url.authority(QUrl::FullyEncoded).section('@', -1);
    if (rests(place))
        return false;
    Wait wait{isStopped, QDeadlineTimer(m_answerMs)};
    const LoginQuestion asked = LoginQuestion::ask(url, {isOver, &wait});
    // Who refuses does so at once, and may be back as soon.
    if (!asked.isAnswered && wait.deadline.hasExpired()) {
        const std::lock_guard lock(m_mutex);
        m_resting.insert(place, QDeadlineTimer(m_restMs));
    }
    return asked.isAnswered;
}

bool RelayPatience::rests(const QString& place)
{
    const std::lock_guard lock(m_mutex);
    return !m_resting.value(place, QDeadlineTimer(0)).hasExpired();
}
