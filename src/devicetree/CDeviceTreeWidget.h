#pragma once

#include <QPointer>
#include <QTreeWidget>

class MyMimeData;

/// A tree for the application's devices whose rows can be dragged onto a pane of a deck, or onto one another
/// to regroup them. Link it from PaneDeck::DeviceTree.
///
/// What a row is stands in its data at column 0, under plain role numbers, not offsets from Qt::UserRole:
///
/// Role 33: the address of a record of the application's, as a qlonglong (`setData(0, 33,
/// qlonglong(quintptr(&record)))`). The record's first member must be an int, the row's type: 2 stands two
/// levels below the node that takes drops, 1 one level below it, all else is such a node. A pane takes a row
/// of type 2. The record is read at every move of a drag over a pane and at each drop: it must live as long
/// as the row, at the same address. Without it, or with 0, a row is neither taken by a pane nor regrouped.
///
/// Role 34: an int, the row's subtype. 3 makes a pane take a row of any type, which still needs a record.
///
/// Role 35: an int, the type of a row in a drag to a tour deck; 2 is what it takes. No record is needed for
/// that.
///
/// The drag's mime text says which of them counts: "0", which this tree sets, the first two; "2" the third,
/// and only in a tour deck. A tree derived from this one sets m_strDragText to "2" for such drags. A row also
/// needs an icon at column 0 to be dragged. All of it runs in the GUI thread, and a drag in an event loop of
/// its own, in which rows, and the tree, may be deleted.
class CDeviceTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    /// An empty tree, which drags, and takes drops of its own rows.
    explicit CDeviceTreeWidget(QWidget* parent = nullptr);
    ~CDeviceTreeWidget() override;

    /// Whether a mouse move may start a drag; it may at first. A row without an icon at column 0 is never
    /// dragged.
    void SetDragOn(bool bOn) { m_bDragOn = bOn; }

    /// Refuses all drops on the tree from now on, for good; rows can still be dragged onto panes.
    void DisableDrop();

Q_SIGNALS:
    /// A right press on the row, which has become the current one. The index is valid until the tree changes.
    void rightClicked(QModelIndex);

    /// One row, of any CDeviceTreeWidget of the process, was dropped on this tree, and `fatherpnode` is the
    /// node that takes it: the row under the cursor, or one or two levels above it by that row's type. Rows
    /// of type 2 aren't regrouped. The tree moves nothing: that is up to the receiver. The drag isn't over
    /// yet: a receiver that deletes the row does so later.
    void sig_drop(QTreeWidgetItem* childpnode, QTreeWidgetItem* fatherpnode);

    /// A right press on the empty area; the current row stays.
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
