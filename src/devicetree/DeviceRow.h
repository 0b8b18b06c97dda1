#pragma once

#include <optional>

class QTreeWidgetItem;

/// The type of a device row: the first int of the application's record, whose address the row holds at column
/// 0, role 33. Nothing if the row has no record.
std::optional<int> TypeOfRow(const QTreeWidgetItem& item);

/// The node that takes a row dropped on the target: the target itself, or one or two levels above it by its
/// type. Null if the row must not be regrouped there.
QTreeWidgetItem* NodeForRow(const QTreeWidgetItem& dragged, QTreeWidgetItem& target);
