#pragma once

#include "PaneDeckExport.h"
#include "PaneDeckTypes.h"

#include <QImage>
#include <QList>
#include <QMap>
#include <QPoint>
#include <QRect>
#include <QRgb>
#include <QString>
#include <QTime>
#include <QVector>
#include <QWidget>

#include <memory>

class CMonitorToolBar;
class CPlaybackToolBar;
class CVideoTitleWidget;
class CVideoWidget;
class QTreeWidgetItem;
struct DeckDrag;
struct DeckFullScreen;
struct DeckMore;
struct DeckPages;

/// A deck of video panes for one job: live monitoring, alarm display, playback or tour.
///
/// A split layout says how many panes share the deck's area and where each lies; further panes follow on
/// further pages. A new deck shows nothing until SetShowWndNo() selects its first layout. The deck knows no
/// camera and no stream: the application tells each pane what to show, and everything the user does comes
/// back as a signal.
///
/// A pane is named by its index, 0 to the number of panes - 1, the same on every page. An index that names no
/// pane makes an operation do nothing, or give the value told with it. All operations belong to the GUI
/// thread. Signals fire inside the call that causes them; a receiver may call back into the deck, or delete
/// it. A right press alone asks for more care: Qt goes on with the window after it. A receiver of a signal
/// that comes from one must not delete that window, be it the deck's parent or the deck itself, which in full
/// screen is a window too; deleteLater() is safe.
class PANEDECK_EXPORT CPaneDeck : public QWidget
{
    Q_OBJECT

public:
    /// Builds a deck of `nCount` panes; neither the kind nor the number changes later.
    explicit CPaneDeck(QWidget* parent = nullptr, _WND_TYPE type = WND_TYPE_MONITOR, int nCount = 64);
    ~CPaneDeck() override;

    /// Names the file that all words of the library come from. Call it once, before the first deck is made.
    static void SetLanguageFile(QString path);

    /// Says where the installation lies: the directory that holds "Organization", "Resources" and the styles'
    /// own, and the one that the user's layouts are kept in, as "SplitInfo.xml"; it is made when it is first
    /// needed. A file of layouts in the latter wins over the installation's. An empty `directory` stands for
    /// the one above the program's own, an empty `writableDirectory` for "Organization" of the installation.
    /// Call it once, before the first deck is made: after that it is refused with a warning.
    static void SetInstallation(QString directory, QString writableDirectory);

    /// Shows the first page of the built-in layout of 1, 4, 6, 8, 9, 16, 25, 36, 49 or 64 panes; 32 stands
    /// for 36. Any other number, or one above the deck's panes, is refused without a signal. If the active
    /// pane isn't on the first page, pane 0 becomes active. Signals: sig_Activechangebefor, sig_activeWnd,
    /// sig_wndNumberChanged.
    void SetShowWndNo(int nNum);

    /// Makes a pane active; -1 for none. Any other index that names no pane is stored all the same.
    void SetActiveWnd(int nWndIndex);

    /// The active pane, as it was last set; -1 if there is none.
    int GetCurrentWnd();

    /// The same as GetCurrentWnd().
    int activeWndNo();

    /// The QWidget on which the pane's picture lies, for the application to draw on while the pane's own
    /// updates are off (EnableRefresh). By name it has the slot slot_BufferChange(ulong,int,int), which takes
    /// the address, width and height of an RGB888 frame that stays valid until the next call, and the signals
    /// sig_VideoResize(int,int) and sig_sendClose(). Not a native window id. Null if the index names no pane.
    void* GetHWND(int nWndIndex);

    /// What GetHWND() gives, as a widget: valid as long as the deck.
    QWidget* PaneWidget(int nWndIndex) { return static_cast<QWidget*>(GetHWND(nWndIndex)); }

    /// Shows a frame in the pane, the ordinary way. It shows whether the pane is in use (EnableRefresh) or
    /// not and keeps a reference to the image until the next frame, or a null one, which clears; an image
    /// over memory of the application's own must stay valid, or clean up, until then. RGB888 and RGB32 are
    /// painted without a copy or a conversion, at any distance of the rows; other formats are converted once,
    /// here. `source` is the part of the frame that fills the pane's picture, all of it by default: digital
    /// zoom costs no copy. What lies outside of the frame is left out; a rectangle of which nothing is left
    /// shows all. Mouse positions that the deck reports stay those of the whole frame. The first frame of
    /// another size sets the video size that the scale mode WND_SCASE_VIDEO goes by.
    void SetFrame(int nWndIndex, const QImage& frame, QRect source = QRect());

    /// The same from any thread: of the frames for a pane the newest is shown once the GUI thread comes to
    /// it, and what it overtook is dropped. The pixels must not change any more. Whoever posts must have
    /// stopped before the deck is deleted.
    void PostFrame(int nWndIndex, QImage frame, QRect source = QRect());

