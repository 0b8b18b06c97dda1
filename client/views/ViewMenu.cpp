#include "views/ViewMenu.h"

#include "common/ClientIcons.h"
#include "common/Words.h"
#include "tabs/LiveTab.h"
#include "views/ViewDialog.h"
#include "views/ViewList.h"

#include <CPaneDeck.h>

#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

namespace {

constexpr int ViewsWithKey = 9;

/// The name as it is, whatever letters it has.
QString plain(const QString& name)
{
    return QString(name).replace('&', "&&");
}

} // namespace

ViewMenu::ViewMenu(QMenu* menu, LiveTab* live, ViewList* views)
    : QObject(menu), m_menu(menu), m_live(live), m_views(views), m_end(menu->addSeparator())
{
    menu->addAction(word("&Save the view"), this, &ViewMenu::save)->setShortcut(Qt::CTRL | Qt::Key_S);
    menu->addAction(word("Save the view &as ..."), this, &ViewMenu::askForName);
    menu->addAction(word("&Manage views ..."), this, &ViewMenu::manage);
    connect(live, &LiveTab::saveAsked, this, &ViewMenu::save);
    connect(views, &ViewList::changed, this, &ViewMenu::fill);
    connect(menu, &QMenu::aboutToShow, this, &ViewMenu::markShown);
    fill();
}

void ViewMenu::fill()
{
    qDeleteAll(m_actions);
    m_actions.clear();
    for (const DeckView& view : m_views->views()) {
        auto* action = new QAction(plain(view.name), m_menu);
        action->setData(view.name);
        action->setCheckable(true);
        if (m_views->isShared(view.name))
            action->setIcon(ClientIcons::site());
        if (m_actions.size() < ViewsWithKey)
            action->setShortcut(Qt::CTRL | Qt::Key(Qt::Key_1 + m_actions.size()));
        connect(
            action, &QAction::triggered, this, [this, name = view.name] { choose(name); },
            Qt::QueuedConnection);
        m_menu->insertAction(m_end, action);
        m_live->deck()->addAction(action);
        m_actions.append(action);
    }
    m_end->setVisible(!m_actions.isEmpty());
}

void ViewMenu::markShown()
{
    for (QAction* action : m_actions)
        action->setChecked(action->data().toString() == m_live->viewName());
}

void ViewMenu::choose(const QString& name)
{
    const DeckView* view = m_views->find(name);
    if (!view)
        return;
    m_live->showView(*view);
    Q_EMIT chosen(name);
    Q_EMIT told(word("view %1").arg(name));
}

void ViewMenu::save()
{
    keep(m_views->find(m_live->viewName()) ? m_live->viewName() : m_views->newName());
}

void ViewMenu::askForName()
{
    auto* dialog = new QInputDialog(m_live->window());
    dialog->setObjectName("ViewName");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(word("Save the view"));
    dialog->setLabelText(word("Name of the view"));
    dialog->setTextValue(m_views->newName());
    connect(dialog, &QInputDialog::textValueSelected, this,
            [this](const QString& name) { saveAs(name.trimmed()); });
    dialog->open();
}

void ViewMenu::saveAs(const QString& name)
{
    if (!m_views->find(name)) {
        keep(name);
        return;
    }
    auto* question = new QMessageBox(QMessageBox::Question, word("Save the view"),
                                     word("There is a view of this name already. Overwrite it?"),
                                     QMessageBox::Yes | QMessageBox::No, m_live->window());
    question->setAttribute(Qt::WA_DeleteOnClose);
    connect(question->button(QMessageBox::Yes), &QPushButton::clicked, this, [this, name] { keep(name); });
    question->open();
}

void ViewMenu::keep(const QString& name)
{
    DeckView view = m_live->view();
    view.name = name;
    QString error;
    if (!m_views->keep(view, &error)) {
        Q_EMIT told(word("the view can't be saved") + ": " + error);
        return;
    }
    m_live->setViewName(name);
    Q_EMIT chosen(name);
    Q_EMIT told(word("view saved"));
}

void ViewMenu::manage()
{
    auto* dialog = new ViewDialog(m_views, m_live);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &ViewDialog::overwriteAsked, this, &ViewMenu::keep);
    connect(dialog, &ViewDialog::showAsked, this, &ViewMenu::choose);
    dialog->open();
}
