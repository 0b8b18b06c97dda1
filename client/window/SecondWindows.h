#pragma once

#include "views/DeckView.h"

#include <QHash>
#include <QObject>
#include <QVector>

class CameraHub;
class CameraList;
class EventLog;
class LiveTab;
class LiveWindow;
class QMenu;
class QScreen;
class ViewList;

/// The windows beside the main one. They are kept with the views, and open again at the next start. Those of
/// a screen that goes come to the first one, and return once it is there again.
class SecondWindows : public QObject
{
    Q_OBJECT

public:
    SecondWindows(const CameraList& cameras, CameraHub* hub, EventLog* log, ViewList* views, QObject* parent);
    ~SecondWindows() override;

    /// Adds what opens a window on one of the screens.
    void addTo(QMenu* menu);

    /// Opens those that were there at the last end. One whose screen is gone comes up on the first one.
    void restore();

    /// The main window goes: keeps them for the next start, and closes them.
    void end();

    const QVector<LiveWindow*>& windows() const { return m_windows; }

Q_SIGNALS:
    /// There is another live deck.
    void added(LiveTab* live);

private:
    void fillScreens(QMenu* menu, bool full);
    void openNew(QScreen* screen, bool full);
    LiveWindow* add();
    void drop(LiveWindow* window);
    void leave(const QScreen* screen);
    void comeToFirst(const QVector<LiveWindow*>& windows);
    void returnTo(const QString& screen);
    WindowView stateOf(const LiveWindow* window) const;
    void keep();

    const CameraList& m_cameras;
    CameraHub* m_hub;
    EventLog* m_log;
    ViewList* m_views;
    QVector<LiveWindow*> m_windows;
    QHash<const LiveWindow*, WindowView> m_homes; ///< of those whose screen is away
    bool m_isEnding = false;
};
