#pragma once

/// Lets a screen reader know every pane, from the first call on: its number from 1 and its title as the name,
/// what it does as the description, and whether it is the active one as its selection.
void InstallPaneAccessible();
