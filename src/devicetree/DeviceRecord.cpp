#include "devicetree/DeviceRecord.h"

#include <QTreeWidgetItem>

#include <cstring>

std::optional<int> RecordType(const QTreeWidgetItem& item)
{
    constexpr int nRecordRole = 33;
    const auto nAddress = static_cast<quintptr>(item.data(0, nRecordRole).toLongLong());
    if (nAddress == 0)
        return std::nullopt;
    int nType = 0;
    std::memcpy(&nType, reinterpret_cast<const void*>(nAddress), sizeof nType);
    return nType;
}
