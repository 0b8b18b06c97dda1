#pragma once

#include "common/HeldButton.h"
#include "deck/PaneDeckTypes.h"

#include <QFrame>
#include <QImage>
#include <QPoint>

#include <memory>

class FrameCover;
class QLabel;
class QMouseEvent;
class QMyLabel;
class QPainter;
class QTreeWidgetItem;
class QWheelEvent;

/// The area of a pane that shows the picture and turns the mouse into gestures: direction commands, a
/// rubber-band rectangle, raw mouse messages and clicks. The picture lies on the frame label, whose mouse
/// events the surface watches. A receiver of any of the signals may delete the surface.
class QSubWidget : public QFrame
{
    Q_OBJECT

public:
    /// The parent is the pane: it has the signal sig_DragEvent(QTreeWidgetItem*,int) and the slot
    /// slot_dbVideoWidget(int,int), which the surface connects itself to.
    QSubWidget(QWidget* pParent, int nWndIndex);
    ~QSubWidget() override;

    int GetWndIndex() const { return m_nWndIndex; }
    QMyLabel* GetLabel() const { return m_pLabel; }

    /// 0 or -1 none, 1 PTZ, 2 rectangle; any other number changes nothing. A running gesture goes on to its
    /// release, and a wheel command to its timer.
    void SetFunctionMode(int nMode);

    /// Sets the zone under the cursor, a PtzZone, and the label's cursor with it.
    void SetCursorZone(int nZone);

    /// Mouse messages work beside either function mode.
    void SetMouseMsg(bool bMouseMsg) { m_bMouseMsg = bMouseMsg; }
    bool IsMouseMsg() const { return m_bMouseMsg; }

    /// Whether the selection border is drawn. Asks for no repaint.
    void SetSelected(bool bSelected) { m_bSelected = bSelected; }

    /// Whether the frame label paints itself.
    bool IsRefreshEnabled() const;
    void SetRefreshEnabled(bool bEnable);

    /// The status text over the picture.
    void SetText(const QString& strText);

    /// No function mode, no status text.
    void ResetSurface();

    void SetScale(WndScase eScale);
    WndScase GetScale() const { return m_eScale; }

    /// The size as told by slot_VideoResize, in pixels; 0 by 0 before.
    void GetVideoSize(int& nWidth, int& nHeight) const;

    void ShowAlarmMark(bool bShow);
    bool IsAlarmMarked() const;

    /// Makes the label one of a tour pane.
    void SetLabelKindTour();

Q_SIGNALS:
    /// Left press on the surface or its label.
    void action(QSubWidget* pWidget);

    /// Right press on the label while mouse messages are off.
    void sig_rightBtnClick();

    /// Left double click; nRectMode is 1 in rectangle mode, else 0.
    void DoubleClickVideoWidget(int nWndIndex, int nRectMode);

    /// Never emitted.
    void ExchangeDisplay(int nFirst, int nSecond);

    /// A command starts (nType 0) or stops (nType 1): 0 to 8 as PtzZone, 9 and 10 the wheel.
    void sig_sendPtzCommand(int nCommand, int nType);

    /// The rectangle so far, 20 times a second, and once more with null points at its end.
    void sig_RectanglePoint(int nWndIndex, QPoint ptStart, QPoint ptCur);

    /// A rectangle has ended; ptEnd is (-1, -1) if the mouse never moved.
    void sig_selectRegion(int nWndIndex, QPoint ptStart, QPoint ptEnd);

    /// Left release on the label outside rectangle mode.
    void sig_mouseRelease();

    /// nMouseType: 0 left, 1 right, 2 double click, 3 move. nDownUp: 0 down, 1 up. The point is in the
    /// label's coordinates, that of a double click in the surface's.
    void sig_sendMouseMsg(int nMouseType, int nDownUp, QPoint pt);

    /// A device row was dropped on the label.
    void sig_DragEvent(QTreeWidgetItem* pItem, int nWndIndex);

public Q_SLOTS:
    /// A picture of the surface's own, of nWidth by nHeight RGB888 pixels at the address dwBuffer, each row
    /// starting on a 32-bit boundary. They aren't copied and must stay valid until the next picture. Address
    /// 0 changes nothing; a size that no image can have leaves the surface without a picture. Asks for no
    /// repaint.
    void slot_BufferChange(ulong dwBuffer, int nWidth, int nHeight);

    void slot_DragEvent(QTreeWidgetItem* pItem);

    /// Tells the video's size, which the label is fitted to in scale mode 0.
    void slot_VideoResize(int nWidth, int nHeight);

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;
    void timerEvent(QTimerEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    void CreateLabel();
    void CreateAlarmMark();
    void SetAspect(const QSize& ratio);
    void PlaceLabel();
    void SetHalfSizes(const QSize& size);
    int ZoneAt(const QPoint& pt) const;
    bool IsOffLabel(const QPoint& pt) const;

    void HandleLabelEvent(QEvent* pEvent);
    void PressOnLabel(const QMouseEvent& event);
    void LeftPressOnLabel(const QPoint& pt);
    void ReleaseOnLabel(const QMouseEvent& event);
    void LeftReleaseOnLabel(const QPoint& pt);
    void BeginPress();
    void EndPress();
    bool IsHeld() const;
    void EndHeldGesture();
    void EndRectangle();
    QPoint Told(const QPoint& pt) const;
    void StopRectTimer();
    void MoveOnLabel(const QPoint& pt);
    void MovePtz(const QPoint& pt);
    void StopOffLabel();
    void DragPtz();
    void DragOther(const QPoint& pt);
    void EnterLabel();
    void ResizeOfLabel(const QSize& size);
    void TurnWheel(const QWheelEvent& event);
    void TickWheel();
    void PaintSelection(QPainter& painter) const;

    std::unique_ptr<QImage> m_pImage;
    int m_nAspectH = 0;
    int m_nAspectW = 0;
    int m_nVideoH = 0;
    int m_nVideoW = 0;
    WndScase m_eScale = WND_SCASE_FILL;
    int m_nRectTimer = 0;
    const int m_nWndIndex;
    bool m_bPtzMode = false;
    bool m_bRectMode = false;
    bool m_bPressed = false;
    bool m_bMouseMsg = false;
    int m_nHalfW = 0;
    int m_nHalfH = 0;
    int m_nCenterW = 0;
    int m_nCenterH = 0;
    bool m_bSelected = false;
    int m_nZone = 0;
    int m_nPtzCommand = 0;
    QPoint m_ptCur;
    QPoint m_ptStart;
    QMyLabel* m_pLabel = nullptr;
    FrameCover* m_pCover = nullptr;
    int m_nWheelTimer = 0;
    qint64 m_llWheelTime = 0;
    int m_nWheelCommand = 0;
    QLabel* m_pAlarmLabel = nullptr;

    /// A left press on its way from the label's filter to the surface. Its signals may run a dialog, and then
    /// it is over before it has arrived.
    enum class Press
    {
        None,
        Begun,
        Over
    };
    Press m_ePress = Press::None;

    /// Where the mouse was last seen on the label with the left button down.
    QPoint m_ptHeld;

    HeldButton m_heldButton;

    /// How many of the label's events are being handled, one inside the other.
    int m_nLabelEvents = 0;

    /// Tick of the last left-drag message of any surface.
    static quint32 s_dwLastMouseMsgTick;
};
