#include "deck/DeckFullScreen.h"

#include "deck/CPaneDeck.h"
#include "deck/DeckPages.h"
#include "panes/CVideoWidget.h"

#include <QPointer>

#include <utility>

void DeckFullScreen::TellLater(CPaneDeck* deck, bool full)
{
    QMetaObject::invokeMethod(deck, "sig_FullScreenChanged", Qt::QueuedConnection, Q_ARG(bool, full));
}

void DeckFullScreen::Enter(CPaneDeck* deck, const QRect& screen)
{
    const bool wasFull = std::exchange(deck->m_nFullScreen, 1) != 0;
    const QPointer<CPaneDeck> alive(deck);
    Q_EMIT deck->sig_OnStateChanged(Qt::WindowFullScreen);
    if (!alive)
        return;
    deck->setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    deck->setGeometry(screen);
    deck->show();
    if (alive && !wasFull)
        TellLater(deck, true);
}

void DeckFullScreen::Leave(CPaneDeck* deck)
{
    const bool wasFull = std::exchange(deck->m_nFullScreen, 0) != 0;
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
    if (alive && wasFull)
        TellLater(deck, false);
}
