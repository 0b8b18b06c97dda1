#pragma once

#include <QObject>

#include <functional>

class CPaneDeck;
class QAction;
class QActionGroup;
class QMenu;

/// The layouts of a deck in a menu, normal and custom ones, of which the one that is shown is marked, its
/// pages and full screen.
class LayoutMenu : public QObject
{
    Q_OBJECT

public:
    using Deck = std::function<CPaneDeck*()>;

    /// `deck` tells which one the menu works on now.
    LayoutMenu(QMenu* menu, Deck deck);

private:
    void addLayout(QMenu* menu, const QString& text, int number);
    void addStep(const QString& text, const QKeySequence& keys, std::function<void(CPaneDeck*)> step);
    void choose(const QAction* action);
    void markShown();

    QMenu* m_menu;
    Deck m_deck;
    QActionGroup* m_group;
};