    /// Width and height of the pane in pixels; both stay as they were if the index names no pane.
    void GetWindowRect(int nWndIndex, int& nWidth, int& nHeight);

    /// One page forward; nothing, without a signal, on the last one. The active pane stays as it is.
    void OnNextPage();

    /// One page back; nothing, without a signal, on the first one.
    void OnPreviePage();

    /// Tells whether the page is split, has one pane only, or shows one pane enlarged.
    void GetShowMode(__WND_SHOW_MODE& eMode);

    /// Enters or leaves mouse message mode: the pane fills the screen and its mouse events arrive as
    /// sig_sendMouseMsg. Escape leaves it too.
    void setMousMsg(int nWndIndex, bool bMouseMsg);

    /// Whether the pane is in mouse message mode; false if the index names no pane.
    bool mousMsg(int nWndIndex);

    /// Makes the deck a frameless window over the screen under the cursor, or puts it back into its parent,
    /// whose layout must size it again. Signal: sig_OnStateChanged.
    void ChangeFull(bool bFull);

    /// Exchanges scale mode and video size of two panes; their titles, check states and pictures stay.
    void ExchangeDisplay(int nSrcWnd, int nDisWnd);

    /// Lays the title bar over the pane and fills it from the pane.
    void showTitle(int nWndIndex);

    /// Hides the title bar if it serves the pane.
    void hideTitle(int nWndIndex);

    /// Hides the title bar if the cursor has left the pane that it serves.
    void hideTit();

    /// Shows or hides the title bar where it is.
    void setTitleShow(bool bShow);

    /// Puts a text into the title bar if it serves the pane; the pane itself keeps its title (SetTitle).
    void setText(QString strText, int nWndIndex);

    /// Checks the title bar's button for record, audio, instant playback or zoom if the bar serves the pane.
    void setChecked(Btn_type_EX btnType, bool bCheck, int nWndIndex);

    /// Shows or hides the title bar's button that ends mouse message mode, if the bar serves the pane.
    void setTitleMousMsg(bool bMouseMsg, int nWndIndex);

    /// A click on a button of the title bar, for the pane that it serves.
    void slot_wndBtnClick(Btn_type_EX btnType);

    /// Brings the pane back to idle: no title, text, speed, function, check state or instant playback bar,
    /// and its own updates on. For the active pane of a playback deck the toolbar is disabled too.
    void ResetWnd(int nWndIndex);

    /// Sets the status text over the pane's picture. It shows while no frame is set.
    void SetMessage(int nWndIndex, QString strText);

    /// Sets the pane's title.
    void SetTitle(int nWndIndex, QString strTitle);

    /// Sets the playback speed, 1024 for normal, doubled or halved for each step. Playback decks only.
    void SetSpeedInfo(int nWndIndex, int nSpeed);

    /// Sets what the mouse does on the pane: 0 or -1 nothing, 1 PTZ, 2 rectangle. Only a pane whose last
    /// value was 0 can be dragged onto another.
    void SetFunctionParam(int nWndIndex, int nParam);

    /// Whether the pane paints itself; false if the index names no pane.
    bool UpdateEnable(int nWndIndex);

    /// Turns the pane's own painting on or off. A pane whose painting is off counts as in use: the
    /// application draws on its handle, and it gets the title bar.
    void EnableRefresh(int nWndIndex, bool bEnable);

    /// The pane's check state for record, audio or zoom; false for any other button, or if the index names no
    /// pane.
    bool btncheck(int nWndIndex, Btn_type_EX btnType);

    /// Sets the pane's check state for record, audio or zoom.
    void SetBtnCheck(int nWndIndex, Btn_type_EX btnType, bool bCheck);

    /// Toggles the pane's check state for record, audio or zoom.
    void setBtnCheck(int nWndIndex, Btn_type_EX btnType);

    /// Sets the scale mode of the pane's picture. Note the order: the pane comes last.
    void setScaseType(WndScase eScale, int nWndIndex);

    /// The scale mode of the pane's picture; WND_SCASE_FILL if the index names no pane.
    WndScase getScaseType(int nWndIndex);

    /// Opens the instant playback bar below the pane's picture.
    void OpenPlayBackSlider(int nWndIndex);

    /// Closes the instant playback bar; it is no longer the pane's when the call returns.
    void ClosePlayBackSlider(int nWndIndex);

    /// Shows a position in the pane's instant playback bar: `nPos` from 0 to 1000, `lTime` in seconds since
    /// 1970. Nothing happens while the bar is closed or its slider is held.
    void SetPlayBackSliderPos(int nWndIndex, int nPos, long lTime);

