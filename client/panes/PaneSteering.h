#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>

class CameraHub;
class CPaneDeck;
class DeckStreams;
class OnvifCamera;
class QMenu;
class VideoSource;
struct CameraRecord;

/// Turns the cameras in the panes of a deck: by its PTZ commands, by a drawn rectangle, to their presets. A
/// camera that is turned is stopped once its pane lets go of it.
class PaneSteering : public QObject
{
    Q_OBJECT

public:
    PaneSteering(CPaneDeck* deck, DeckStreams* streams, CameraHub* hub, QObject* parent);
    ~PaneSteering() override;

    bool canTurn(int pane) const { return deviceAt(pane) != nullptr; }
    /// Adds a submenu of presets for the camera of a pane, if it has any.
    void fillMenu(QMenu* menu, int pane);

public Q_SLOTS:
    /// A command of the deck's sig_SendPtzCommand.
    void steer(int pane, int command, int type);

Q_SIGNALS:
    void told(const QString& text);

private:
    void moveToRegion(int pane, QPoint from, QPoint to);
    OnvifCamera* deviceAt(int pane) const;
    void release(int pane);
    void takeFailure(const CameraRecord* camera, const QString& reason);
    void tellThatItCannot(int pane, const CameraRecord& camera);
    void showNote(int pane, const QString& text) const;
    void fillPresets(QMenu* menu, OnvifCamera* device);
    void askForPreset(int pane);
    void storePreset(int pane, const QString& name);

    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    CameraHub* m_hub;
    QHash<int, QPointer<OnvifCamera>> m_turning; ///< by pane
    const CameraRecord* m_asked = nullptr;       ///< the last one that was to be turned
    QSet<QString> m_told;                        ///< ids of cameras that can't, and whose user knows
};
