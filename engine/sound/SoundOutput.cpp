#include "sound/SoundOutput.h"

#include <SDL2/SDL.h>

#include <thread>

namespace {

/// About 21 ms: how often the device asks.
constexpr Uint16 SamplesAtOnce = 1024;

/// SDL itself is begun and ended by one thread at a time.
std::mutex s_sdlMutex;

} // namespace

SoundOutput::~SoundOutput()
{
    // Another one that waits for a sound server need not be waited for.
    if (m_device == 0)
        return;
    const std::lock_guard lock(s_sdlMutex);
    close();
}

/// Under SDL's mutex.
void SoundOutput::close()
{
    const SDL_AudioDeviceID device = m_device.exchange(0);
    if (device == 0)
        return;
    SDL_CloseAudioDevice(device);
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

QStringList SoundOutput::devices()
{
    const std::lock_guard lock(s_sdlMutex);
    QStringList names;
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) == 0) {
        for (int i = 0; i < SDL_GetNumAudioDevices(0); ++i)
            names.append(QString::fromUtf8(SDL_GetAudioDeviceName(i, 0)));
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
    }
    // What SDL keeps for a thread, its last error, it frees at the end of its own threads alone.
    SDL_TLSCleanup();
    return names;
}

void SoundOutput::choose(const QString& device)
{
    {
        const std::lock_guard lock(m_mutex);
        m_name = device.toUtf8();
    }
    if (m_isOpening)
        openBeside();
}

void SoundOutput::open()
{
    if (!m_isOpening.exchange(true))
        openBeside();
}

void SoundOutput::openBeside()
{
    std::thread([self = shared_from_this()] {
        QString error;
        if (self->openChosen(&error))
            return;
        Q_EMIT self->failed(error);
    }).detach();
}

/// Whoever is the last to come here finds the newest choice.
bool SoundOutput::openChosen(QString* error)
{
    const std::lock_guard sdlLock(s_sdlMutex);
    QByteArray name;
    {
        const std::lock_guard lock(m_mutex);
        name = m_name;
    }
    if (m_device != 0 && name == m_openName)
        return true;
    close();
    m_openName = name;
    // One that failed while a newer choice waits must not hide that this one plays.
    m_isOpening = openDevice(name, error);
    return m_isOpening;
}

bool SoundOutput::openDevice(const QByteArray& name, QString* error)
{
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
        *error = QString("no sound: %1").arg(SDL_GetError());
        return false;
    }
    SDL_AudioSpec wanted = {};
    wanted.freq = Sound::Rate;
    wanted.format = AUDIO_S16SYS;
    wanted.channels = Sound::Channels;
    wanted.samples = SamplesAtOnce;
    wanted.callback = fill;
    wanted.userdata = this;
    SDL_AudioDeviceID device = 0;
    if (!name.isEmpty())
        device = SDL_OpenAudioDevice(name.constData(), 0, &wanted, nullptr, 0);
    if (device == 0)
        device = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (device == 0) {
        *error = QString("no sound: %1").arg(SDL_GetError());
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return false;
    }
    m_device = device;
    SDL_PauseAudioDevice(device, 0);
    return true;
}

void SoundOutput::setVolume(int volume)
{
    const std::lock_guard lock(m_mutex);
    m_queue.setVolume(volume);
}

void SoundOutput::take(Sound sound)
{
    if (m_device == 0)
        return;
    const std::lock_guard lock(m_mutex);
    m_queue.add(std::move(sound));
}

void SoundOutput::hush()
{
    const std::lock_guard lock(m_mutex);
    m_queue.clear();
}

void SoundOutput::fill(void* output, uint8_t* bytes, int count)
{
    auto* self = static_cast<SoundOutput*>(output);
    const std::lock_guard lock(self->m_mutex);
    self->m_queue.fill(reinterpret_cast<int16_t*>(bytes), size_t(count) / (Sound::Channels * sizeof(int16_t)),
                       SoundQueue::Clock::now());
}
