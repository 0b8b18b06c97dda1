#pragma once

#include <QRandomGenerator>

/// A generator whose seed is printed; the environment variable PANEDECK_SEED sets it.
QRandomGenerator SeededGenerator();
