#pragma once

#include "devicetree/CDeviceTreeWidget.h"

#include <QHash>

/// Rows of a device tree by name, each with an icon and a record of its own that begins with the type.
class DeviceRows
{
public:
    explicit DeviceRows(CDeviceTreeWidget* tree) : m_pTree(tree) {}

    /// Adds a row; without a parent it is a top one.
    QTreeWidgetItem* Add(const QString& name, int type, const QString& parent = QString())
    {
        QTreeWidgetItem* item = AddWithoutRecord(name, parent);
        m_mapTypes.insert(name, new int(type));
        item->setData(0, 33, reinterpret_cast<qlonglong>(m_mapTypes.value(name)));
        return item;
    }

    QTreeWidgetItem* AddWithoutRecord(const QString& name, const QString& parent = QString())
    {
        QPixmap icon(16, 16);
        icon.fill(Qt::red);
        auto* item = new QTreeWidgetItem({name});
        item->setIcon(0, icon);
        if (parent.isEmpty())
            m_pTree->addTopLevelItem(item);
        else
            At(parent)->addChild(item);
        item->setExpanded(true);
        m_mapRows.insert(name, item);
        return item;
    }

    ~DeviceRows() { qDeleteAll(m_mapTypes); }

    QTreeWidgetItem* At(const QString& name) const { return m_mapRows.value(name); }
    QString NameOf(QTreeWidgetItem* item) const { return m_mapRows.key(item); }

    /// A point on the row in the viewport; a point on the empty area for no name.
    QPoint PointOn(const QString& name) const
    {
        if (name.isEmpty())
            return QPoint(50, m_pTree->viewport()->height() - 5);
        return m_pTree->visualItemRect(At(name)).center();
    }

private:
    Q_DISABLE_COPY(DeviceRows)

    CDeviceTreeWidget* m_pTree;
    QHash<QString, QTreeWidgetItem*> m_mapRows;
    QHash<QString, int*> m_mapTypes;
};
