#pragma once

#include <functional>

class DeckTab;
class QMenu;

/// Fills a menu, each time it opens, with what can be done with the active pane of a tab.
void offerActivePane(QMenu* menu, std::function<DeckTab*()> tab);
