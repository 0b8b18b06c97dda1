#pragma once

#include <QPointer>
#include <QTreeWidget>

class MyMimeData;

/// A tree for the application's devices whose rows can be dragged onto a pane, or onto one another to regroup
/// them. Each row holds at column 0, role 33, the address of a record that begins with the row's type as an
/// int: 2 stands two levels below the node that takes drops, 1 one level below it, all else is such a node.
class CDeviceTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    explicit CDeviceTreeWidget(QWidget* parent = nullptr);
    ~CDeviceTreeWidget() override;

    /// Whether a mouse move may start a drag; it may at first. A row without an icon is never dragged.
    void SetDragOn(bool bOn) { m_bDragOn = bOn; }

    /// Refuses all drops from now on, for good.
    void DisableDrop();

Q_SIGNALS:
    /// A right press on the row.
    void rightClicked(QModelIndex);

    /// One of the rows was dropped on the node. The tree moves nothing: that is up to the receiver.
    void sig_drop(QTreeWidgetItem* childpnode, QTreeWidgetItem* fatherpnode);

    /// A right press on the empty area.
    void sig_RclickAddGroup();

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void dragEnterEvent(QDragEnterEvent* pEvent) override;
    void dragMoveEvent(QDragMoveEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;
    void rowsAboutToBeRemoved(const QModelIndex& parent, int nStart, int nEnd) override;
    void reset() override;

    QPoint m_ptDragStart; ///< where the last left press on a row went down
    bool m_bDragOn = true;
    bool m_bDropOff = false;
    QString m_strDragText = "0"; ///< text of the tree's drags, and what a drop must carry

private:
    void PressLeft(const QPoint& pos);
    void PressRight(const QPoint& pos);
    void DragCurrentItem();
    void JudgeDrag(QDropEvent* pEvent) const;
    bool IsOwnKind(const QDropEvent& event) const;

    QPointer<MyMimeData> m_pDragged; ///< while a drag of the tree's own runs
};
