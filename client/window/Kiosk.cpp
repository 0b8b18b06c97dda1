#include "window/Kiosk.h"

#include "common/KioskPassword.h"
#include "common/Words.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>

namespace {

/// What turns a camera, enlarges it, or goes to another pane or page.
bool isHarmless(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Plus:
    case Qt::Key_Equal:
    case Qt::Key_Minus:
    case Qt::Key_Control:
    case Qt::Key_Shift:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return !(event.modifiers() & Qt::AltModifier);
    default:
        return false;
    }
}

} // namespace

Kiosk::Kiosk(QObject* parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool Kiosk::eventFilter(QObject* watched, QEvent* event)
{
    // Those of actions reach no widget.
    if (event->type() == QEvent::Shortcut)
        return !m_isLeft && !m_dialog;
    if (m_isLeft || !watched->isWidgetType() || isAsked(watched) || !isRefused(watched, event))
        return false;
    const bool asks = event->type() == QEvent::Close || event->type() == QEvent::KeyPress;
    event->ignore();
    if (asks)
        QTimer::singleShot(0, this, &Kiosk::ask);
    return true;
}

/// True for what belongs to the question itself.
bool Kiosk::isAsked(const QObject* watched) const
{
    const auto* widget = qobject_cast<const QWidget*>(watched);
    return m_dialog && widget && (widget == m_dialog || m_dialog->isAncestorOf(widget));
}

bool Kiosk::isRefused(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Close:
        return qobject_cast<QWidget*>(watched)->isWindow();
    case QEvent::ContextMenu:
        return true;
    case QEvent::KeyPress:
        return !isHarmless(*static_cast<QKeyEvent*>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return qobject_cast<QAbstractButton*>(watched) ||
               static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton;
    case QEvent::MouseMove:
        return static_cast<QMouseEvent*>(event)->buttons() != Qt::NoButton;
    default:
        return false;
    }
}

void Kiosk::ask()
{
    if (m_dialog || m_isLeft)
        return;
    QInputDialog dialog(QApplication::activeWindow());
    dialog.setObjectName("KioskDialog");
    dialog.setWindowTitle(word("Locked"));
    dialog.setLabelText(word("The password to leave:"));
    dialog.setTextEchoMode(QLineEdit::Password);
    m_dialog = &dialog;
    const bool given = dialog.exec() == QDialog::Accepted && KioskPassword::matches(dialog.textValue());
    m_dialog = nullptr;
    if (!given)
        return;
    m_isLeft = true;
    Q_EMIT left();
    deleteLater();
}
