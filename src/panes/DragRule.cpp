#include "panes/DragRule.h"

#include "devicetree/DeviceRow.h"
#include "devicetree/MyMimeData.h"

#include <QDropEvent>
#include <QString>
#include <QTreeWidgetItem>

namespace {

constexpr int SubtypeRole = 34;
constexpr int TourTypeRole = 35;
constexpr int DeviceType = 2;
constexpr int DeviceSubtype = 3;

} // namespace

bool AcceptsRow(const QTreeWidgetItem& item, const QString& strDragText, int nLabelKind)
{
    if (strDragText == QLatin1String("2"))
        return nLabelKind == 1 && item.data(0, TourTypeRole).toInt() == DeviceType;
    if (strDragText != QLatin1String("0"))
        return false;
    const std::optional<int> type = TypeOfRow(item);
    if (!type)
        return false;
    return *type == DeviceType || item.data(0, SubtypeRole).toInt() == DeviceSubtype;
}

QTreeWidgetItem* AcceptedItem(const QDropEvent& event, int nLabelKind)
{
    const QMimeData* pMime = event.mimeData();
    // An application has a copy of MyMimeData of its own, so the format tells what its type information
    // can't.
    if (!pMime || !event.source() || !pMime->hasFormat(QStringLiteral("mydata")))
        return nullptr;
    QTreeWidgetItem* pItem = static_cast<const MyMimeData*>(pMime)->GetItem();
    return pItem && AcceptsRow(*pItem, pMime->text(), nLabelKind) ? pItem : nullptr;
}
