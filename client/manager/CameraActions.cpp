#include "manager/CameraActions.h"

#include "cameras/CameraList.h"
#include "cameras/CameraTree.h"
#include "common/Words.h"
#include "manager/CameraEdits.h"
#include "manager/FindCamerasDialog.h"
#include "manager/ManagerDialog.h"

#include <QAction>
#include <QInputDialog>
#include <QMenu>

CameraActions::CameraActions(CameraList* cameras, CameraTree* tree)
    : QObject(tree), m_cameras(cameras), m_tree(tree), m_edits(new CameraEdits(cameras, this)),
      m_manage(make(word("All &cameras ..."), QKeySequence(), &CameraActions::manage)),
      m_find(make(word("&Find on the network ..."), QKeySequence(), &CameraActions::find)),
      m_add(make(word("&Add a camera ..."), Qt::Key_Insert, &CameraActions::add)),
      m_several(make(word("Add se&veral ..."), QKeySequence(), &CameraActions::addSeveral)),
      m_edit(make(word("&Edit ..."), Qt::Key_F2, &CameraActions::edit)),
      m_remove(make(word("&Remove ..."), Qt::Key_Delete, &CameraActions::remove)),
      m_switch(make(word("Switch o&ff"), QKeySequence(), &CameraActions::switchOver)),
      m_sort(make(word("&Sort by name"), QKeySequence(), &CameraActions::sortByName)),
      m_export(make(word("E&xport ..."), QKeySequence(), &CameraActions::exportAll))
{
    connect(tree, &CameraTree::rightClicked, this, &CameraActions::showMenu);
    connect(tree, &CameraTree::sig_RclickAddGroup, this, &CameraActions::showMenu);
    connect(tree, &CameraTree::currentItemChanged, this, &CameraActions::update);
    connect(tree, &CameraTree::dropped, this, &CameraActions::takeDrop, Qt::QueuedConnection);
    connect(cameras, &CameraList::changed, this, &CameraActions::update);
    connect(cameras, &CameraList::rightsChanged, this, &CameraActions::update);
    connect(m_edits, &CameraEdits::failed, this, &CameraActions::failed);
    update();
}

void CameraActions::find()
{
    auto* dialog = new FindCamerasDialog(m_cameras, m_tree->window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

QAction* CameraActions::make(const QString& text, const QKeySequence& keys, void (CameraActions::*slot)())
{
    auto* action = new QAction(text, this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    m_tree->addAction(action);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void CameraActions::fill(QMenu* menu) const
{
    menu->setToolTipsVisible(!m_cameras->mayChange());
    connect(m_cameras, &CameraList::rightsChanged, menu,
            [this, menu] { menu->setToolTipsVisible(!m_cameras->mayChange()); });
    menu->addActions({m_find, m_add, m_several});
    menu->addSeparator();
    menu->addActions({m_edit, m_switch, m_remove});
    menu->addSeparator();
    menu->addActions({m_manage, m_sort, m_export});
}

void CameraActions::showMenu()
{
    auto* menu = new QMenu(m_tree);
    menu->setObjectName("CameraMenu");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fill(menu);
    menu->popup(QCursor::pos());
}

QStringList CameraActions::chosen() const
{
    QStringList ids;
    QVector<const QTreeWidgetItem*> rows{m_tree->currentItem()};
    while (!rows.isEmpty()) {
        const QTreeWidgetItem* row = rows.takeFirst();
        if (const CameraRecord* camera = CameraTree::cameraOf(row))
            ids.append(camera->about.id);
        for (int i = 0; row && i < row->childCount(); ++i)
            rows.append(row->child(i));
    }
    return ids;
}

/// What the role forbids says so; all else is as it always was.
void CameraActions::allow(QAction* action, bool hasSense, bool isAllowed)
{
    action->setEnabled(hasSense && isAllowed);
    action->setToolTip(hasSense && !isAllowed ? word("Your role may not change cameras") : QString());
}

void CameraActions::update()
{
    const QStringList ids = chosen();
    const CameraRecord* first = ids.isEmpty() ? nullptr : m_cameras->byId(ids.first());
    const bool mayAdd = m_cameras->mayChange();
    const bool mayChange = first && m_cameras->mayChange(first->about.id);
    for (QAction* action : {m_find, m_add, m_several, m_sort})
        allow(action, true, mayAdd);
    for (QAction* action : {m_edit, m_remove, m_switch})
        allow(action, first, mayChange);
    m_switch->setText(first && !first->about.isEnabled ? word("Switch &on") : word("Switch o&ff"));
}

void CameraActions::add()
{
    const CameraRecord* first = m_cameras->byId(chosen().value(0));
    m_edits->add(m_tree->window(), first ? first->about.group : QString());
}

void CameraActions::addSeveral()
{
    m_edits->addSeveral(m_tree->window());
}

void CameraActions::addSynthetic()
{
    m_edits->addSynthetic();
}

void CameraActions::edit()
{
    const QTreeWidgetItem* row = m_tree->currentItem();
    const QStringList ids = chosen();
    if (CameraTree::cameraOf(row)) {
        m_edits->edit(m_tree->window(), ids.first());
        return;
    }
    int level = 0;
    for (const QTreeWidgetItem* one = row; one && one->parent(); one = one->parent())
        ++level;
    bool isGiven = false;
    const QString name = ids.isEmpty()
                             ? QString()
                             : QInputDialog::getText(m_tree->window(), word("Rename the group"), word("Name"),
                                                     QLineEdit::Normal, row->text(0), &isGiven);
    if (isGiven)
        m_edits->renameGroup(ids, level, name);
}

/// Said aloud, as a drag may end where it was not meant to.
void CameraActions::takeDrop(const QString& id, const QString& group)
{
    const CameraRecord* camera = m_cameras->byId(id);
    if (!camera || !m_cameras->mayChange(id))
        return;
    m_edits->setGroup({id}, group);
    if (camera->about.group == group)
        Q_EMIT told(group.isEmpty() ? word("%1 is in no group now").arg(camera->name)
                                    : word("%1 is now in %2").arg(camera->name, group));
}

void CameraActions::remove()
{
    m_edits->remove(m_tree->window(), chosen());
}

void CameraActions::switchOver()
{
    m_edits->switchOver(chosen());
}

void CameraActions::sortByName()
{
    m_edits->sortByName();
}

void CameraActions::exportAll()
{
    m_edits->exportAll(m_tree->window());
}

void CameraActions::manage()
{
    auto* dialog = new ManagerDialog(m_cameras, m_edits, m_tree->window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}
