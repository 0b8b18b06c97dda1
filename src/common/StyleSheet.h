#pragma once

#include <QString>

/// The text of a style sheet file with every ".*?" in it replaced by a directory of pictures; empty if the
/// file can't be opened.
QString LoadStyleSheet(const QString& path, const QString& resourceDir);
