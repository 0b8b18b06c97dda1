#pragma once

#include "common/QtEvents.h"
#include "deck/PaneDeckTypes.h"

#include <QFrame>
#include <QPoint>
#include <QString>

class CPaneDeck;
class CTimePlayBackWidget;
class QSubWidget;
class QTreeWidgetItem;
class QVBoxLayout;

/// One cell of a deck: the video surface, below it the instant playback bar while that is open, and what the
/// deck remembers of the pane. A relay in both directions: gestures and clicks rise to the deck with the
/// pane's index added, and the deck's commands arrive as signals to itself, so that a kind of pane can
/// override what happens.
class CVideoWidget : public QFrame
{
    Q_OBJECT

public:
    /// The parent must be the deck.
    CVideoWidget(QWidget* parent, int nWndIndex);

    virtual void SetActive(bool bActive);
    bool IsActive() const { return m_bActive; }
    virtual QString GetSpeedInfo();

    int GetWndIndex() const { return m_nWndIndex; }
    QString GetTitle() const { return m_strFullTitle; }

    /// The frame label, for the application.
    void* GetHWND();

    /// 0 or -1 no function, 1 PTZ, 2 rectangle.
    void SetFunctionParam(int nParam);

    /// 0 to 8 PTZ directions, 11 a pane is being dragged, 12 pointing hand, any other the arrow.
    void SetCursorZone(int nZone);

    void SetBtnCheck(Btn_type_EX btnType, bool bCheck);

    /// False for every button but record, audio and zoom.
    bool btncheck(Btn_type_EX btnType);

    /// Toggles the check state of record, audio or zoom; nothing for any other button.
    void setBtnCheck(Btn_type_EX btnType);

    void ResetWnd();
    void SendMesInfo(WndMessage_type type, int nParam1, QString strParam2);

    /// Whether the frame label paints itself; while it does, the pane is idle and gets no title bar.
    bool UpdateEnable() const;
    void EnableRefresh(bool bEnable);

    void setMousMsg(bool bMouseMsg);
    bool mousMsg() const;

    /// The status text over the picture.
    void setText(QString strText);

    /// Gives up the title bar if the cursor isn't over the pane.
    void HideTitleIfOutside();

    WndScase getScaseType() const;
    void setScaseType(WndScase eScale);
    void GetVideoSize(int& width, int& height) const;
    void SetVideoSize(int width, int height);
    void SetFrame(const QImage& frame, const QRect& source, const QSize& videoSize);

    void OpenPlayBackSlider();
    void ClosePlayBackSlider();

    /// `nPos` from 0 to 1000, `lTime` in seconds since 1970.
    void SetPlayBackSliderPos(int nPos, long lTime);

    void ChangeFreeze(bool bFreeze);
    bool IsFrozen() const;
    void SetTourKind();

Q_SIGNALS:
    void sig_activWnd(int nWndIndex);
    void sig_OnMouseRightBtnClick(int nWndIndex);
    void sig_OnBtnClick(int nWndIndex, Btn_type_EX btnType);
    void sig_dbWndclick(int nWndIndex, int nParam);
    void sig_setBtnCheck(Btn_type_EX btnType, bool bCheck);
    void sig_resetWnd();
    void sig_wndMesInfo(WndMessage_type type, int nParam1, QString strParam2);
    void sig_sendPtzCommand(int nWndIndex, int nCommand, int nType);
    void sig_RectanglePoint(int nWndIndex, QPoint ptStart, QPoint ptCur);
    void sig_DragEvent(QTreeWidgetItem* pItem, int nWndIndex);
    void sig_hideTit();
    void sig_btnStopClick(int nWndIndex, bool bPause);
    void sig_btnCloseClick(int nWndIndex);
    void sig_ReplaySeek(int nWndIndex, int nValue);

public Q_SLOTS:
    /// A button of the title bar was clicked.
    void slot_wndBtnClick(Btn_type_EX btnType);
    void slot_onMousePress(QSubWidget* pWidget);
    void slot_OnMouseRightClick();
    void slot_dbVideoWidget(int nWndIndex, int nParam);
    void slot_sendPtzCommand(int nCommand, int nType);
    void slot_RectanglePoint(QPoint ptStart, QPoint ptCur);
    void slot_SendClose();
    void btnRemoteControlClick();
    void slot_hideTit();
    void slot_btnStopClick(bool bPause);
    void slot_btnCloseClick();
    void slot_ReplaySeek(int nValue);

protected Q_SLOTS:
    virtual void slot_setBtnCheck(Btn_type_EX btnType, bool bCheck);
    virtual void slot_resetWnd();
    virtual void slot_wndMesInfo(WndMessage_type type, int nParam1, QString strParam2);

protected:
    void enterEvent(EnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    /// Makes the pane active, then reports a click on the button. The pane may be gone when the call returns.
    void ClickAsActive(Btn_type_EX btnType);

    QVBoxLayout* m_pLayout = nullptr;
    QSubWidget* m_pSubWidget = nullptr;
    CTimePlayBackWidget* m_pPlayBack = nullptr;
    int m_nWndIndex = 0;
    bool m_bActive = false;
    QString m_strSpeed = "";
    QString m_strTitle;
    QString m_strSubTitle;
    int m_eKind = WND_TYPE_MONITOR;
    bool m_bTitle = true;
    QString m_strFullTitle;
    bool m_bZoom = false;
    bool m_bRecord = false;
    bool m_bAudio = false;
    bool m_bInstant = false;

private:
    /// The deck fills its title bar from the fields above.
    friend class CPaneDeck;

    void MakeConnections();
    CPaneDeck* Deck() const;
    bool* CheckFlag(Btn_type_EX btnType);
    bool WantsTitle() const;
    bool IsUnderCursor() const;
    void JoinTitle();
};
