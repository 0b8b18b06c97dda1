#pragma once

class QTreeWidgetItem;

/// The node that takes a row dropped on the target: the target itself, or one or two levels above it by its
/// type. Null if the row must not be regrouped there.
QTreeWidgetItem* RegroupNode(const QTreeWidgetItem& dragged, QTreeWidgetItem& target);
