#pragma once

#include <QString>

/// The text of a style sheet file of the installation, such as "/liveviewsheet.qss", with every ".*?" in it
/// replaced by the style's resource directory; empty if the file can't be opened.
QString LoadStyleSheet(const QString& fileName);
