#pragma once

#include <optional>

class QTreeWidgetItem;

/// The type of a device row: the first int of the application's record, whose address the row holds at column
/// 0, role 33. Nothing if the row has no record.
std::optional<int> RecordType(const QTreeWidgetItem& item);
