#include "onvif/OnvifPtz.h"

#include <cmath>

namespace {

using Service = OnvifDevice::Service;

constexpr int TimeoutMs = 1000;
constexpr double TurnSpeed = 0.5;
constexpr double ZoomSpeed = 0.5;
const QString Schema = "http://www.onvif.org/ver10/schema";
const QString ViewSpace = "http://www.onvif.org/ver10/tptz/PanTiltSpaces/TranslationSpaceFov";

/// A device without that space counts in shares of its whole range. Half a view is taken for 30 of 180
/// degrees, and upright for 17 of 90: no camera tells what its own is.
constexpr double HalfViewPan = 30.0 / 180;
constexpr double HalfViewTilt = 17.0 / 90;
/// The generic space of zoom has no magnification either: its whole range is taken for ten times.
constexpr double WholeZoom = 10;

/// By command number, from 1.
constexpr double Turns[][2] = {{0, 1}, {0, -1}, {-1, 0}, {1, 0}, {-1, 1}, {-1, -1}, {1, 1}, {1, -1}};

QString number(double value)
{
    return QString::number(value, 'g', 4);
}

SoapNode vector(const QString& name, double pan, double tilt, double zoom, const QString& space = {})
{
    SoapNode turn("PanTilt");
    SoapNode closer("Zoom");
    turn.nameSpace = closer.nameSpace = Schema;
    turn.set("x", number(pan)).set("y", number(tilt));
    if (!space.isEmpty())
        turn.set("space", space);
    return SoapNode(name).add(turn).add(closer.set("x", number(zoom)));
}

QVector<PtzPreset> presetsIn(const SoapNode& body)
{
    QVector<PtzPreset> presets;
    for (const SoapNode& node : body.children) {
        const QString token = node.attribute("token");
        if (node.name != "Preset" || token.isEmpty() || presets.size() >= OnvifPtz::MostPresets)
            continue;
        const QString name = node.at("Name").line();
        presets.append({token, name.isEmpty() ? SoapNode({}, token).line() : name});
    }
    return presets;
}

} // namespace

OnvifPtz::OnvifPtz(OnvifDevice* device, const QString& profile, QObject* parent)
    : QObject(parent), m_device(device), m_profile(profile), m_steering(this)
{
}

std::optional<PtzMove> OnvifPtz::moveOf(int command)
{
    if (command == 0)
        return PtzMove{PtzMove::Kind::Home, 0, 0, 0, {}};
    if (command >= 1 && command <= 8) {
        const auto& [pan, tilt] = Turns[command - 1];
        return PtzMove{PtzMove::Kind::Turn, pan * TurnSpeed, tilt * TurnSpeed, 0, {}};
    }
    if (command == 9 || command == 10)
        return PtzMove{PtzMove::Kind::Turn, 0, 0, command == 9 ? ZoomSpeed : -ZoomSpeed, {}};
    return {};
}

PtzMove OnvifPtz::moveTo(const QRectF& part)
{
    const QPointF middle = part.center();
    const double side = qBound(0.02, qMax(part.width(), part.height()), 1.0);
    return {PtzMove::Kind::Region,
            qBound(-1.0, 2 * middle.x() - 1, 1.0),
            qBound(-1.0, 1 - 2 * middle.y(), 1.0),
            side,
            {}};
}

SoapNode OnvifPtz::operation(const QString& name) const
{
    SoapNode body = OnvifDevice::operation(Service::Ptz, name);
    return body.add(SoapNode("ProfileToken", m_profile));
}

void OnvifPtz::call(const SoapNode& body, Done done)
{
    m_device->call(
        Service::Ptz, body, [done = std::move(done)](const SoapAnswer& answer) { done(answer.fault); },
        TimeoutMs);
}

void OnvifPtz::move(const PtzMove& move, Done done)
{
    switch (move.kind) {
    case PtzMove::Kind::Turn: {
        SoapNode body = operation("ContinuousMove");
        body.add(vector("Velocity", move.pan, move.tilt, move.zoom));
        return call(body.add(SoapNode("Timeout", QString("PT%1S").arg(PtzSteering::TurnMs / 1000))),
                    std::move(done));
    }
    case PtzMove::Kind::Home:
        return call(operation("GotoHomePosition"), std::move(done));
    case PtzMove::Kind::Preset:
        return call(operation("GotoPreset").add(SoapNode("PresetToken", move.preset)), std::move(done));
    case PtzMove::Kind::Region:
        return moveToRegion(move, true, std::move(done));
    }
}

void OnvifPtz::moveToRegion(const PtzMove& move, bool byView, Done done)
{
    const double zoom = std::log(1 / move.zoom) / std::log(WholeZoom);
    SoapNode body = operation("RelativeMove");
    if (byView)
        body.add(vector("Translation", move.pan, move.tilt, qMin(1.0, zoom), ViewSpace));
    else
        body.add(vector("Translation", move.pan * HalfViewPan, move.tilt * HalfViewTilt, qMin(1.0, zoom)));
    call(body, [this, move, byView, done = std::move(done)](const OnvifFault& fault) {
        if (byView && fault.kind == OnvifFault::Kind::Refused)
            return moveToRegion(move, false, done);
        done(fault);
    });
}

/// A device that refuses to be stopped is told to turn at no speed.
void OnvifPtz::stop(Done done)
{
    SoapNode body = operation("Stop");
    body.add(SoapNode("PanTilt", "true")).add(SoapNode("Zoom", "true"));
    call(body, [this, done = std::move(done)](const OnvifFault& fault) {
        using Kind = OnvifFault::Kind;
        if (fault.kind != Kind::Refused && fault.kind != Kind::NotSupported)
            return done(fault);
        SoapNode still = operation("ContinuousMove");
        call(still.add(vector("Velocity", 0, 0, 0)), done);
    });
}

void OnvifPtz::readPresets(PresetsDone done)
{
    m_device->call(Service::Ptz, operation("GetPresets"), [done = std::move(done)](const SoapAnswer& answer) {
        done(answer.fault, presetsIn(answer.body));
    });
}

void OnvifPtz::storePreset(const QString& name, Done done)
{
    SoapNode body = operation("SetPreset");
    body.add(SoapNode("PresetName", name));
    m_device->call(Service::Ptz, body,
                   [done = std::move(done)](const SoapAnswer& answer) { done(answer.fault); });
}
