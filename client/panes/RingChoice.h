#pragma once

#include <QVector>

/// The panes whose last minute is kept. Keeping it means encoding for a camera that gives pictures only, so a
/// page of more than four playing panes keeps the minute of the active one alone.
QVector<int> panesWithRing(const QVector<int>& playing, int active);
