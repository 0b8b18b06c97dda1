#pragma once

#include "panes/QMyLabel.h"
#include "panes/QSubWidget.h"
#include "support/Mouse.h"
#include "support/SignalLog.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QTimerEvent>

#include <functional>

/// Stands where a pane stands: the surface connects itself to its parent.
class Pane : public QFrame
{
    Q_OBJECT

Q_SIGNALS:
    void sig_DragEvent(QTreeWidgetItem* pItem, int nWndIndex);
    void doubleClicked(int nFirst, int nSecond);

private Q_SLOTS:
    void slot_dbVideoWidget(int nFirst, int nSecond) { Q_EMIT doubleClicked(nFirst, nSecond); }
};

/// A surface of the index 7, 202 by 102, with its label of 200 by 100.
struct Stage
{
    explicit Stage(const QSize& size = QSize(202, 102))
        : pane(new Pane), surface(new QSubWidget(pane, 7)), label(surface->GetLabel())
    {
        Resize(size);
        pane->show();
        log.WatchAll(surface);
    }

    ~Stage() { delete pane; }

    void Resize(const QSize& size)
    {
        pane->resize(size);
        surface->resize(size);
    }

    /// The ids of the surface's running timers of a period.
    QList<int> Timers(int period) const
    {
        QList<int> ids;
        for (const auto& timer : QAbstractEventDispatcher::instance()->registeredTimers(surface)) {
            if (timer.interval == period)
                ids.append(timer.timerId);
        }
        return ids;
    }

    void Tick(int period) const
    {
        for (const int id : Timers(period)) {
            QTimerEvent event(id);
            QApplication::sendEvent(surface, &event);
        }
    }

    /// The window's own events come by the event loop.
    void LeaveScreen() const
    {
        QCoreApplication::processEvents();
        pane->hide();
        QCoreApplication::processEvents();
    }

    /// For a moment the pane is disabled (0), its window blocked by a dialog (1), or off the screen (2), a
    /// menu is open (3), or another window is blocked by a dialog (4).
    void TakeInputAway(int way)
    {
        QWidget other;
        other.setVisible(way == 4);
        QDialog dialog(way == 4 ? &other : nullptr);
        dialog.setWindowModality(way == 4 ? Qt::WindowModal : Qt::ApplicationModal);
        dialog.setVisible(way == 1 || way == 4);
        QMenu menu;
        menu.setVisible(way == 3);
        pane->setEnabled(way != 0);
        if (way == 2)
            LeaveScreen();
        QCoreApplication::sendPostedEvents(surface, QEvent::MetaCall);
        if (!pane)
            return;
        pane->setEnabled(true);
        pane->show();
    }

    /// The second press of a double click, which is held.
    void SecondPress(const QPoint& pos) const
    {
        QMouseEvent event(QEvent::MouseButtonDblClick, pos, label->mapToGlobal(pos), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(label, &event);
    }

    /// A dialog blocks the window inside a signal, the first being number 1.
    void OpenDialogAt(int number)
    {
        log.onSignal = [this, number, before = log.onSignal](const QString& entry) {
            if (before)
                before(entry);
            if (surface && log.Entries().size() == number)
                TakeInputAway(1);
        };
    }

    /// Plays steps such as "M10,20 P10,20", until the surface dies.
    void Play(const QString& script);

    QPointer<Pane> pane;
    QPointer<QSubWidget> surface;
    QMyLabel* label;
    SignalLog log;
};

inline void Stage::Play(const QString& script)
{
    using Pt = const QPoint&;
    const QHash<char, std::function<void(Pt)>> steps = {
        {'E', [this](Pt) { Mouse::Enter(label); }},
        {'P', [this](Pt pt) { Mouse::Press(label, pt); }},
        {'R', [this](Pt pt) { Mouse::Release(label, pt); }},
        {'M', [this](Pt pt) { Mouse::Move(label, pt); }},
        {'p', [this](Pt pt) { Mouse::Press(label, pt, Qt::RightButton); }},
        {'r', [this](Pt pt) { Mouse::Release(label, pt, Qt::RightButton); }},
        {'D', [this](Pt pt) { Mouse::DoubleClick(label, pt); }},
        {'d', [this](Pt pt) { SecondPress(pt); }},
        {'S', [this](Pt pt) { Mouse::Press(surface, pt); }},
        {'W', [this](Pt pt) { Mouse::Wheel(label, QPoint(5, 5), pt.x()); }},
        {'Z', [this](Pt pt) { surface->SetCursorZone(pt.x()); }},
        {'F', [this](Pt pt) { surface->SetFunctionMode(pt.x()); }},
        {'B', [this](Pt pt) { surface->SetMouseMsg(pt.x() != 0); }},
        {'X', [this](Pt) { surface->ResetSurface(); }},
        {'G', [this](Pt pt) { Resize(QSize(pt.x(), pt.y())); }},
        {'A', [this](Pt pt) { surface->SetScale(WndScase(pt.x())); }},
        {'T', [this](Pt pt) { Tick(pt.x()); }},
        {'L', [this](Pt pt) { TakeInputAway(pt.x()); }},
        {'N', [this](Pt pt) { OpenDialogAt(pt.x()); }},
    };
    for (const QString& step : script.split(' ')) {
        const QStringList numbers = step.mid(1).split(',');
        if (surface)
            steps[step.at(0).toLatin1()](QPoint(numbers.value(0).toInt(), numbers.value(1).toInt()));
    }
}
