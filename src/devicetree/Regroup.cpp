#include "devicetree/Regroup.h"

#include "devicetree/DeviceRecord.h"

#include <QTreeWidgetItem>

namespace {

constexpr int CHILD_OF_NODE = 1;
constexpr int GRANDCHILD_OF_NODE = 2;

int LevelsBelowNode(int nType)
{
    return nType == CHILD_OF_NODE || nType == GRANDCHILD_OF_NODE ? nType : 0;
}

} // namespace

QTreeWidgetItem* RegroupNode(const QTreeWidgetItem& dragged, QTreeWidgetItem& target)
{
    const std::optional<int> draggedType = RecordType(dragged);
    const std::optional<int> targetType = RecordType(target);
    if (!draggedType || !targetType || *draggedType == GRANDCHILD_OF_NODE)
        return nullptr;
    QTreeWidgetItem* pNode = &target;
    for (int nLevels = LevelsBelowNode(*targetType); pNode && nLevels > 0; --nLevels)
        pNode = pNode->parent();
    return pNode == &dragged ? nullptr : pNode;
}
