#pragma once

#include "onvif/OnvifDevice.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTimer>

/// What a device reports of itself.
struct OnvifEvent
{
    enum class Kind
    {
        Motion,
        Alarm, ///< of a digital input
    };

    Kind kind = Kind::Motion;
    QString source; ///< the video source, its configuration or the input that it is about; may be empty
    bool isOn = false;
};

/// The events in an answer of PullMessages that tell of motion and alarms; all others are left out.
QVector<OnvifEvent> readEvents(const SoapNode& body);

/// Motion and alarms of a device that is open while it is used, by a pull point: pulled, renewed, and
/// subscribed anew after a loss, with growing pauses.
class OnvifEvents : public QObject
{
    Q_OBJECT

public:
    static constexpr int PullMs = 4'000; ///< how long a device may hold a pull back
    static constexpr int KeepSeconds = 60;
    static constexpr int RenewMs = 20'000; ///< sooner where a device keeps a subscription for less
    static constexpr int LongestPauseMs = 30'000;

    explicit OnvifEvents(OnvifDevice* device, QObject* parent = nullptr);

    void start();
    /// Tells the device that nobody asks any more, without waiting: some take one who asks at a time.
    void stop();
    bool isRunning() const { return m_isRunning; }
    /// True until the device has answered that, or nobody waits for it any longer.
    bool isEnding() const { return m_ends > 0; }

Q_SIGNALS:
    void told(const OnvifEvent& event);
    /// The subscription stands, or has gone with a fault; told once for each.
    void stateChanged(const OnvifFault& fault);
    /// isEnding() is false again.
    void ended();

private:
    void subscribe();
    void takeSubscription(const SoapAnswer& answer);
    void takePlace(const SoapNode& reference);
    void unsubscribe();
    void takeEnd();
    void renewBefore(const SoapNode& times);
    void pull();
    void takeMessages(const SoapAnswer& answer);
    void renew();
    void lose(const OnvifFault& fault);
    SoapRequest request(const SoapNode& body, const QString& action) const;

    OnvifDevice* m_device;
    QUrl m_address; ///< of the subscription
    std::vector<SoapNode> m_headers;
    bool m_isRunning = false;
    bool m_isSubscribed = false;
    bool m_isAsked = false; ///< for a subscription, without an answer yet
    bool m_hasToldLoss = false;
    int m_pauseMs = 0;
    int m_ends = 0;     ///< ends without an answer yet, those before a beginning's answer among them
    quint64 m_turn = 0; ///< answers to earlier subscriptions count for nothing
    QElapsedTimer m_sincePull;
    QTimer m_renew;
    QTimer m_next;
};
