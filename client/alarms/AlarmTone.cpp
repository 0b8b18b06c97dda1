#include "alarms/AlarmTone.h"

#include "sound/SoundOutput.h"

#include <QTimer>

#include <cmath>

namespace {

constexpr int OpeningMs = 500; ///< a device takes its time the first time
constexpr double NoteSeconds = 0.18;
constexpr double Notes[] = {880, 1175}; ///< hertz
constexpr double Loudness = 9000;
constexpr double Pi = 3.14159265358979;

/// Each note swells and fades, so that neither clicks.
Sound tone()
{
    Sound sound;
    const int count = int(NoteSeconds * Sound::Rate);
    for (const double hertz : Notes) {
        for (int i = 0; i < count; ++i) {
            const double swell = std::sin(Pi * i / count);
            const auto value = int16_t(Loudness * swell * std::sin(2 * Pi * hertz * i / Sound::Rate));
            sound.samples.insert(sound.samples.end(), Sound::Channels, value);
        }
    }
    sound.due = std::chrono::steady_clock::now();
    return sound;
}

} // namespace

void AlarmTone::play()
{
    const bool isFirst = !m_output;
    if (isFirst) {
        m_output = std::make_shared<SoundOutput>();
        m_output->setVolume(SoundQueue::LoudestVolume);
    }
    m_output->open();
    QTimer::singleShot(isFirst ? OpeningMs : 0, m_output.get(), [output = m_output.get()] {
        output->hush();
        output->take(tone());
    });
}
