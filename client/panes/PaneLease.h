#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>

#include <functional>

class DeckStreams;
class PtzLeases;
class QMenu;

/// Lets a deck turn only those cameras that no other operator turns. Without leases there is none: then all
/// may be turned at once.
class PaneLease : public QObject
{
    Q_OBJECT

public:
    PaneLease(DeckStreams* streams, PtzLeases* leases, QObject* parent);

    bool isNeeded() const { return m_leases; }
    /// Calls `turn` at once if the pane's camera is this desk's, else when it becomes so within a moment.
    void whenMine(int pane, std::function<void()> turn);
    /// What waits in that pane is not wanted any more.
    void forget(int pane) { m_waiting.remove(pane); }
    /// A camera is being turned, and keeps its lease, or stands still again.
    void setTurning(const QString& camera, bool on);

    /// Adds what can be done about the lease of a pane's camera.
    void fillMenu(QMenu* menu, int pane) const;

Q_SIGNALS:
    /// In the user's words, over the pane that it is about.
    void told(int pane, const QString& text);
    /// Whoever turns this camera stops now.
    void lost(const QString& camera);

private:
    struct Waiting
    {
        QString camera;
        std::function<void()> turn;
        QElapsedTimer since;
    };

    void takeGrant(const QString& camera);
    void takeGift(const QString& camera);
    void takeRefusal(const QString& camera, const QString& reason);

    DeckStreams* m_streams;
    PtzLeases* m_leases;
    QHash<int, Waiting> m_waiting; ///< by pane
};
