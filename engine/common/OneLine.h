#pragma once

#include <QString>

/// A text as one line of a log: what would break it, such as a line feed in a camera's name, is a space.
QString oneLine(const QString& text);
