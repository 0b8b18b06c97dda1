#pragma once

#include <QPixmap>

class QTreeWidgetItem;

/// What follows the cursor while a row is dragged: 116 by 16, the row's icon and behind it as much of its
/// text as fits, white on nothing.
QPixmap DragPicture(const QTreeWidgetItem& item);
