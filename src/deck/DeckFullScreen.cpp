#include "deck/DeckFullScreen.h"

#include "deck/CPaneDeck.h"
#include "deck/DeckPages.h"
#include "panes/CVideoWidget.h"

#include <QPointer>

void DeckFullScreen::Enter(CPaneDeck* deck, const QRect& screen)
{
    deck->m_nFullScreen = 1;
    const QPointer<CPaneDeck> alive(deck);
    Q_EMIT deck->sig_OnStateChanged(Qt::WindowFullScreen);
    if (!alive)
        return;
    deck->setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    deck->setGeometry(screen);
    deck->show();
}

void DeckFullScreen::Leave(CPaneDeck* deck)
{
    deck->m_nFullScreen = 0;
    deck->setWindowFlags(Qt::SubWindow);
    const QPointer<CPaneDeck> alive(deck);
    Q_EMIT deck->sig_OnStateChanged(Qt::WindowNoState);
    if (!alive)
        return;
    if (CVideoWidget* pane = deck->GetVideoWidget(deck->m_nMouseWnd)) {
        DeckPages::Split(deck);
        deck->m_nMouseWnd = -1;
        pane->setMousMsg(false);
    }
    deck->show();
}
