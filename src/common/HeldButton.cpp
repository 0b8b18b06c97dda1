#include "common/HeldButton.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

#include <utility>

HeldButton::HeldButton(QObject* owner, std::function<void()> onLost)
    : m_pOwner(owner), m_onLost(std::move(onLost))
{
}

void HeldButton::Press(QWidget* widget)
{
    m_pWidget = widget;
    m_bLost = false;
    QCoreApplication::instance()->installEventFilter(this);
}

void HeldButton::Release()
{
    m_pWidget = nullptr;
    m_bLost = false;
    QCoreApplication::instance()->removeEventFilter(this);
}

bool HeldButton::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_bLost && IsTaken(watched, event))
        Lose();
    return QObject::eventFilter(watched, event);
}

bool HeldButton::IsTaken(QObject* watched, QEvent* event) const
{
    switch (event->type()) {
    case QEvent::EnabledChange:
        return watched == m_pWidget && !m_pWidget->isEnabled();
    case QEvent::WindowBlocked:
        // Qt forgets where the button went down whichever window it is.
        return true;
    case QEvent::Show:
        return watched->isWidgetType() && static_cast<QWidget*>(watched)->windowType() == Qt::Popup;
    case QEvent::Expose:
        return m_pWidget && watched == m_pWidget->window()->windowHandle() &&
               !static_cast<QWindow*>(watched)->isExposed();
    default:
        return false;
    }
}

void HeldButton::Lose()
{
    m_bLost = true;
    const auto tell = [this] {
        // Another press may have begun meanwhile.
        if (!m_bLost)
            return;
        Release();
        const std::function<void()> onLost = m_onLost;
        onLost();
    };
    QMetaObject::invokeMethod(m_pOwner, tell, Qt::QueuedConnection);
}
