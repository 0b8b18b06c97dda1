#include "manager/ManagerDialog.h"

#include "cameras/CameraList.h"
#include "common/Words.h"
#include "manager/CameraEdits.h"
#include "manager/RecordingPage.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QTreeWidget>

#include <algorithm>

namespace {

constexpr QSize UsualSize(760, 440);
/// What a name or an address may take from the other columns by itself.
constexpr int WidestColumn = 260;

QTreeWidgetItem* rowOf(const CameraDescription& camera)
{
    auto* row = new QTreeWidgetItem({camera.name, camera.group, camera.mainUrl,
                                     RecordingPage::nameOf(camera.recording),
                                     camera.isEnabled ? word("On") : word("Off")});
    row->setData(0, Qt::UserRole, camera.id);
    return row;
}

} // namespace

ManagerDialog::ManagerDialog(CameraList* cameras, CameraEdits* edits, QWidget* parent)
    : QDialog(parent), m_cameras(cameras), m_edits(edits), m_table(new QTreeWidget)
{
    setObjectName("ManagerDialog");
    setWindowTitle(word("All cameras"));
    resize(UsualSize);
    m_table->setObjectName("CameraTable");
    m_table->setAccessibleName(word("All cameras"));
    m_table->setRootIsDecorated(false);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setHeaderLabels(
        {word("Name"), word("Group"), word("Address"), word("Recording"), word("State")});
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* column = new QVBoxLayout;
    auto* grid = new QGridLayout(this);
    grid->addWidget(m_table, 0, 0);
    grid->addLayout(column, 0, 1);
    grid->addWidget(close, 1, 0, 1, 2);
    addButtons(column);
    connect(close, &QDialogButtonBox::rejected, this, &ManagerDialog::reject);
    connect(m_table, &QTreeWidget::itemSelectionChanged, this, &ManagerDialog::update);
    connect(m_table, &QTreeWidget::itemActivated, this, &ManagerDialog::edit);
    connect(cameras, &CameraList::sorted, this, &ManagerDialog::fillLater);
    connect(cameras, &CameraList::changed, this, &ManagerDialog::fillLater);
    connect(cameras, &CameraList::rightsChanged, this, &ManagerDialog::update);
    fill();
}

void ManagerDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    fitColumns();
}

void ManagerDialog::fitColumns()
{
    for (int i = 0; i < m_table->columnCount(); ++i) {
        m_table->resizeColumnToContents(i);
        m_table->setColumnWidth(i, qMin(WidestColumn, m_table->columnWidth(i)));
    }
}

void ManagerDialog::addButtons(QVBoxLayout* column)
{
    m_adding = {addButton(column, word("&Add a camera ..."), &ManagerDialog::add),
                addButton(column, word("Add se&veral ..."), &ManagerDialog::addSeveral)};
    column->addSpacing(column->spacing());
    m_edit = addButton(column, word("&Edit ..."), &ManagerDialog::edit);
    m_ofSome = {addButton(column, word("&Group ..."), &ManagerDialog::regroup),
                addButton(column, word("Switch on or o&ff"), &ManagerDialog::switchOver),
                addButton(column, word("&Remove ..."), &ManagerDialog::remove)};
    column->addSpacing(column->spacing());
    m_ofSome += {addButton(column, word("&Up"), &ManagerDialog::moveUp),
                 addButton(column, word("&Down"), &ManagerDialog::moveDown)};
    column->addStretch();
    const auto addKey = [this](int key, void (ManagerDialog::*slot)()) {
        auto* action = new QAction(m_table);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetShortcut);
        m_table->addAction(action);
        connect(action, &QAction::triggered, this, slot);
    };
    addKey(Qt::Key_Insert, &ManagerDialog::add);
    addKey(Qt::Key_F2, &ManagerDialog::edit);
    addKey(Qt::Key_Delete, &ManagerDialog::remove);
}

QPushButton* ManagerDialog::addButton(QVBoxLayout* column, const QString& text, void (ManagerDialog::*slot)())
{
    auto* button = new QPushButton(text);
    button->setAutoDefault(false);
    column->addWidget(button);
    connect(button, &QPushButton::clicked, this, slot);
    return button;
}

QStringList ManagerDialog::chosen() const
{
    QStringList ids;
    for (int i = 0; i < m_table->topLevelItemCount(); ++i) {
        if (m_table->topLevelItem(i)->isSelected())
            ids.append(m_table->topLevelItem(i)->data(0, Qt::UserRole).toString());
    }
    return ids;
}

bool ManagerDialog::mayChangeChosen() const
{
    const QStringList ids = chosen();
    return std::all_of(ids.begin(), ids.end(),
                       [this](const QString& id) { return m_cameras->mayChange(id); });
}

void ManagerDialog::fillLater()
{
    if (!std::exchange(m_isFillPending, true))
        QTimer::singleShot(0, this, &ManagerDialog::fill);
}

void ManagerDialog::fill()
{
    m_isFillPending = false;
    const QStringList ids = chosen();
    const int place = m_table->verticalScrollBar()->value();
    const int before = m_table->topLevelItemCount();
    m_table->clear();
    for (int i = 0; i < m_cameras->count(); ++i) {
        const CameraDescription& camera = m_cameras->at(i).about;
        QTreeWidgetItem* row = rowOf(camera);
        m_table->addTopLevelItem(row);
        row->setSelected(ids.contains(camera.id));
    }
    m_table->verticalScrollBar()->setValue(place);
    // What the user has made of the columns holds until there is something new to see.
    if (m_table->topLevelItemCount() > before)
        fitColumns();
    update();
}

void ManagerDialog::update()
{
    const int count = int(chosen().size());
    const auto allow = [](QPushButton* button, bool hasSense, bool isAllowed) {
        button->setEnabled(hasSense && isAllowed);
        button->setToolTip(isAllowed ? QString() : word("Your role may not change cameras"));
    };
    for (QPushButton* button : qAsConst(m_adding))
        allow(button, true, m_cameras->mayChange());
    allow(m_edit, count == 1, mayChangeChosen());
    for (QPushButton* button : qAsConst(m_ofSome))
        allow(button, count > 0, mayChangeChosen());
}

void ManagerDialog::add()
{
    const CameraRecord* first = m_cameras->byId(chosen().value(0));
    if (m_cameras->mayChange())
        m_edits->add(this, first ? first->about.group : QString());
}

void ManagerDialog::addSeveral()
{
    m_edits->addSeveral(this);
}

void ManagerDialog::edit()
{
    if (mayChangeChosen())
        m_edits->edit(this, chosen().value(0));
}

void ManagerDialog::regroup()
{
    m_edits->regroup(this, chosen());
}

void ManagerDialog::switchOver()
{
    m_edits->switchOver(chosen());
}

void ManagerDialog::remove()
{
    if (mayChangeChosen())
        m_edits->remove(this, chosen());
}

void ManagerDialog::moveUp()
{
    m_edits->move(chosen(), -1);
}

void ManagerDialog::moveDown()
{
    m_edits->move(chosen(), 1);
}
