#pragma once

class QDropEvent;
class QString;
class QTreeWidgetItem;

/// The device row that a label of the kind (1 for a tour pane's) takes from a drag or a drop;
/// null if it refuses it. Only drags from within the process are taken.
QTreeWidgetItem* AcceptedItem(const QDropEvent& event, int nLabelKind);

/// Whether a label of the kind takes the row from a drag of the mime text: "0" for a device, "2" for a tour.
bool AcceptsRow(const QTreeWidgetItem& item, const QString& strDragText, int nLabelKind);
