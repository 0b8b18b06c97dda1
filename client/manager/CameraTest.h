#pragma once

#include "packets/StreamProbe.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

#include <memory>

class CPaneDeck;
class FramePump;
class SourceAddress;
class VideoSource;

/// Tries a camera in the one pane of a deck, and tells what comes. Nothing waits for the camera.
class CameraTest : public QObject
{
    Q_OBJECT

public:
    explicit CameraTest(CPaneDeck* deck, QObject* parent);
    ~CameraTest() override;

    void start(const SourceAddress& address);
    /// The last picture stays.
    void stop();
    bool isRunning() const { return bool(m_source); }

Q_SIGNALS:
    /// What is known now: size, codec, rate and delay, or why there is no picture. One line.
    void told(const QString& text);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void tell();
    QString finding() const;

    CPaneDeck* m_deck;
    FramePump* m_pump;
    std::unique_ptr<VideoSource, void (*)(VideoSource*)> m_source;
    std::shared_ptr<StreamProbe> m_probe;
    QElapsedTimer m_since;
    qint64 m_firstMs = -1; ///< how long the first picture took
    qint64 m_delayMs = 0;  ///< from a packet's coming to its picture
    QBasicTimer m_timer;
};
