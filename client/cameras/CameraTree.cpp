#include "cameras/CameraTree.h"

#include "cameras/CameraList.h"
#include "common/ClientIcons.h"

#include <QHeaderView>

namespace {

constexpr int RecordRole = 33;
constexpr int SubtypeRole = 34;

const CameraRecord* recordOf(const QTreeWidgetItem* item)
{
    return item ? reinterpret_cast<const CameraRecord*>(item->data(0, RecordRole).toLongLong()) : nullptr;
}

} // namespace

CameraTree::CameraTree(const CameraList& cameras, QWidget* parent) : CDeviceTreeWidget(parent)
{
    setObjectName("CameraTree");
    setHeaderHidden(true);
    setIconSize(QSize(16, 16));
    for (int i = 0; i < cameras.count(); ++i) {
        const CameraRecord& camera = cameras.at(i);
        QTreeWidgetItem* group = branch(invisibleRootItem(), 0, camera.group);
        addRow(branch(group, 1, camera.site), camera);
    }
    expandToDepth(0);
    if (topLevelItemCount() > 0 && topLevelItem(0)->childCount() > 0)
        topLevelItem(0)->child(0)->setExpanded(true);
    connect(this, &CameraTree::itemActivated, this, &CameraTree::chooseItem);
}

const CameraRecord* CameraTree::cameraOf(const QTreeWidgetItem* item)
{
    const CameraRecord* record = recordOf(item);
    return record && record->type == 2 ? record : nullptr;
}

void CameraTree::chooseItem(QTreeWidgetItem* item)
{
    if (const CameraRecord* camera = cameraOf(item))
        Q_EMIT cameraChosen(camera);
}

QTreeWidgetItem* CameraTree::branch(QTreeWidgetItem* parent, int type, const QString& name)
{
    for (int i = 0; i < parent->childCount(); ++i) {
        if (parent->child(i)->text(0) == name)
            return parent->child(i);
    }
    m_branches.push_back({type, name, std::nullopt, QString(), QString()});
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
