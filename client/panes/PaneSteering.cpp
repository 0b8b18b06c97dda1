#include "panes/PaneSteering.h"

#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/OnvifCamera.h"
#include "cameras/OnvifHub.h"
#include "common/EngineText.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "panes/PaneLease.h"
#include "source/VideoSource.h"

#include <CPaneDeck.h>

#include <QInputDialog>
#include <QMenu>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>

namespace {

constexpr int Start = 0;
/// A rectangle of fewer pixels was hardly meant.
constexpr int SmallestSide = 8;
constexpr int NoteMs = 4000;

} // namespace

PaneSteering::PaneSteering(CPaneDeck* deck, DeckStreams* streams, CameraHub* hub, QObject* parent)
    : QObject(parent), m_deck(deck), m_streams(streams), m_hub(hub),
      m_lease(new PaneLease(streams, hub->leases(), this))
{
    connect(deck, &CPaneDeck::sig_SendPtzCommand, this, &PaneSteering::steer);
    connect(deck, &CPaneDeck::sig_SelectRegion, this, &PaneSteering::moveToRegion);
    connect(hub->onvif(), &OnvifHub::failed, this, &PaneSteering::takeFailure);
    connect(m_lease, &PaneLease::told, this, [this](int pane, const QString& text) {
        showNote(pane, text);
        // A key that is held tries again and again.
        if (std::exchange(m_lastTold, text) != text)
            Q_EMIT told(text);
    });
    connect(m_lease, &PaneLease::lost, this, &PaneSteering::stopLost);
    connect(streams, &DeckStreams::stopped, this, &PaneSteering::release);
    connect(streams, &DeckStreams::cleared, this, &PaneSteering::release);
}

PaneSteering::~PaneSteering()
{
    for (const int pane : m_turning.keys())
        release(pane);
}

OnvifCamera* PaneSteering::deviceAt(int pane) const
{
    const CameraRecord* camera = m_streams->cameraAt(pane);
    return camera && camera->about.ptz == CameraDescription::Ptz::Onvif ? m_hub->onvif()->find(*camera)
                                                                        : nullptr;
}

void PaneSteering::release(int pane)
{
    m_lease->forget(pane);
    const Turning turning = m_turning.take(pane);
    if (!turning.stop)
        return;
    turning.stop();
    m_lease->setTurning(turning.camera, false);
}

void PaneSteering::stopLost(const QString& camera)
{
    for (const int pane : m_turning.keys()) {
        if (m_turning.value(pane).camera == camera)
            release(pane);
    }
}

void PaneSteering::steer(int pane, int command, int type)
{
    if (type != Start && m_turning.contains(pane))
        return release(pane);
    const CameraRecord* camera = m_streams->cameraAt(pane);
    VideoSource* source = m_streams->sourceAt(pane);
    if (!camera)
        return;
    OnvifCamera* device = deviceAt(pane);
    if (!device && camera->address && !isSynthetic(*camera))
        return tellThatItCannot(pane, *camera);
    if (type == Start)
        return m_lease->whenMine(pane, [this, pane, command] { start(pane, command); });
    // What never began here is no business of this desk's: another one may turn it.
    m_lease->forget(pane);
    if (m_lease->isNeeded())
        return;
    if (device)
        device->steer(command, false);
    else if (source)
        source->ptz(command, false);
}

void PaneSteering::start(int pane, int command)
{
    const CameraRecord* camera = m_streams->cameraAt(pane);
    const QPointer<OnvifCamera> device = deviceAt(pane);
    const QPointer<VideoSource> source = m_streams->sourceAt(pane);
    if (!camera || (!device && !source))
        return;
    const auto stop = [device, source, command] {
        if (device)
            device->stop();
        else if (source)
            source->ptz(command, false);
    };
    m_turning.insert(pane, {camera->about.id, stop});
    m_lease->setTurning(camera->about.id, true);
    if (device)
        m_asked = camera;
    if (device)
        device->steer(command, true);
    else
        source->ptz(command, true);
}

/// Over the pane at each try, in the log once.
void PaneSteering::tellThatItCannot(int pane, const CameraRecord& camera)
{
    const bool isUnknown = camera.about.onvifAddress.isEmpty();
    const QString form = isUnknown ? word("%1 can't be turned: it has no ONVIF") : word("%1 can't be turned");
    showNote(pane, form.arg(camera.name));
    if (m_told.contains(camera.about.id))
        return;
    m_told.insert(camera.about.id);
    Q_EMIT told(form.arg(camera.name));
}

