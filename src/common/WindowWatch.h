#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>

#include <functional>

/// Watches the window of a widget that a mouse button is held on. Once the window has left the screen,
/// hidden, minimized or with its desktop, the release never comes; to a widget that hides alone it does.
class WindowWatch : public QObject
{
public:
    /// `onGone` is called inside the window's event each time the watched window leaves the screen.
    WindowWatch(QWidget* widget, std::function<void()> onGone);

    void Watch(bool bWatch);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* const m_pWidget;
    const std::function<void()> m_onGone;
    QPointer<QWindow> m_pWindow;
};
