#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>

#include <functional>

class CameraHub;
class CPaneDeck;
class DeckStreams;
class OnvifCamera;
class PaneLease;
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
    /// A camera that moves until it is stopped.
    struct Turning
    {
        QString camera;
        std::function<void()> stop;
    };

    void start(int pane, int command);
    void stopLost(const QString& camera);
    void moveToRegion(int pane, QPoint from, QPoint to);
    OnvifCamera* deviceAt(int pane) const;
    void release(int pane);
    void takeFailure(const CameraRecord* camera, const QString& reason);
    void tellThatItCannot(int pane, const CameraRecord& camera);
    void showNote(int pane, const QString& text) const;
    void fillPresets(QMenu* menu, OnvifCamera* device, int pane);
    void askForPreset(int pane);
    void storePreset(int pane, const QString& name);

    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    CameraHub* m_hub;
    PaneLease* m_lease;
    QHash<int, Turning> m_turning;         ///< by pane
    const CameraRecord* m_asked = nullptr; ///< the last one that was to be turned
    QString m_lastTold;                    ///< of a lease
    QSet<QString> m_told;                  ///< ids of cameras that can't, and whose user knows
};
