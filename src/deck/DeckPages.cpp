#include "deck/DeckPages.h"

#include "deck/CPaneDeck.h"
#include "panes/CVideoWidget.h"

#include <QPointer>

QList<CVideoWidget*> DeckPages::Page(const CPaneDeck& deck)
{
    const int panes = deck.m_nPageWnds;
    return panes > 0 ? deck.m_listWnd.mid(deck.m_nPage * panes, panes) : QList<CVideoWidget*>();
}

void DeckPages::HidePage(const CPaneDeck& deck)
{
    for (CVideoWidget* pane : Page(deck))
        pane->setVisible(false);
}

void DeckPages::SelectLayout(CPaneDeck* deck, int type, int no, int panes, int activeBelow)
{
    HidePage(*deck);
    deck->m_nPage = 0;
    deck->m_nLayout[0] = type;
    deck->m_nLayout[1] = no;
    deck->m_nPageWnds = panes;
    const QPointer<CPaneDeck> alive(deck);
    if (deck->m_nActiveWnd == -1 || deck->m_nActiveWnd >= activeBelow)
        deck->slot_setActiveWnd(0);
    if (!alive)
        return;
    // A receiver may have selected another layout meanwhile, so the page's size is read anew.
    deck->m_eShowMode = deck->m_nPageWnds == 1 ? WND_SHOW_SINGLE : WND_SHOW_SPLIT;
    Q_EMIT deck->sig_wndNumberChanged(deck->m_nPageWnds);
    if (alive)
        deck->updatePages();
}

void DeckPages::GoToPage(CPaneDeck* deck, int page)
{
    HidePage(*deck);
    deck->m_nPage = page;
    if (deck->m_nPageWnds != 1)
        deck->m_eShowMode = WND_SHOW_SPLIT;
    const QPointer<CPaneDeck> alive(deck);
    Q_EMIT deck->sig_SwitchVideo(page, deck->m_nPageWnds, deck->m_nPageType);
    if (alive)
        deck->updatePages();
}

void DeckPages::Enlarge(CPaneDeck* deck, CVideoWidget* pane)
{
    HidePage(*deck);
    pane->setGeometry(deck->m_disPlayRect->geometry());
    pane->setVisible(true);
    deck->m_eShowMode = WND_SHOW_ENLARGED;
}

void DeckPages::Split(CPaneDeck* deck)
{
    deck->m_eShowMode = WND_SHOW_SPLIT;
    deck->updatePages();
}
