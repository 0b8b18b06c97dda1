#include "window/PaneMenu.h"

#include "tabs/DeckTab.h"

#include <CPaneDeck.h>

#include <QMenu>

void offerActivePane(QMenu* menu, std::function<DeckTab*()> tab)
{
    menu->setObjectName("ActivePaneMenu");
    QObject::connect(menu, &QMenu::aboutToShow, menu, [menu, tab = std::move(tab)] {
        menu->clear();
        tab()->fillPaneMenu(menu, tab()->deck()->GetCurrentWnd());
    });
}