    /// Shows or hides the alarm mark in the pane's corner.
    void ChangeFreeze(int nWndIndex, bool bFreeze);

    /// Sets the status text over the pane's picture, as SetMessage() does.
    void setAlarm(int nWndIndex, QString strText);

    /// Shows in the pane through how many channels its tour runs.
    void setTour(int nWndIndex, int nCount);

    /// Clears the status text of all panes, on every page.
    void clearText();

    /// The speed text of the active pane, such as "1/2X"; empty if no pane is active.
    QString GetSpeedInfo();

    /// Sets a pane's state for record, audio or play, and the playback toolbar's button if the pane is
    /// active. `nState` is 0 off or 1 on; -1 for record disables the toolbar's button.
    void SetWndBtnState(int nWndIndex, Btn_type_EX btnType, int nState);

    /// Moves the file view of the playback toolbar, 0 to 1000; dropped if the pane isn't active.
    void SetProgressValue(int nWndIndex, int nValue);

    /// Moves the audio control of the playback toolbar, 1 to 10; dropped if the pane isn't active.
    void SetVoiceValue(int nWndIndex, int nValue);

    /// Enables or disables the transport and the audio controls of the playback toolbar.
    void SetToolBtnEnable(bool bEnable, bool bAudio);

    /// Chooses between the file view and the 24-hour scale of the playback toolbar.
    void ChangePlaybackViewType(PlaybackViewType eType);

    /// The time at the thumb of the 24-hour scale, then the end of the day, 23, 59 and 59. Without a playback
    /// toolbar all six stay as they were.
    void GetSelectedTime(short& nHour, short& nMinute, short& nSecond, short& nEndHour, short& nEndMinute,
                         short& nEndSecond);

    /// Moves the thumb of the 24-hour scale.
    void SetTimerSliderPose(short& nHour, short& nMinute, short& nSecond);

    /// The time at the thumb of the 24-hour scale, on the clock that the application's colours are told by;
    /// the scale's end is 23:59:59. Not valid without a playback toolbar.
    QTime SelectedTime();

    /// Moves the thumb of the 24-hour scale. Nothing happens if the time isn't valid or while the user holds
    /// the thumb, which moves once the scale has been painted.
    void SetSelectedTime(QTime time);

    /// Hands the day's colours to the 24-hour scale; a table of any other size than 86400 is refused with a
    /// warning. The table is copied.
    void SetTimerPeriod(const QVector<QRgb>& colors);

    /// Hands the day's colours to the 24-hour scale: 86400 QRgb values, one for each second from midnight.
    void SetTimerPeriod(unsigned int* pColors);

    /// Adds a widget of the application to the live toolbar, behind its first button.
    void addWidget(QWidget* pWidget);

    /// Adds a widget of the application to the live toolbar, at a place of its row.
    void insertWidget(int nIndex, QWidget* pWidget);

    /// Escape leaves full screen; every other key is dropped.
    void keyPressEvent(QKeyEvent* event) override;

public Q_SLOTS:
    /// Selects a built-in layout as SetShowWndNo() does, without telling the live toolbar.
    void slot_changePageNo(int nNum);

    /// Selects a layout by reference: `type` 0 a normal one, any other a custom one; `no` 0 to 9. A layout of
    /// more panes than the deck has is refused. For a normal layout sig_wndNumberChanged fires twice.
    void slot_changePageNo(int type, int no);

Q_SIGNALS:
    /// A layout was selected; a page now has `nNum` panes. The live toolbar repeats the number of a refused
    /// one too.
    void sig_wndNumberChanged(int nNum);

    /// The active pane has changed to the one given. In a right press the window must not be deleted.
    void sig_activeWnd(int nWndIndex);

    /// Right press on a pane, after it was made active. The window must not be deleted.
    void sig_OnRightMouseClick(int nWndIndex);

    /// A button of the title bar was clicked for the pane that it serves, or one of the toolbar for the
    /// active pane.
    void sig_OnWndBtnClick(int nWndIndex, Btn_type_EX btnType);

    /// The pause button of the pane's instant playback bar; true when it is now pressed in.
    void sig_btnStopClick(int nWndIndex, bool bPause);

    /// The close button of the pane's instant playback bar. The bar stays until ClosePlayBackSlider().
    void sig_btnCloseClick(int nWndIndex);

    /// Never fires.
    void sig_OnDbWndClick(int nWndIndex);

    /// The playback toolbar's file view was released at 0 to 1000, for the active pane; -1 if there is none.
    void sig_SliderMoved(int nWndIndex, int nValue);

    /// A PTZ command, 0 centre, 1 up, 2 down, 3 left, 4 right, 5 left-up, 6 left-down, 7 right-up, 8
    /// right-down, 9 wheel forward, 10 wheel backward; `nType` 0 starts it, 1 stops it.
    void sig_SendPtzCommand(int nWndIndex, int nCommand, int nType);

