#include "help/KeysWindow.h"

#include "common/Words.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QTreeWidget>

namespace {

/// Wide enough for the longest line in most languages.
constexpr QSize UsualSize(700, 500);

/// Without the marks of the keys that open menus.
QString plain(QString text)
{
    const int bracket = text.indexOf("(&");
    if (bracket > 0)
        text.truncate(bracket);
    return text.remove('&').trimmed();
}

void collect(const QList<QAction*>& actions, KeysWindow::Keys& keys)
{
    for (const QAction* action : actions) {
        if (!action->shortcut().isEmpty())
            keys.append({action->shortcut().toString(QKeySequence::NativeText), plain(action->text())});
        if (action->menu())
            collect(action->menu()->actions(), keys);
    }
}

} // namespace

KeysWindow::KeysWindow(QWidget* parent) : QDialog(parent), m_list(new QTreeWidget)
{
    setObjectName("KeysWindow");
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(word("Keys"));
    m_list->setAccessibleName(word("Keys"));
    m_list->setHeaderLabels({word("Key"), word("What it does")});
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_list);
    column->addWidget(buttons);
    resize(UsualSize);
}

void KeysWindow::addKeys(const QString& heading, const Keys& keys)
{
    auto* group = new QTreeWidgetItem(m_list, {heading});
    group->setFirstColumnSpanned(true);
    for (const auto& key : keys)
        new QTreeWidgetItem(group, {key.first, key.second});
    group->setExpanded(true);
}

void KeysWindow::addActions(const QString& heading, const QMenuBar* bar)
{
    Keys keys;
    collect(bar->actions(), keys);
    addKeys(heading, keys);
}

KeysWindow::Keys KeysWindow::playback()
{
    return {
        {word("Space"), word("Play or pause")},
        {"B", word("Play backwards, or forwards again")},
        {word("Left, right"), word("10 s back or on; in a pause one picture")},
        {word("Up, down"), word("Faster or slower")},
        {word("Home, End"), word("First or last recording of the day")},
        {"N, P", word("Next or previous motion or alarm")},
        {"E", word("Export")},
    };
}

KeysWindow::Keys KeysWindow::layoutEditor()
{
    return {
        {word("Arrows"), word("Go from square to square")},
        {word("Shift and arrows"), word("Select cells")},
        {word("Space"), word("Make one cell of the selected ones")},
        {word("Ctrl and arrows"), word("Cut the cell at that side of the square")},
    };
}
