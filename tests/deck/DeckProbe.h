#pragma once

#include "deck/CPaneDeck.h"
#include "panes/CVideoWidget.h"
#include "support/DeckTestCase.h"
#include "support/Mouse.h"

#include <QAbstractButton>

/// The base of the deck's tests. Qt warns of the sheet of the playback toolbar's strip, and of the picture of
/// its view button where no skin is installed.
class DeckTest : public DeckTestCase
{
    const ExpectedWarning m_sheet{"Specified color without alpha value but alpha given"};
    const ExpectedWarning m_picture{"Could not create pixmap from"};
};

/// What a test asks a deck that has no operation for it.
namespace DeckProbe {

inline CVideoWidget* Pane(CPaneDeck& deck, int index)
{
    return deck.findChildren<CVideoWidget*>(QString(), Qt::FindDirectChildrenOnly).value(index);
}

inline QWidget* Label(CPaneDeck& deck, int index)
{
    return static_cast<QWidget*>(deck.GetHWND(index));
}

/// The indexes of the panes that show, such as "4 5 6 7".
inline QString Shown(CPaneDeck& deck)
{
    QStringList shown;
    for (const CVideoWidget* pane : deck.findChildren<CVideoWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (pane->isVisibleTo(&deck))
            shown.append(QString::number(pane->GetWndIndex()));
    }
    return shown.join(' ');
}

inline int Mode(CPaneDeck& deck)
{
    __WND_SHOW_MODE mode = WND_SHOW_SPLIT;
    deck.GetShowMode(mode);
    return mode;
}

/// "0 1 2 ..." from first to last.
inline QString Run(int first, int last)
{
    QStringList run;
    for (int i = first; i <= last; ++i)
        run.append(QString::number(i));
    return run.join(' ');
}

inline QWidget* ToolBar(CPaneDeck& deck)
{
    for (QWidget* child : deck.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->inherits("CMonitorToolBar") || child->inherits("CPlaybackToolBar"))
            return child;
    }
    return nullptr;
}

inline void ClickToolBar(CPaneDeck& deck, const char* name)
{
    auto* button = ToolBar(deck)->findChild<QAbstractButton*>(name);
    Mouse::Click(button, button->rect().center());
}

} // namespace DeckProbe
