#include "cameras/CameraTree.h"

#include "cameras/CameraList.h"
#include "common/ClientIcons.h"

#include <QHeaderView>

namespace {

constexpr int RecordRole = 33;
constexpr int SubtypeRole = 34;

const CameraRecord* RecordOf(const QTreeWidgetItem* item)
{
    return item ? reinterpret_cast<const CameraRecord*>(item->data(0, RecordRole).toLongLong()) : nullptr;
}

} // namespace

CameraTree::CameraTree(const CameraList& cameras, QWidget* parent) : CDeviceTreeWidget(parent)
{
    setObjectName("CameraTree");
    setHeaderHidden(true);
    setIconSize(QSize(16, 16));
    for (int i = 0; i < cameras.Count(); ++i) {
        const CameraRecord& camera = cameras.At(i);
        QTreeWidgetItem* group = Branch(invisibleRootItem(), 0, camera.group);
        AddRow(Branch(group, 1, camera.site), camera);
    }
    expandToDepth(0);
    if (topLevelItemCount() > 0 && topLevelItem(0)->childCount() > 0)
        topLevelItem(0)->child(0)->setExpanded(true);
    connect(this, SIGNAL(itemActivated(QTreeWidgetItem*,int)), SLOT(slot_itemActivated(QTreeWidgetItem*)));
}

const CameraRecord* CameraTree::CameraOf(const QTreeWidgetItem* item)
{
    const CameraRecord* record = RecordOf(item);
    return record && record->type == 2 ? record : nullptr;
}

void CameraTree::slot_itemActivated(QTreeWidgetItem* item)
{
    if (const CameraRecord* camera = CameraOf(item))
        Q_EMIT cameraChosen(camera);
}

QTreeWidgetItem* CameraTree::Branch(QTreeWidgetItem* parent, int type, const QString& name)
{
    for (int i = 0; i < parent->childCount(); ++i) {
        if (parent->child(i)->text(0) == name)
            return parent->child(i);
    }
    m_deqBranches.push_back({type, name, QString(), QString(), QString()});
    return AddRow(parent, m_deqBranches.back());
}

QTreeWidgetItem* CameraTree::AddRow(QTreeWidgetItem* parent, const CameraRecord& record)
{
    auto* item = new QTreeWidgetItem(parent, {record.name});
    item->setData(0, RecordRole, qlonglong(reinterpret_cast<quintptr>(&record)));
    item->setData(0, SubtypeRole, 0);
    item->setIcon(0, record.type == 2 ? ClientIcons::Camera() : ClientIcons::Site());
    return item;
}