/// The press or release that it answers would hide it, on its way from widget to widget.
void PaneSteering::showNote(int pane, const QString& text) const
{
    QWidget* picture = m_deck->PaneWidget(pane);
    if (!picture || !picture->isVisible())
        return;
    QTimer::singleShot(0, picture, [picture, text] {
        // A name may look like markup.
        const QString plain = Qt::convertFromPlainText(text);
        QToolTip::showText(picture->mapToGlobal(picture->rect().center()), plain, picture, QRect(), NoteMs);
    });
}

void PaneSteering::moveToRegion(int pane, QPoint from, QPoint to)
{
    const QWidget* picture = m_deck->PaneWidget(pane);
    const CameraRecord* camera = m_streams->cameraAt(pane);
    const QRect drawn = QRect(from, to).normalized();
    if (!picture || !camera || to == QPoint(-1, -1) || drawn.width() < SmallestSide ||
        drawn.height() < SmallestSide)
        return;
    const double width = picture->width();
    const double height = picture->height();
    const QRectF part(drawn.x() / width, drawn.y() / height, drawn.width() / width, drawn.height() / height);
    if (QPointer<OnvifCamera> device = deviceAt(pane))
        m_lease->whenMine(pane, [this, device, camera, part] {
            m_asked = camera;
            if (device)
                device->moveTo(part);
        });
    else if (camera->address && !isSynthetic(*camera))
        tellThatItCannot(pane, *camera);
}

/// Each press is told of once, in the deck that it came from.
void PaneSteering::takeFailure(const CameraRecord* camera, const QString& reason)
{
    if (camera != std::exchange(m_asked, nullptr))
        return;
    const QString text = word("%1 can't be turned: %2").arg(camera->name, reason);
    for (int pane = 0; pane < m_streams->paneCount(); ++pane) {
        if (m_streams->cameraAt(pane) == camera)
            showNote(pane, text);
    }
    Q_EMIT told(text);
}

void PaneSteering::fillMenu(QMenu* menu, int pane)
{
    m_lease->fillMenu(menu, pane);
    OnvifCamera* device = deviceAt(pane);
    if (!device)
        return;
    QMenu* presets = menu->addMenu(word("Presets"));
    presets->setObjectName("PresetMenu");
    presets->addAction(word("Store this view ..."), this, [this, pane] { askForPreset(pane); });
    presets->addSeparator();
    fillPresets(presets, device, pane);
    menu->addSeparator();
}

/// The camera is asked while the menu is open already.
void PaneSteering::fillPresets(QMenu* menu, OnvifCamera* device, int pane)
{
    QAction* waiting = menu->addAction(word("Asking the camera ..."));
    waiting->setEnabled(false);
    const QPointer<QMenu> open = menu;
    const QPointer<OnvifCamera> camera = device;
    const QPointer<QAction> note = waiting;
    PaneLease* lease = m_lease;
    device->readPresets([=](const OnvifFault& fault, const QVector<PtzPreset>& presets) {
        if (!open || !note)
            return;
        note->setText(fault ? engineText(fault.text()) : word("No presets"));
        note->setVisible(fault || presets.isEmpty());
        for (const PtzPreset& preset : presets) {
            QString name = preset.name;
            open->addAction(name.replace('&', "&&"), lease, [=] {
                lease->whenMine(pane, [camera, preset] {
                    if (camera)
                        camera->goTo(preset);
                });
            });
        }
    });
}

void PaneSteering::askForPreset(int pane)
{
    auto* dialog = new QInputDialog(m_deck);
    dialog->setObjectName("PresetDialog");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(word("Store this view"));
    dialog->setLabelText(word("Name of the preset"));
    connect(dialog, &QInputDialog::textValueSelected, this,
            [this, pane](const QString& name) { storePreset(pane, name.trimmed()); });
    dialog->open();
}

void PaneSteering::storePreset(int pane, const QString& name)
{
    OnvifCamera* device = deviceAt(pane);
    if (!device || name.isEmpty())
        return;
    const QPointer<PaneSteering> alive = this;
    device->storePreset(name, [alive, name](const OnvifFault& fault) {
        if (alive)
            Q_EMIT alive->told(fault ? word("preset %1 not stored: %2").arg(name, engineText(fault.text()))
                                     : word("preset %1 stored").arg(name));
    });
}
