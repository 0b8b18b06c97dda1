#include "manager/CameraActions.h"

#include "cameras/CameraList.h"
#include "cameras/CameraTree.h"
#include "cameras/PrivateFile.h"
#include "common/EngineText.h"
#include "common/Words.h"
#include "manager/CameraDialog.h"
#include "manager/FindCamerasDialog.h"
#include "manager/SeveralDialog.h"

#include <QAction>
#include <QCheckBox>
#include <QCollator>
#include <QFileDialog>
#include <QGridLayout>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int SyntheticCameras = 16;

} // namespace

CameraActions::CameraActions(CameraList* cameras, CameraTree* tree)
    : QObject(tree), m_cameras(cameras), m_tree(tree),
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
    connect(cameras, &CameraList::changed, this, &CameraActions::update);
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
    menu->addActions({m_find, m_add, m_several});
    menu->addSeparator();
    menu->addActions({m_edit, m_switch, m_remove});
    menu->addSeparator();
    menu->addActions({m_sort, m_export});
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

void CameraActions::update()
{
    const QStringList ids = chosen();
    const CameraRecord* first = ids.isEmpty() ? nullptr : m_cameras->byId(ids.first());
    m_edit->setEnabled(first);
    m_remove->setEnabled(first);
    m_switch->setEnabled(first);
    m_switch->setText(first && !first->about.isEnabled ? word("Switch &on") : word("Switch o&ff"));
}

void CameraActions::add()
{
    CameraDescription about;
    about.id = newCameraId();
    const QStringList ids = chosen();
    if (!ids.isEmpty())
        about.group = m_cameras->byId(ids.first())->about.group;
    auto* dialog = new CameraDialog(m_cameras, about, m_tree->window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void CameraActions::addSynthetic()
{
    change(m_cameras->descriptions() + CameraList::syntheticCameras(SyntheticCameras));
}

void CameraActions::addSeveral()
{
    auto* dialog = new SeveralDialog(m_cameras, m_tree->window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

/// Passwords are written if that is ticked, and then for the file's owner alone.
void CameraActions::exportAll()
{
    auto* dialog = new QFileDialog(m_tree->window(), word("Export the cameras"));
    auto* passwords = new QCheckBox(word("With &passwords, readable by everybody who gets the file"), dialog);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilter("CSV (*.csv)");
    dialog->setDefaultSuffix("csv");
    dialog->selectFile("cameras.csv");
    if (auto* grid = qobject_cast<QGridLayout*>(dialog->layout()))
        grid->addWidget(passwords, grid->rowCount(), 0, 1, grid->columnCount());
    connect(dialog, &QFileDialog::fileSelected, this,
            [this, passwords](const QString& path) { writeTable(path, passwords->isChecked()); });
    dialog->open();
}

void CameraActions::writeTable(const QString& path, bool withPasswords)
{
    QHash<QString, QString> passwords;
    const QVector<CameraDescription> cameras = m_cameras->descriptions();
    for (const CameraDescription& camera : cameras) {
        if (withPasswords)
            passwords.insert(camera.id, m_cameras->passwordOf(camera.id));
    }
    QString error;
    if (!writePrivateFile(path, CameraTable::write(cameras, passwords).toUtf8(), &error))
        Q_EMIT failed(engineText(error));
}

void CameraActions::edit()
{
    const CameraRecord* camera = CameraTree::cameraOf(m_tree->currentItem());
    if (!camera) {
        renameGroup(m_tree->currentItem());
        return;
    }
    auto* dialog = new CameraDialog(m_cameras, camera->about, m_tree->window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void CameraActions::renameGroup(QTreeWidgetItem* row)
{
    const QStringList ids = chosen();
    if (!row || ids.isEmpty())
        return;
    const int level = row->parent() ? 1 : 0;
    bool isGiven = false;
    const QString name = QInputDialog::getText(m_tree->window(), word("Rename the group"), word("Name"),
                                               QLineEdit::Normal, row->text(0), &isGiven);
    if (!isGiven)
        return;
    QVector<CameraDescription> cameras = m_cameras->descriptions();
    for (CameraDescription& camera : cameras) {
        if (!ids.contains(camera.id))
            continue;
        const QString rest = level == 0 ? camera.group.section('/', 1) : QString();
        const QString start = level == 0 ? QString() : camera.group.section('/', 0, 0) + '/';
        camera.group = start + name.simplified() + (rest.isEmpty() ? rest : '/' + rest);
    }
    change(cameras);
}

void CameraActions::remove()
{
    const QStringList ids = chosen();
    if (ids.isEmpty())
        return;
    const QString question =
        ids.size() == 1 ? word("Remove %1? Its recordings stay.").arg(m_cameras->byId(ids.first())->name)
                        : word("Remove %1 cameras? Their recordings stay.").arg(ids.size());
    auto* box = new QMessageBox(QMessageBox::Question, word("Remove"), question,
                                QMessageBox::Yes | QMessageBox::No, m_tree->window());
    box->setObjectName("RemoveCameras");
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setDefaultButton(QMessageBox::No);
    connect(box->button(QMessageBox::Yes), &QAbstractButton::clicked, this, [this, ids] {
        QVector<CameraDescription> cameras = m_cameras->descriptions();
        const auto isChosen = [&ids](const CameraDescription& camera) { return ids.contains(camera.id); };
        cameras.erase(std::remove_if(cameras.begin(), cameras.end(), isChosen), cameras.end());
        change(cameras);
    });
    box->open();
}

void CameraActions::switchOver()
{
    const QStringList ids = chosen();
    if (ids.isEmpty())
        return;
    const bool isOn = !m_cameras->byId(ids.first())->about.isEnabled;
    QVector<CameraDescription> cameras = m_cameras->descriptions();
    for (CameraDescription& camera : cameras) {
        if (ids.contains(camera.id))
            camera.isEnabled = isOn;
    }
    change(cameras);
}

void CameraActions::sortByName()
{
    QCollator order;
    order.setNumericMode(true);
    QVector<CameraDescription> cameras = m_cameras->descriptions();
    const auto isBefore = [&order](const CameraDescription& one, const CameraDescription& other) {
        const int groups = order.compare(one.group, other.group);
        return groups != 0 ? groups < 0 : order.compare(one.name, other.name) < 0;
    };
    std::stable_sort(cameras.begin(), cameras.end(), isBefore);
    change(cameras);
}

void CameraActions::change(const QVector<CameraDescription>& cameras)
{
    QString error;
    if (!m_cameras->setDescriptions(cameras, &error))
        Q_EMIT failed(engineText(error));
}
