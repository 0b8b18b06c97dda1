#include "fleet/RecorderHealth.h"

#include "archive/DiskRoom.h"

#include <QFile>

#include <algorithm>

#include <unistd.h>

namespace {

constexpr int FirstRestMs = 30'000;
constexpr int LongestRestMs = 16 * 60'000;
constexpr int TrialMs = 10 * 60'000;
constexpr int ProbeMs = 5000;
constexpr int MostFullSteps = 4;
constexpr int ProbeBytes = 1 << 20;

} // namespace

void RecorderHealth::setStalled(const QStringList& cameras, bool isDiskInDoubt)
{
    m_stalled = cameras;
    m_isDiskInDoubt = isDiskInDoubt;
}

bool RecorderHealth::look(const QStringList& held)
{
    const QString before = m_reason;
    m_fullSteps = DiskRoom::of(m_directory).isAllButFull() ? m_fullSteps + 1 : 0;
    if (!isWell() && m_rest.hasExpired() && isDiskFine())
        m_reason.clear();
    const QString trouble = isWell() ? this->trouble(held) : QString();
    if (!trouble.isEmpty())
        rest(trouble);
    return before != m_reason;
}

QString RecorderHealth::trouble(const QStringList& held)
{
    if (m_isDiskInDoubt && m_nextProbe.hasExpired() && !isDiskFine())
        return "the archive's disk can't be written";
    // The oldest recordings go first; where that does not help for long, what is recorded does not stay.
    if (m_fullSteps >= MostFullSteps)
        return "the archive's disk is full";
    return isAlone(held) && !m_isDiskInDoubt ? "none of its cameras can be reached" : "";
}

/// What was given back is told as stalled for a moment longer: how many there are tells nothing.
bool RecorderHealth::isAlone(const QStringList& held) const
{
    return held.size() > 1 && std::all_of(held.begin(), held.end(), [this](const QString& camera) {
               return m_stalled.contains(camera);
           });
}

void RecorderHealth::rest(const QString& reason)
{
    m_reason = reason;
    m_restMs = m_trial.hasExpired() ? FirstRestMs : qMin(LongestRestMs, 2 * m_restMs);
    m_rest.setRemainingTime(m_restMs);
    m_trial.setRemainingTime(m_restMs + TrialMs);
}

/// One that is all but full takes a small file, and none of the recordings.
bool RecorderHealth::isDiskFine()
{
    m_nextProbe.setRemainingTime(ProbeMs);
    if (DiskRoom::of(m_directory).isAllButFull())
        return false;
    QFile file(m_directory + "/probe");
    const bool isWritten = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                           file.write(QByteArray(ProbeBytes, '\0')) == ProbeBytes &&
                           ::fsync(file.handle()) == 0;
    file.remove();
    return isWritten;
}
