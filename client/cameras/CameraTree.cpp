#include "cameras/CameraTree.h"

#include "cameras/CameraList.h"
#include "common/ClientIcons.h"
#include "common/Words.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QPointer>
#include <QScrollBar>
#include <QSet>
#include <QTimer>
#include <QTreeWidgetItemIterator>

namespace {

constexpr int RecordRole = 33;
constexpr int SubtypeRole = 34;

const CameraRecord* recordOf(const QTreeWidgetItem* item)
{
    return item ? reinterpret_cast<const CameraRecord*>(item->data(0, RecordRole).toLongLong()) : nullptr;
}

QString pathOf(const QTreeWidgetItem* item)
{
    const QString& name = recordOf(item)->name;
    return item->parent() ? pathOf(item->parent()) + '/' + name : name;
}

/// The group that a row stands for, or a camera's own.
QString groupOf(const QTreeWidgetItem* item)
{
    const CameraRecord* camera = CameraTree::cameraOf(item);
    return camera ? camera->about.group : pathOf(item);
}

QPoint placeOf(const QDropEvent& event)
{
#if QT_VERSION_MAJOR < 6
    return event.pos();
#else
    return event.position().toPoint();
#endif
}

} // namespace

CameraTree::CameraTree(const CameraList& cameras, QWidget* parent)
    : CDeviceTreeWidget(parent), m_cameras(cameras)
{
    setObjectName("CameraTree");
    setAccessibleName(word("Cameras"));
    setHeaderHidden(true);
    setIconSize(QSize(16, 16));
    fill();
    expandToDepth(0);
    if (topLevelItemCount() > 0 && topLevelItem(0)->childCount() > 0)
        topLevelItem(0)->child(0)->setExpanded(true);
    connect(this, &CameraTree::itemActivated, this, &CameraTree::chooseItem);
    connect(&cameras, &CameraList::added, this, &CameraTree::fillLater);
    connect(&cameras, &CameraList::changed, this, &CameraTree::fillLater);
    connect(&cameras, &CameraList::removed, this, &CameraTree::fillLater);
    connect(&cameras, &CameraList::sorted, this, &CameraTree::fillLater);
}

void CameraTree::setSites(const QVector<SiteState>& sites)
{
    if (m_sites == sites)
        return;
    m_sites = sites;
    fillLater();
}

void CameraTree::fill()
{
    for (const SiteState& site : qAsConst(m_sites))
        addSite(site);
    for (int i = 0; i < m_cameras.count(); ++i)
        addCamera(m_cameras.at(i));
}

/// Of many cameras that change at once each has its signal.
void CameraTree::fillLater()
{
    if (!std::exchange(m_isFillPending, true))
        QTimer::singleShot(0, this, &CameraTree::fillAgain);
}

void CameraTree::fillAgain()
{
    m_isFillPending = false;
    QSet<QString> closed;
    for (QTreeWidgetItemIterator it(this, QTreeWidgetItemIterator::HasChildren); *it; ++it) {
        if (!(*it)->isExpanded())
            closed.insert(pathOf(*it));
    }
    const CameraRecord* current = cameraOf(currentItem());
    const int place = verticalScrollBar()->value();
    clear();
    fill();
    for (QTreeWidgetItemIterator it(this); *it; ++it) {
        (*it)->setExpanded(!closed.contains(pathOf(*it)));
        if (current && recordOf(*it) == current)
            setCurrentItem(*it);
    }
    verticalScrollBar()->setValue(place);
}

const CameraRecord* CameraTree::cameraOf(const QTreeWidgetItem* item)
{
    const CameraRecord* record = recordOf(item);
    return record && record->type == 2 ? record : nullptr;
}

/// The tree itself regroups no rows of cameras.
void CameraTree::dropEvent(QDropEvent* event)
{
    const CameraRecord* camera = event->source() == this ? cameraOf(currentItem()) : nullptr;
    const QTreeWidgetItem* target = itemAt(placeOf(*event));
    const QString group = camera && target ? groupOf(target) : QString();
    const bool isMoved = camera && target && group != camera->about.group;
    const QPointer<CameraTree> alive(this);
    const QString id = isMoved ? camera->about.id : QString();
    CDeviceTreeWidget::dropEvent(event);
    if (alive && isMoved)
        Q_EMIT dropped(id, group);
}

void CameraTree::chooseItem(QTreeWidgetItem* item)
{
    if (const CameraRecord* camera = cameraOf(item))
        Q_EMIT cameraChosen(camera);
}

void CameraTree::addCamera(const CameraRecord& camera)
{
    QTreeWidgetItem* parent = invisibleRootItem();
    if (!camera.group.isEmpty())
        parent = branch(parent, 0, camera.group);
    const QStringList rest = camera.site.split('/');
    for (const QString& part : rest) {
        if (!part.trimmed().isEmpty())
            parent = branch(parent, 1, part.trimmed());
    }
    QTreeWidgetItem* row = addRow(parent, camera);
    if (!camera.about.isEnabled)
        row->setForeground(0, palette().color(QPalette::Disabled, QPalette::Text));
}

void CameraTree::addSite(const SiteState& site)
{
    QTreeWidgetItem* row = branch(invisibleRootItem(), 0, site.name);
    if (site.away.isEmpty())
        return;
    row->setText(0, word("%1 (no answer)").arg(site.name));
    row->setToolTip(0, site.away);
}

QTreeWidgetItem* CameraTree::branch(QTreeWidgetItem* parent, int type, const QString& name)
{
    for (int i = 0; i < parent->childCount(); ++i) {
        if (recordOf(parent->child(i))->name == name && !cameraOf(parent->child(i)))
            return parent->child(i);
    }
    m_branches.push_back({type, name, std::nullopt, QString(), QString(), {}});
    return addRow(parent, m_branches.back());
}

QTreeWidgetItem* CameraTree::addRow(QTreeWidgetItem* parent, const CameraRecord& record)
{
    auto* item = new QTreeWidgetItem(parent, {record.name});
    item->setData(0, RecordRole, qlonglong(reinterpret_cast<quintptr>(&record)));
    item->setData(0, SubtypeRole, 0);
    item->setIcon(0, record.type == 2 ? ClientIcons::camera() : ClientIcons::site());
    return item;
}
