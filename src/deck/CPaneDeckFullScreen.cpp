#include "deck/CPaneDeck.h"

#include "deck/DeckFullScreen.h"
#include "deck/DeckPages.h"
#include "panes/CVideoTitleWidget.h"
#include "panes/CVideoWidget.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QScreen>

namespace {

QRect ScreenUnderCursor()
{
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry() : QRect();
}

} // namespace

void CPaneDeck::setMousMsg(int nWndIndex, bool bMouseMsg)
{
    const QPointer<CVideoWidget> pane(GetVideoWidget(nWndIndex));
    if (!pane)
        return;
    const bool wasFull = IsFull();
    if (bMouseMsg) {
        DeckPages::Enlarge(this, pane);
        slot_wndfullScreen();
        if (!pane)
            return;
        m_nMouseWnd = nWndIndex;
    } else {
        m_nFullScreen = 0;
        setWindowFlags(Qt::SubWindow);
        // As showNormal() does, but a receiver of the state change may have deleted the deck in between.
        setWindowState(windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen));
        if (!pane)
            return;
        show();
        DeckPages::Split(this);
        m_nMouseWnd = -1;
    }
    pane->setMousMsg(bMouseMsg);
    if (pane && wasFull && !bMouseMsg)
        DeckFullScreen::TellLater(this, false);
}

bool CPaneDeck::IsFull()
{
    return m_nFullScreen != 0;
}

bool CPaneDeck::mousMsg(int nWndIndex)
{
    CVideoWidget* pane = GetVideoWidget(nWndIndex);
    return pane && pane->mousMsg();
}

void CPaneDeck::ChangeFull(bool bFull)
{
    m_pTitle->hide();
    if (bFull)
        DeckFullScreen::Enter(this, ScreenUnderCursor());
    else
        DeckFullScreen::Leave(this);
}

void CPaneDeck::slot_wndfullScreen()
{
    ChangeFull(true);
}

void CPaneDeck::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        ChangeFull(false);
}
