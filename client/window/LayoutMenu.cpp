#include "window/LayoutMenu.h"

#include "common/Words.h"
#include "views/DeckView.h"

#include <CPaneDeck.h>

#include <QActionGroup>
#include <QMenu>

#include <iterator>

namespace {

constexpr auto& NormalLayouts = DeckView::NormalLayouts;
constexpr int Layouts = int(std::size(NormalLayouts));
/// Actions stand for normal layouts by their number, and for custom ones by it and this.
constexpr int Custom = 100;

QString layoutName(int count)
{
    return count == 1 ? word("One pane") : word("%n panes").replace("%n", QString::number(count));
}

} // namespace

LayoutMenu::LayoutMenu(QMenu* menu, Deck deck)
    : QObject(menu), m_menu(menu), m_deck(std::move(deck)), m_group(new QActionGroup(this))
{
    for (int i = 0; i < Layouts; ++i)
        addLayout(menu, layoutName(NormalLayouts[i]), i);
    QMenu* custom = menu->addMenu(word("&Custom layouts"));
    for (int i = 0; i < Layouts; ++i)
        addLayout(custom, word("Custom layout %1").arg(i + 1), Custom + i);
    addStep(word("&Edit custom layouts..."), QKeySequence(), [](CPaneDeck* deck) { deck->EditLayouts(); });
    menu->addSeparator();
    addStep(word("&Previous page"), Qt::CTRL | Qt::Key_PageUp, [](CPaneDeck* deck) { deck->OnPreviePage(); });
    addStep(word("&Next page"), Qt::CTRL | Qt::Key_PageDown, [](CPaneDeck* deck) { deck->OnNextPage(); });
    addStep(word("&Full screen"), Qt::Key_F11, [](CPaneDeck* deck) { deck->ChangeFull(!deck->isWindow()); });
    connect(m_group, &QActionGroup::triggered, this, &LayoutMenu::choose);
    connect(menu, &QMenu::aboutToShow, this, &LayoutMenu::markShown);
}

void LayoutMenu::addLayout(QMenu* menu, const QString& text, int number)
{
    QAction* action = menu->addAction(text);
    action->setData(number);
    action->setCheckable(true);
    m_group->addAction(action);
}

void LayoutMenu::addStep(const QString& text, const QKeySequence& keys, std::function<void(CPaneDeck*)> step)
{
    QAction* action = m_menu->addAction(text);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [this, step = std::move(step)] { step(m_deck()); });
}

void LayoutMenu::choose(const QAction* action)
{
    const int number = action->data().toInt();
    if (number < Custom)
        m_deck()->SetShowWndNo(NormalLayouts[number]);
    else
        m_deck()->slot_changePageNo(1, number - Custom);
}

void LayoutMenu::markShown()
{
    int type = 0;
    int layout = 0;
    m_deck()->GetLayout(type, layout);
    for (QAction* action : m_group->actions())
        action->setChecked(action->data().toInt() == (type == 0 ? layout : Custom + layout));
}
