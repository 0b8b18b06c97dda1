#include "devicetree/CDeviceTreeWidget.h"

#include "common/QtEvents.h"
#include "devicetree/DeviceRow.h"
#include "devicetree/DragPicture.h"
#include "devicetree/MyMimeData.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMouseEvent>

namespace {

QTreeWidgetItem* DraggedItem(const QDropEvent& event)
{
    const QMimeData* pMime = event.mimeData();
    return pMime->hasFormat("mydata") ? static_cast<const MyMimeData*>(pMime)->GetItem() : nullptr;
}

} // namespace

CDeviceTreeWidget::CDeviceTreeWidget(QWidget* parent) : QTreeWidget(parent)
{
    setAcceptDrops(true);
    setDefaultDropAction(Qt::MoveAction);
    setDragDropMode(QAbstractItemView::DragDrop);
    // The mode has switched the view's own drags on.
    setDragEnabled(false);
}

CDeviceTreeWidget::~CDeviceTreeWidget()
{
    // A drag whose object goes with the tree would keep its event loop until Escape is pressed.
    if (m_pDragged)
        QDrag::cancel();
}

void CDeviceTreeWidget::DisableDrop()
{
    m_bDropOff = true;
    setDragEnabled(false);
}

void CDeviceTreeWidget::mousePressEvent(QMouseEvent* pEvent)
{
    const QPointer<CDeviceTreeWidget> alive(this);
    QTreeWidget::mousePressEvent(pEvent);
    if (!alive)
        return;
    if (pEvent->buttons() == Qt::LeftButton)
        PressLeft(pEvent->pos());
    else if (pEvent->buttons() == Qt::RightButton)
        PressRight(pEvent->pos());
}

void CDeviceTreeWidget::PressLeft(const QPoint& pos)
{
    QTreeWidgetItem* pItem = itemAt(pos);
    if (!pItem)
        return;
    setCurrentItem(pItem);
    setDragEnabled(false);
    if (indexAt(pos).isValid())
        m_ptDragStart = pos;
}

void CDeviceTreeWidget::PressRight(const QPoint& pos)
{
    QTreeWidgetItem* pItem = itemAt(pos);
    if (!pItem) {
        Q_EMIT sig_RclickAddGroup();
        return;
    }
    setCurrentItem(pItem);
    if (currentIndex().isValid())
        Q_EMIT rightClicked(currentIndex());
}

void CDeviceTreeWidget::mouseMoveEvent(QMouseEvent* pEvent)
{
    const int nDistance = (pEvent->pos() - m_ptDragStart).manhattanLength();
    const bool bFarEnough = nDistance >= QApplication::startDragDistance();
    const QPointer<CDeviceTreeWidget> alive(this);
    if (pEvent->buttons().testFlag(Qt::LeftButton) && bFarEnough && m_bDragOn)
        DragCurrentItem();
    if (alive)
        QTreeView::mouseMoveEvent(pEvent);
}

void CDeviceTreeWidget::DragCurrentItem()
{
    QTreeWidgetItem* pItem = currentItem();
    // A move may come in before a drag that has been dropped or cancelled has left its event loop.
    if (m_pDragged || !pItem || pItem->icon(0).isNull())
        return;
    m_pDragged = new MyMimeData;
    m_pDragged->setText(m_strDragText);
    m_pDragged->SetItem(pItem);
    const QPixmap picture = DragPicture(*pItem);
    auto* pDrag = new QDrag(this);
    pDrag->setPixmap(picture);
    pDrag->setMimeData(m_pDragged);
    pDrag->setHotSpot(QPoint(12, picture.height() / 2));
    const QPointer<CDeviceTreeWidget> alive(this);
    pDrag->exec(Qt::MoveAction);
    if (alive)
        m_pDragged.clear();
}

void CDeviceTreeWidget::rowsAboutToBeRemoved(const QModelIndex& parent, int nStart, int nEnd)
{
    // The application may remove devices while a drag runs; the payload must not outlive its row.
    QModelIndex index = m_pDragged ? indexFromItem(m_pDragged->GetItem()) : QModelIndex();
    while (index.isValid() && index.parent() != parent)
        index = index.parent();
    if (index.isValid() && index.row() >= nStart && index.row() <= nEnd)
        m_pDragged->SetItem(nullptr);
    QTreeWidget::rowsAboutToBeRemoved(parent, nStart, nEnd);
}

void CDeviceTreeWidget::reset()
{
    if (m_pDragged)
        m_pDragged->SetItem(nullptr);
    QTreeWidget::reset();
}

void CDeviceTreeWidget::dragEnterEvent(QDragEnterEvent* pEvent)
{
    JudgeDrag(pEvent);
}

void CDeviceTreeWidget::dragMoveEvent(QDragMoveEvent* pEvent)
{
    JudgeDrag(pEvent);
}

void CDeviceTreeWidget::JudgeDrag(QDropEvent* pEvent) const
{
    if (m_bDropOff || !IsOwnKind(*pEvent) || !itemAt(PosOf(*pEvent)))
        return;
    pEvent->setDropAction(Qt::MoveAction);
    pEvent->accept();
}

void CDeviceTreeWidget::dropEvent(QDropEvent* pEvent)
{
    if (m_bDropOff || !IsOwnKind(*pEvent))
        return;
    pEvent->setDropAction(Qt::MoveAction);
    pEvent->accept();
    QTreeWidgetItem* pDragged = DraggedItem(*pEvent);
    QTreeWidgetItem* pTarget = itemAt(PosOf(*pEvent));
    if (!pDragged || !pTarget)
        return;
    if (QTreeWidgetItem* pNode = NodeForRow(*pDragged, *pTarget))
        Q_EMIT sig_drop(pDragged, pNode);
}

bool CDeviceTreeWidget::IsOwnKind(const QDropEvent& event) const
{
    return qobject_cast<CDeviceTreeWidget*>(event.source()) && event.mimeData()->text() == m_strDragText;
}
