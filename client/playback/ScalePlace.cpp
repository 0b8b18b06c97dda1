#include "playback/ScalePlace.h"

#include <CPaneDeck.h>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QTimer>

namespace {

/// A row of the scale in which a press pans it, above its strip.
constexpr int PanRow = 2;

} // namespace

ScalePlace::ScalePlace(CPaneDeck* deck)
    : QObject(deck), m_deck(deck), m_scale(deck->findChild<QWidget*>("m_dayWidget"))
{
    if (!m_scale)
        return;
    watch(m_scale);
    watch(m_scale->parentWidget());
    const QList<QWidget*> parts = m_scale->findChildren<QWidget*>();
    for (QWidget* part : parts)
        watch(part);
}

void ScalePlace::watch(QWidget* widget)
{
    widget->setMouseTracking(true);
    widget->installEventFilter(this);
}

QPoint ScalePlace::globalOf(const QMouseEvent& event)
{
#if QT_VERSION_MAJOR < 6
    return event.globalPos();
#else
    return event.globalPosition().toPoint();
#endif
}

QRect ScalePlace::window() const
{
    if (!m_scale || !m_scale->isVisible())
        return QRect();
    const QWidget* parent = m_scale->parentWidget();
    return QRect(parent->mapToGlobal(QPoint()), parent->size());
}

QRect ScalePlace::day() const
{
    if (!m_scale || !m_scale->isVisible())
        return QRect();
    return QRect(m_scale->mapToGlobal(QPoint()), m_scale->size());
}

int ScalePlace::secondAt(int globalX) const
{
    const QRect all = day();
    if (all.width() < 1)
        return 0;
    return int(qBound(qint64(0), qint64(globalX - all.left()) * SecondsOfDay / all.width(),
                      qint64(SecondsOfDay - 1)));
}

void ScalePlace::turn(const QPoint& global, const QPoint& angle, Qt::KeyboardModifiers modifiers)
{
    if (!m_scale)
        return;
    const QPoint place(m_scale->mapFromGlobal(global).x(), PanRow);
    QWheelEvent event(place, global, QPoint(), angle, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(m_scale, &event);
}

void ScalePlace::drag(const QPoint& global, QEvent::Type type)
{
    if (!m_scale)
        return;
    const QPoint place(m_scale->mapFromGlobal(global).x(), PanRow);
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, place, global, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(m_scale, &event);
}

bool ScalePlace::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_scale)
        return QObject::eventFilter(watched, event);
    const QEvent::Type type = event->type();
    const bool isPart = watched != m_scale->parent();
    if (type == QEvent::MouseMove && isPart)
        follow(static_cast<QWidget*>(watched), *static_cast<QMouseEvent*>(event));
    else if (type == QEvent::Leave && watched == m_scale)
        Q_EMIT left();
    else if (type == QEvent::Move || type == QEvent::Resize || type == QEvent::Show || type == QEvent::Hide)
        QTimer::singleShot(0, this, &ScalePlace::changed);
    return QObject::eventFilter(watched, event);
}

/// The thumb tells its time only after it has got the event.
void ScalePlace::follow(QWidget* watched, const QMouseEvent& event)
{
    const QPoint global = globalOf(event);
    if (!(event.buttons() & Qt::LeftButton)) {
        Q_EMIT pointedAt(secondAt(global.x()), global);
        return;
    }
    if (watched == m_scale)
        return;
    QTimer::singleShot(0, this, [this, global] {
        Q_EMIT draggedTo(m_deck->SelectedTime().msecsSinceStartOfDay() / 1000, global);
    });
}
