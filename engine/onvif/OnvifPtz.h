#pragma once

#include "onvif/OnvifDevice.h"
#include "onvif/PtzSteering.h"

#include <QRectF>
#include <QVector>

/// A place that the camera keeps.
struct PtzPreset
{
    QString token;
    QString name;
};

/// Turning and zooming one profile of a device that is open while it is used. Moves and stops are given up
/// after a second.
class OnvifPtz : public QObject, private PtzCarrier
{
    Q_OBJECT

public:
    static constexpr int MostPresets = 256;

    OnvifPtz(OnvifDevice* device, const QString& profile, QObject* parent = nullptr);

    PtzSteering* steering() { return &m_steering; }
    const PtzSteering* steering() const { return &m_steering; }

    /// The move of a command of the deck's sig_SendPtzCommand; nothing for any other number.
    static std::optional<PtzMove> moveOf(int command);
    /// The move that brings this part of the picture, in shares of its size, to fill it.
    static PtzMove moveTo(const QRectF& part);

    using PresetsDone = std::function<void(const OnvifFault&, const QVector<PtzPreset>&)>;
    void readPresets(PresetsDone done);
    /// Stores where the camera looks, under a new name.
    void storePreset(const QString& name, Done done);

private:
    void move(const PtzMove& move, Done done) override;
    void stop(Done done) override;
    void moveToRegion(const PtzMove& move, bool byView, Done done);
    SoapNode operation(const QString& name) const;
    void call(const SoapNode& body, Done done);

    OnvifDevice* m_device;
    QString m_profile;
    PtzSteering m_steering;
};
