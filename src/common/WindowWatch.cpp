#include "common/WindowWatch.h"

#include <QExposeEvent>
#include <QWidget>

#include <utility>

WindowWatch::WindowWatch(QWidget* widget, std::function<void()> onGone)
    : m_pWidget(widget), m_onGone(std::move(onGone))
{
}

void WindowWatch::Watch(bool bWatch)
{
    if (m_pWindow)
        m_pWindow->removeEventFilter(this);
    m_pWindow = bWatch ? m_pWidget->window()->windowHandle() : nullptr;
    if (m_pWindow)
        m_pWindow->installEventFilter(this);
}

bool WindowWatch::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Expose && static_cast<QExposeEvent*>(event)->region().isEmpty())
        m_onGone();
    return QObject::eventFilter(watched, event);
}
