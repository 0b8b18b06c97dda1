#pragma once

#include <QStringList>

class QWidget;

/// What an operator would see as broken in a window that is shown: texts that have too little room, controls
/// outside of what holds them, and controls that lie over each other. One line for each.
QStringList windowFaults(const QWidget& top);
