#pragma once

#include <QEvent>
#include <QObject>

/// Counts the paints of the object whose event filter it is.
struct PaintCounter : QObject
{
    bool eventFilter(QObject*, QEvent* event) override
    {
        paints += event->type() == QEvent::Paint;
        return false;
    }
    int paints = 0;
};
