#pragma once

#include <QMimeData>
#include <QStringList>

class QTreeWidgetItem;

/// What a drag of a device row carries. A pane takes it from any drag source of the process, so an
/// application may start drags from a view of its own: its setText() names the kind of drag, "0" or "2", and
/// the row holds the data that CDeviceTreeWidget tells of. The row is passed as a pointer, so that the
/// payload means nothing outside the process. QDrag::setMimeData() takes ownership of it.
class MyMimeData : public QMimeData
{
    Q_OBJECT

public:
    MyMimeData();

    /// Sets the row, which isn't owned. It must live until the drag is over, or be taken back with null
    /// before it goes; CDeviceTreeWidget does that by itself.
    void SetItem(QTreeWidgetItem* pItem) { m_pItem = pItem; }

    /// The dragged row, not owned; null until set.
    QTreeWidgetItem* GetItem() const { return m_pItem; }

    /// True for "mydata" too, which formats() doesn't list: by it a pane knows the payload, so no other kind
    /// of mime data in a drag inside the process may claim it.
    bool hasFormat(const QString& strFormat) const override;

private:
    QTreeWidgetItem* m_pItem = nullptr;
    QStringList m_lstFormats;
};
