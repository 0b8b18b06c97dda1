#pragma once

#include <QString>

/// Makes the application's own windows look like its decks: palette and style sheet of a style of the
/// installation below `root`, 1 dark or 2 light. Any other number, or a missing file, leaves Qt's own look.
/// Call it before the first widget is made.
void applyClientSkin(const QString& root, int style);

/// The style that the installation's configuration names; 0 if it names none.
int configuredStyle(const QString& root);
