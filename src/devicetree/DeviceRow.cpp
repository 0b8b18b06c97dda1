#include "devicetree/DeviceRow.h"

#include <QTreeWidgetItem>

#include <cstring>

namespace {

constexpr int ChildOfNode = 1;
constexpr int GrandchildOfNode = 2;

int LevelsBelowNode(int nType)
{
    return nType == ChildOfNode || nType == GrandchildOfNode ? nType : 0;
}

} // namespace

std::optional<int> TypeOfRow(const QTreeWidgetItem& item)
{
    constexpr int RecordRole = 33;
    const auto nAddress = static_cast<quintptr>(item.data(0, RecordRole).toLongLong());
    if (nAddress == 0)
        return std::nullopt;
    int nType = 0;
    std::memcpy(&nType, reinterpret_cast<const void*>(nAddress), sizeof nType);
    return nType;
}

QTreeWidgetItem* NodeForRow(const QTreeWidgetItem& dragged, QTreeWidgetItem& target)
{
    const std::optional<int> draggedType = TypeOfRow(dragged);
    const std::optional<int> targetType = TypeOfRow(target);
    if (!draggedType || !targetType || *draggedType == GrandchildOfNode)
        return nullptr;
    QTreeWidgetItem* pNode = &target;
    for (int nLevels = LevelsBelowNode(*targetType); pNode && nLevels > 0; --nLevels)
        pNode = pNode->parent();
    return pNode == &dragged ? nullptr : pNode;
}
