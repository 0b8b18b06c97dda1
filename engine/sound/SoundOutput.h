#pragma once

#include "sound/SoundQueue.h"

#include <QObject>
#include <QStringList>

#include <atomic>

/// The machine's loudspeaker. It is opened when it is first wanted, in a thread of its own, since a sound
/// server may let one wait. What it is asked to do is safe from any thread.
class SoundOutput : public QObject, public SoundSink, public std::enable_shared_from_this<SoundOutput>
{
    Q_OBJECT

public:
    ~SoundOutput() override;

    /// The names of those that the machine has; asking may take its time.
    static QStringList devices();
    /// Goes on by another one, by its name; empty, as at first, for the system's choice, which also takes the
    /// place of one that can't be opened.
    void choose(const QString& device);

    /// Opens the device, unless it is open or about to be; after a failure it is tried again.
    void open();
    /// 0 to 10.
    void setVolume(int volume);

    void take(Sound sound) override;
    void hush() override;

Q_SIGNALS:
    /// One line: nothing will be heard. Comes from another thread.
    void failed(const QString& error);

private:
    static void fill(void* output, uint8_t* bytes, int count);
    void openBeside();
    bool openChosen(QString* error);
    bool openDevice(const QByteArray& name, QString* error);
    void close();

    std::mutex m_mutex;
    SoundQueue m_queue;
    QByteArray m_name;                    ///< of the device that was chosen
    QByteArray m_openName;                ///< of the one that is open; guarded by SDL's mutex
    std::atomic<bool> m_isOpening{false}; ///< stays true once it is open
    std::atomic<uint32_t> m_device{0};    ///< 0 while there is none
};
