#include "onvif/PtzSteering.h"

PtzSteering::PtzSteering(PtzCarrier* carrier, QObject* parent) : QObject(parent), m_carrier(carrier)
{
    m_renew.setInterval(RenewMs);
    m_again.setInterval(PauseMs);
    m_again.setSingleShot(true);
    connect(&m_renew, &QTimer::timeout, this, [this] { move(m_turn); });
    connect(&m_again, &QTimer::timeout, this, &PtzSteering::sendStop);
}

void PtzSteering::setReady(bool ready)
{
    m_isReady = ready;
    if (ready)
        next();
}

void PtzSteering::move(const PtzMove& move)
{
    m_waiting = move;
    next();
}

void PtzSteering::stop()
{
    if (m_waiting && m_waiting->kind == PtzMove::Kind::Turn)
        m_waiting.reset();
    m_renew.stop();
    if (!m_isTurning && !m_owesStop)
        return;
    m_isTurning = false;
    m_owesStop = true;
    m_movedSinceStop = m_moveIsOut;
    m_insist.setRemainingTime(InsistMs);
    if (!m_stopIsOut)
        sendStop();
}

/// A move that overtakes a stop would be ended by it, so it waits for the stop's answer, or for its end.
void PtzSteering::next()
{
    if (!m_isReady || m_moveIsOut || m_stopIsOut || !m_waiting)
        return;
    const PtzMove move = *std::exchange(m_waiting, std::nullopt);
    const bool wasStopping = std::exchange(m_owesStop, false);
    m_again.stop();
    m_moveIsOut = true;
    m_isTurning = move.kind == PtzMove::Kind::Turn;
    m_turn = move;
    if (m_isTurning)
        m_renew.start();
    else
        m_renew.stop();
    m_carrier->move(move, [this](const OnvifFault& fault) { takeMove(fault); });
    if (wasStopping)
        Q_EMIT stopped();
}

void PtzSteering::takeMove(const OnvifFault& fault)
{
    m_moveIsOut = false;
    if (fault.kind == OnvifFault::Kind::NotSupported || fault.kind == OnvifFault::Kind::WrongPassword)
        m_isTurning = false;
    if (!m_isTurning)
        m_renew.stop();
    // The stop may have been there before the move.
    if (m_owesStop && m_movedSinceStop && !m_stopIsOut)
        sendStop();
    else if (m_waiting)
        next();
    if (fault)
        Q_EMIT failed(fault);
}

void PtzSteering::sendStop()
{
    m_again.stop();
    m_stopIsOut = true;
    m_movedSinceStop = m_moveIsOut;
    m_carrier->stop([this](const OnvifFault& fault) { takeStop(fault); });
}

void PtzSteering::takeStop(const OnvifFault& fault)
{
    m_stopIsOut = false;
    if (m_waiting)
        return next();
    if (m_moveIsOut || !m_owesStop)
        return;
    const bool isHopeless =
        fault.kind == OnvifFault::Kind::NotSupported || fault.kind == OnvifFault::Kind::WrongPassword;
    const bool isSure = isHopeless || (!fault && !m_movedSinceStop);
    if (!isSure && !m_insist.hasExpired()) {
        m_again.start();
        return;
    }
    m_owesStop = false;
    if (fault)
        Q_EMIT failed(fault);
    Q_EMIT stopped();
}
