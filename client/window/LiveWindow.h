#pragma once

#include "views/DeckView.h"

#include <QMainWindow>

class CameraHub;
class CameraList;
class EventLog;
class LiveTab;
class QScreen;
class ViewList;

/// A window with a live deck alone, for another screen.
class LiveWindow : public QMainWindow
{
    Q_OBJECT

public:
    LiveWindow(int number, const CameraList& cameras, CameraHub* hub, EventLog* log, ViewList* views);

    LiveTab* live() const { return m_live; }

    /// Opens it on a screen, over all of it if `full`; a place that doesn't lie there is made to.
    void open(QScreen* screen, const QRect& place, bool full);

    /// What it takes to open it again.
    WindowView state() const;

Q_SIGNALS:
    /// The user has closed it.
    void closed();
    /// One line for the log.
    void told(const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    LiveTab* m_live;
};
