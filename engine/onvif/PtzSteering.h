#pragma once

#include "onvif/OnvifFault.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

/// A move of a camera: shares of the fastest, -1 to 1, to the right, up and closer; or a one-time order.
struct PtzMove
{
    enum class Kind
    {
        Turn, ///< goes on until a stop
        Home,
        Preset,
        Region, ///< brings a part of the picture to fill it
    };

    Kind kind = Kind::Turn;
    double pan = 0; ///< of a region, its middle in the picture, -1 left to 1 right, -1 bottom to 1 top
    double tilt = 0;
    double zoom = 0; ///< of a region, its larger side in shares of the picture's
    QString preset;
};

/// What carries moves to a camera.
class PtzCarrier
{
public:
    using Done = std::function<void(const OnvifFault&)>;

    virtual ~PtzCarrier() = default;
    /// `done` comes once, later.
    virtual void move(const PtzMove& move, Done done) = 0;
    virtual void stop(Done done) = 0;
};

/// Puts moves and stops of one camera in order. No two moves are under way at a time: of those that wait the
/// newest counts. A stop drops a turn that waits, leaves one-time orders alone, and goes out at once, again
/// behind a move that was under way, and again until the camera has answered one, for some seconds. A move
/// that is held is sent again before the camera ends it by itself.
class PtzSteering : public QObject
{
    Q_OBJECT

public:
    /// How long a camera that hears nothing more goes on turning.
    static constexpr int TurnMs = 10'000;
    static constexpr int RenewMs = 4'000;
    static constexpr int InsistMs = 6'000; ///< of a stop
    static constexpr int PauseMs = 250;    ///< between two stops without an answer

    explicit PtzSteering(PtzCarrier* carrier, QObject* parent = nullptr);

    /// Until it is ready the newest move waits, and a stop drops it; at first it is not.
    void setReady(bool ready);

    void move(const PtzMove& move);
    void stop();
    /// Forgets a move that waits.
    void drop() { m_waiting.reset(); }
    /// False once every stop was answered or given up.
    bool isStopping() const { return m_owesStop; }

Q_SIGNALS:
    /// A move was not done. A camera that answers nothing tells so by its stops.
    void failed(const OnvifFault& fault);
    /// isStopping() is false again.
    void stopped();

private:
    void next();
    void sendStop();
    void takeMove(const OnvifFault& fault);
    void takeStop(const OnvifFault& fault);

    PtzCarrier* m_carrier;
    std::optional<PtzMove> m_waiting;
    PtzMove m_turn;
    bool m_isReady = false;
    bool m_isTurning = false; ///< the camera turns, as far as it was told
    bool m_moveIsOut = false;
    bool m_stopIsOut = false;
    bool m_owesStop = false;
    bool m_movedSinceStop = false;
    QDeadlineTimer m_insist;
    QTimer m_renew;
    QTimer m_again;
};
