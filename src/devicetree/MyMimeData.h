#pragma once

#include <QMimeData>
#include <QStringList>

class QTreeWidgetItem;

/// What a drag of a device row carries: its mime text names the kind of drag, and the row is passed as a
/// pointer, so that the payload means nothing outside the process.
class MyMimeData : public QMimeData
{
    Q_OBJECT

public:
    MyMimeData();

    void SetItem(QTreeWidgetItem* pItem) { m_pItem = pItem; }

    /// The dragged row, not owned; null until set.
    QTreeWidgetItem* GetItem() const { return m_pItem; }

    /// True for "mydata" too, which formats() doesn't list.
    bool hasFormat(const QString& strFormat) const override;

private:
    QTreeWidgetItem* m_pItem = nullptr;
    QStringList m_lstFormats;
};