    /// A rectangle is being drawn on the pane, in the picture's coordinates; both points (0, 0) at its end.
    void sig_RectanglePoint(int nWndIndex, QPoint ptStart, QPoint ptCur);

    /// A rectangle was drawn on the pane.
    void sig_SelectRegion(int nWndIndex, QPoint ptStart, QPoint ptEnd);

    /// A double click on the pane was handled.
    void sig_DbClickWnd(int nWndIndex);

    /// The toolbar's audio control moved, for the active pane; -1 if there is none.
    void sig_VoiceChanged(int nWndIndex, int nValue);

    /// A device row was dropped on the pane.
    void sig_DragEvent(QTreeWidgetItem* pItem, int nWndIndex);

    /// Double click on the 24-hour scale, for the active pane; -1 if there is none.
    void sig_TimerSliderdbClicked(int nWndIndex);

    /// The 24-hour scale's thumb was released at a new time, which GetSelectedTime() gives.
    void sig_TimerSliderReleased(int nWndIndex);

    /// Never fires.
    void sig_ChangeViewType(int nViewType);

    /// A pane was dragged onto another one. Nothing has moved: the application decides what follows.
    void sig_ChangeWnd(int nSrcWnd, int nDisWnd);

    /// The playback toolbar's download button.
    void sig_btnDownload_click();

    /// A mouse event of a pane in mouse message mode, in the picture's coordinates. Type 0 left, 1 right,
    /// 2 double click, 3 move; `nDownUp` 0 down, 1 up. In a right press the window must not be deleted.
    void sig_sendMouseMsg(int nMouseType, int nDownUp, QPoint pt);

    /// The active pane is about to be set, perhaps to the same one; the argument is the old one. In a right
    /// press the window must not be deleted.
    void sig_Activechangebefor(int nWndIndex);

    /// Full screen was entered or left, or the deck's own window state has changed.
    void sig_OnStateChanged(Qt::WindowStates eState);

    /// One page step: the new page from 0, its panes, and the button last pressed, 7 back or 8 forward. The
    /// old page is hidden by now, the new one not yet shown.
    void sig_SwitchVideo(int pageNum, int wndNum, int pageType);

    /// The slider of the pane's instant playback bar was released at 0 to 1000.
    void sig_ReplaySeek(int nWndIndex, int nValue);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private Q_SLOTS:
    void slot_setActiveWnd(int nWndIndex);
    void slot_OnRightMouseClick(int nWndIndex);
    void slot_OnWndBtnClicked(int nWndIndex, Btn_type_EX btnType);
    void slot_btnStopClick(int nWndIndex, bool bPause);
    void slot_btnCloseClick(int nWndIndex);
    void slot_OnWndBtnClicked(Btn_type_EX btnType);
    void slot_dbWndClick(int nWndIndex, int nParam);
    void slot_SliderMoved(int nValue);
    void slot_VoiceChanged(int nValue);
    void slot_TimerSliderMoved();
    void slot_TimerSliderDbClick();
    void slot_MouseBtnRelease();
    void slot_wndfullScreen();

private:
    friend class CVideoWidget;
    friend struct DeckDrag;
    friend struct DeckFullScreen;
    friend struct DeckPages;

    CVideoWidget* GetVideoWidget(int nWndIndex);
    int GetTotalPages();
    void updatePages();
    void CalcPageRect(QRect& rcOut, int nIndex, QRect rcDisplay);
    int PointAtTheWind(QEvent* event);
    void SetWndRecord(int nWndIndex, bool bCheck);
    void SetWndAudio(int nWndIndex, bool bCheck);
    void SetWndPlay(int nWndIndex, bool bCheck);

    int m_nLayout[2] = {0, 0};
    CVideoTitleWidget* m_pTitle = nullptr;
    int m_nTitleWnd = -1;
    int m_nFullScreen = 0;
    int m_nWndCount = 0;
    int m_nPageWnds = 0;
    QList<CVideoWidget*> m_listWnd;
    int m_eShowMode = WND_SHOW_SPLIT;
    int m_nActiveWnd = -1;
    int m_eType = WND_TYPE_MONITOR;
    CMonitorToolBar* m_pMonitorBar = nullptr;
    CPlaybackToolBar* m_pPlaybackBar = nullptr;
    QWidget* m_disPlayRect = nullptr;
    QMap<int, int> m_mapDrag;
    bool m_bDragging = false;
    int m_nDragWnd = 0;
    int m_nPage = 0;
    int m_nMouseWnd = -1;
    int m_nPageType = 0;
    std::unique_ptr<DeckMore> m_pMore; ///< all that came later
};
