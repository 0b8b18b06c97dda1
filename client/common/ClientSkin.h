#pragma once

/// Makes the application's own windows look like its decks: palette and style sheet of a style of the
/// installation, 1 dark or 2 light. Any other number, or a missing file, leaves Qt's own look. Call it before
/// the first widget is made.
void applyClientSkin(int style);

/// The style that the installation's configuration names; 0 if it names none.
int configuredStyle();
