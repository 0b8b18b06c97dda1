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
/// pane makes an operation do nothing, or give the value told with it; no operation reports an error.
///
/// Threads: all operations but PostFrame() belong to the GUI thread, and all signals fire there, inside the
/// call or the event that causes them. A receiver may call back into the deck, or delete it. A right press
/// alone asks for more care: Qt goes on with the window after it. A receiver of a signal that comes from one
/// must not delete that window, be it the deck's parent or the deck itself, which in full screen is a window
/// too; deleteLater() is safe.
///
/// Pictures: buttons, cursors and thumb come from files of the installation, see SetInstallation(). Without
/// it all works, but buttons are blank and the 24-hour scale has no thumb to drag. Many of the default
/// installation's are SVG, which Qt reads by a plugin of its own: without that the buttons are blank too.
/// Installation, skin, words and layouts are those of the process, shared by all its decks.
///
/// Accessibility: a screen reader finds each pane with its number from 1 and its title as the name, what it
/// does ("playing, recording") as the description, and the active one as selected; an accessible name that
/// the application gives a pane goes before. The 24-hour scale is a slider whose value is a time: setting it
/// counts as a release of its thumb.
class PANEDECK_EXPORT CPaneDeck : public QWidget
{
    Q_OBJECT

public:
    /// Builds a deck of `nCount` panes, all hidden; neither the kind nor the number changes later. It reads
    /// the user's layouts from the split file, every deck anew, so an application may write that file before.
    /// Without a parent it is a window.
    explicit CPaneDeck(QWidget* parent = nullptr, _WND_TYPE type = WND_TYPE_MONITOR, int nCount = 64);
    /// Deletes the panes and toolbars, and with them every widget that GetHWND() gave out or addWidget()
    /// took; the references to frames go too. Threads that call PostFrame() must have been stopped before.
    ~CPaneDeck() override;

    /// Names the text file that all words of the library come from: lines "key=text" below "[String]", in the
    /// encoding of the system's locale with Qt 5 and in UTF-8 with Qt 6; a text ends before another "=". It
    /// is read at once and for good: only the first path that isn't empty counts, even if there is no such
    /// file. Call it before the first deck is made: most words are read while a deck is built and stay.
    /// Without a file, or for a key that it lacks, the key itself is shown.
    static void SetLanguageFile(QString path);

    /// Chooses another skin, 1 dark or 2 light, in place of the one that the installation's configuration
    /// names, and another text file, for the decks that are made from then on; any other number, and an empty
    /// path, leave it as it is. A deck that is there already keeps its words and its sheets, but not all of
    /// its pictures: make it anew. SetInstallation() comes before it.
    static void ChangeLook(int nStyle, QString strLanguageFile);

    /// Says where the installation lies: the directory that holds "Organization", "Resources" and the styles'
    /// own, "ResourcesBlank" and "ResourcesWhite", and the directory that the user's layouts are kept in, as
    /// "SplitInfo.xml"; it is made when it is first needed. A file of layouts in the latter wins over the one
    /// in "Organization" of the installation. An empty `directory` stands for the one above the program's
    /// own, an empty `writableDirectory` for "Organization" of the installation. A relative path counts from
    /// the current directory at the time of the call. Call it once, before the first deck is made: after that
    /// it is refused with a warning. Layouts that can't be written last until the next deck is made; nobody
    /// is told.
    static void SetInstallation(QString directory, QString writableDirectory);

    /// Shows the first page of the built-in layout of 1, 4, 6, 8, 9, 16, 25, 36, 49 or 64 panes; 32 stands
    /// for 36. Any other number, or one above the deck's panes, is refused without a signal. The active pane
    /// stays if it lies on the first page, for 32 if it is one of the first 32; otherwise pane 0 becomes
    /// active. Signals, in this order: sig_Activechangebefor and sig_activeWnd if pane 0 becomes active, then
    /// sig_wndNumberChanged. The panes are placed after that.
    void SetShowWndNo(int nNum);

    /// Makes a pane active; -1 for none. Any other index that names no pane is stored all the same. The page
    /// stays: an active pane may lie on another one. Signals, in this order: sig_Activechangebefor, always;
    /// sig_activeWnd if it is another pane.
    void SetActiveWnd(int nWndIndex);

    /// The active pane as it was last set, -1 if there is none. A press on a pane sets it, and so does the
    /// first layout.
    int GetCurrentWnd();

    /// The same as GetCurrentWnd().
    int activeWndNo();

    /// The QWidget on which the pane's picture lies, not a native window id: owned by the deck, the same as
    /// long as the deck lives, fitted to the pane's scale mode. Null if the index names no pane.
    ///
    /// SetFrame() is the ordinary way to show something on it. By the meta-object it also has the slot
    /// slot_BufferChange(ulong,int,int), for frames that the caller keeps alive itself: address, width and
    /// height of RGB888 pixels whose rows start on 32-bit boundaries. Nothing is copied: they must stay valid
    /// and unchanged until the next call, through ResetWnd() too; an address of 0 lets go of them. In a pane
    /// in use (EnableRefresh) such a frame is painted only if the handle's updates are switched on around
    /// each call: setUpdatesEnabled(true), the slot, setUpdatesEnabled(false). The slot tells nobody the
    /// video's size; emit the handle's signal sig_VideoResize(int,int) for that. Where unsigned long can't
    /// hold an address, as on 64-bit Windows, the slot is of no use and SetFrame() is the way. Emitting the
    /// handle's signal sig_sendClose() counts as a click on BTN_STOP for this pane.
    void* GetHWND(int nWndIndex);

    /// What GetHWND() gives, as a widget, not to be deleted. What an application lays over the picture is no
    /// child of it but of its parentWidget(): in a pane in use the widget's children don't show.
    QWidget* PaneWidget(int nWndIndex) { return static_cast<QWidget*>(GetHWND(nWndIndex)); }

    /// Shows a frame in the pane, the ordinary way. GUI thread. It shows whether the pane is in use
    /// (EnableRefresh) or not, over the status text, and the pane keeps a reference to the image until the
    /// next frame or a null one, which clears; ResetWnd() doesn't let go of it. An image over memory of the
    /// application's own must stay valid, or clean up, until then.
    ///
    /// RGB888, at any distance of the rows, and RGB32, at any that keeps pixels on 32-bit boundaries, are
    /// painted without a copy or a conversion; others are converted once, here, an alpha channel being
    /// dropped. The frame is scaled, by its nearest pixels, to the picture's place in the pane when that is
    /// painted: once for a number of frames that came before it.
    ///
    /// `source` is the part of the frame that fills the pane's picture, in the frame's pixels, all of it by
    /// default: digital zoom costs no copy. What lies outside of the frame is left out; a rectangle of which
    /// nothing is left shows all. Mouse positions that the deck reports stay those of the whole frame.
    ///
    /// The first frame, and the first one of another size, set the video size that the scale mode
    /// WND_SCASE_VIDEO goes by, the size of the whole frame. A receiver of the handle's sig_VideoResize may
    /// delete the deck.
    void SetFrame(int nWndIndex, const QImage& frame, QRect source = QRect());

    /// The same for a frame that is a scaled copy of a video of another size, which is told in the frame's
    /// place: a frame made in PaneWidget()'s device pixels is painted as it is. An empty size is the frame's.
    void SetFrame(int nWndIndex, const QImage& frame, QRect source, QSize videoSize);

    /// The same from any thread: of the frames for a pane the newest is shown once the GUI thread comes to
    /// it, and what it overtook is dropped unseen, so at most one waits per pane. Frames of several panes
    /// that wait together are shown together. The pixels must not change after the call, and memory of the
    /// application's own may be cleaned up in either thread. A frame may still wait when ResetWnd() or
    /// SetFrame() is called, and is shown after it: stop posting, let the event loop run, then clear. Whoever
    /// posts must have stopped before the deck is deleted.
    void PostFrame(int nWndIndex, QImage frame, QRect source = QRect());

    /// The same for a scaled copy of a video of another size, from any thread.
    void PostFrame(int nWndIndex, QImage frame, QRect source, QSize videoSize);

    /// Width and height of the pane, not of the picture in it, in device-independent pixels, as it was last
    /// placed; a pane of another page may have an old size. Both stay as they were if the index names no
    /// pane.
    void GetWindowRect(int nWndIndex, int& nWidth, int& nHeight);

    /// One page forward; nothing, without a signal, on the last one. The active pane stays as it is. Panes
    /// that don't fill a last page aren't reached. An enlarged pane goes back to its cell. Signal:
    /// sig_SwitchVideo, after the old page was hidden and before the new one shows.
    void OnNextPage();

    /// One page back; nothing, without a signal, on the first one. Otherwise as OnNextPage().
    void OnPreviePage();

    /// Tells whether the page is split, has one pane only, or shows one pane enlarged. After the title bar's
    /// close button or setMousMsg() have split the page, one of a single pane counts as split. Full screen is
    /// told apart from it, by sig_OnStateChanged.
    void GetShowMode(__WND_SHOW_MODE& eMode);

    /// The layout that was selected last, as slot_changePageNo(int,int) takes it: `nType` 0 a normal one or 1
    /// a custom one, `nNo` 0 to 9. Both are 0 before the first.
    void GetLayout(int& nType, int& nNo);

    /// Marks on the toolbar of a live or tour deck the layout that is shown; a custom one on the button
    /// behind which it is chosen. By itself the toolbar marks what its own buttons, or in a live deck
    /// SetShowWndNo(), chose last. Called whenever sig_wndNumberChanged fires, it keeps the mark true.
    /// Nothing before the first layout, nor in other decks. No signal.
    void ShowLayoutMark();

    /// Opens the dialog in which the user shapes the ten custom layouts, the same as the picker's own button
    /// does, and returns once it is left. It goes by keys too: Tab reaches the layout, arrows go from square
    /// to square, with Shift they select, Space joins the selected cells, Ctrl and an arrow cut a cell.
    /// Signal: sig_LayoutEdited, while it is open; its receiver may delete the deck.
    void EditLayouts();

    /// Enters or leaves mouse message mode: the pane fills the screen and its mouse events arrive as
    /// sig_sendMouseMsg. Set the pane's function to 0 before, as PTZ and rectangle keep the left press for
    /// themselves (SetFunctionParam). Escape and the title bar's close and remote control buttons leave it
    /// too. Leaving ends full screen and splits the page, even if the pane wasn't in the mode. Signal:
    /// sig_OnStateChanged on entering, and on leaving by Escape or ChangeFull(); none on leaving by this call
    /// or a button.
    void setMousMsg(int nWndIndex, bool bMouseMsg);

    /// Whether the pane is in mouse message mode; false if the index names no pane.
    bool mousMsg(int nWndIndex);

    /// Makes the deck a frameless window over the screen under the cursor, or puts it back into its parent,
    /// whose layout must size it again. The layout of the panes stays, the toolbar goes. Escape leaves, the
    /// toolbar's button enters. Signal: sig_OnStateChanged, before the deck is placed and shown. Leaving
    /// shows the deck even if it wasn't in full screen.
    void ChangeFull(bool bFull);

    /// Whether the deck is a full screen window, by the user or by ChangeFull(true).
    bool IsFull();

    /// Exchanges scale mode and video size of two panes; their titles, check states and pictures stay. With
    /// frames of different sizes the next SetFrame() of a size that the pane didn't have puts its video size
    /// right. The answer to sig_ChangeWnd is the application's: it also shows each stream in the other pane.
    void ExchangeDisplay(int nSrcWnd, int nDisWnd);

    /// Lays the title bar over the pane and fills it from the pane. The library does so itself when the mouse
    /// enters a pane in use, or any pane of an alarm deck; never in a tour deck.
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

    /// A click on a button of the title bar, for the pane that it serves; nothing while it serves none.
    /// Signal: sig_OnWndBtnClick.
    void slot_wndBtnClick(Btn_type_EX btnType);

    /// Brings the pane back to idle: no title, text, speed, function, check state or instant playback bar,
    /// and its own updates on, so that it is no longer in use. A frame stays: SetFrame() with a null image,
    /// or the old slot with 0, clears it, and only after that may memory of the application's own go. For the
    /// active pane of a playback deck the toolbar is disabled too, until SetToolBtnEnable(), with an empty
    /// scale at 0:00.
    void ResetWnd(int nWndIndex);

    /// Sets the status text over the pane's picture, empty for none. It shows while no frame is set and the
    /// pane isn't in use, centred, an eighth of the picture's height, red, in a tour deck white.
    void SetMessage(int nWndIndex, QString strText);

    /// Sets the pane's title, which the title bar shows when it comes to the pane, or at once if it serves
    /// it. ResetWnd() clears it.
    void SetTitle(int nWndIndex, QString strTitle);

    /// Sets the text that the tips of the faster and slower buttons end with, for the pane while it is
    /// active: `nSpeed` is 1024 for 1X, 2048, 4096, 8192 for 2X to 8X and 512, 256, 128 for 1/2X to 1/8X; any
    /// other value but 0 (1X) clears it. It changes no speed: that is the application's. Playback decks only.
    void SetSpeedInfo(int nWndIndex, int nSpeed);

    /// Sets what the mouse does on the pane: 0 or -1 nothing, 1 PTZ (sig_SendPtzCommand), 2 rectangle
    /// (sig_RectanglePoint, sig_SelectRegion). Other values leave the function as it is. In a live or tour
    /// deck a pane can be dragged onto another (sig_ChangeWnd) at first and whenever the last value given
    /// here was 0: ResetWnd() takes the function away and leaves that as it was.
    void SetFunctionParam(int nWndIndex, int nParam);

    /// Whether the pane paints itself, that is, isn't in use; false if the index names no pane.
    bool UpdateEnable(int nWndIndex);

    /// Turns the pane's own painting on or off; on at first. A pane whose painting is off counts as in use:
    /// idle picture and status text don't show, and the mouse brings up the title bar. Frames of SetFrame()
    /// and PostFrame() show either way. Turn it off when a stream starts; ResetWnd() turns it on again.
    void EnableRefresh(int nWndIndex, bool bEnable);

    /// The pane's check state for BTN_RECORD, BTN_AUDIO or BTN_ZOOM; false for any other button,
    /// BTN_INSTANT_PLAYBACK included, or if the index names no pane.
    bool btncheck(int nWndIndex, Btn_type_EX btnType);

    /// Sets the pane's check state for BTN_RECORD, BTN_AUDIO or BTN_ZOOM and shows it in the title bar. No
    /// signal.
    void SetBtnCheck(int nWndIndex, Btn_type_EX btnType, bool bCheck);

    /// Toggles the pane's check state for BTN_RECORD, BTN_AUDIO or BTN_ZOOM. No signal.
    void setBtnCheck(int nWndIndex, Btn_type_EX btnType);

    /// Sets the ratio that the pane's picture is fitted to, WND_SCASE_FILL at first; the picture is stretched
    /// to that ratio. WND_SCASE_VIDEO takes the video size that SetFrame() sets. Note the order: the pane
    /// comes last.
    void setScaseType(WndScase eScale, int nWndIndex);

    /// The scale mode of the pane's picture; WND_SCASE_FILL if the index names no pane.
    WndScase getScaseType(int nWndIndex);

    /// Opens the instant playback bar below the pane's picture, which gets smaller by its height; nothing
    /// more if it is open. The library never opens it by itself: the button BTN_INSTANT_PLAYBACK only reports
    /// its click.
    void OpenPlayBackSlider(int nWndIndex);

    /// Closes the instant playback bar; it is no longer the pane's when the call returns. Safe in the bar's
    /// own signals.
    void ClosePlayBackSlider(int nWndIndex);

    /// Shows a position in the pane's instant playback bar: `nPos` from 0 to 1000, clamped, `lTime` in
    /// seconds since 1970 UTC, shown in the slider's tip as the machine's local time. Nothing happens while
    /// the bar is closed or its slider is held. No signal.
    void SetPlayBackSliderPos(int nWndIndex, int nPos, long lTime);

    /// Shows or hides the alarm mark, 74 by 74 pixels, in the upper right corner of the pane. It stays
    /// through ResetWnd().
    void ChangeFreeze(int nWndIndex, bool bFreeze);

    /// Sets the status text over the pane's picture, as SetMessage() does, in a deck of any kind.
    void setAlarm(int nWndIndex, QString strText);

    /// Sets the pane's status text to `nCount` and the word for channels of the language file, as
    /// SetMessage() does.
    void setTour(int nWndIndex, int nCount);

    /// Clears the status text of all panes, on every page.
    void clearText();

    /// The speed text of the active pane that SetSpeedInfo() chose, such as "1/2X"; empty if no pane is
    /// active.
    QString GetSpeedInfo();

    /// Sets a pane's state for BTN_RECORD or BTN_AUDIO, and of a playback deck's active pane the toolbar's
    /// button for these two or BTN_PLAY. `nState` is 0 off or 1 on; -1 for record disables the toolbar's
    /// button, until SetToolBtnEnable(), and counts as on for the pane. An index of -1 reaches the toolbar
    /// alone, while no pane is active. No signal.
    void SetWndBtnState(int nWndIndex, Btn_type_EX btnType, int nState);

    /// Moves the slider of the playback toolbar's file view, 0 to 1000, clamped; dropped if the pane isn't
    /// active or the user holds the slider. No signal.
    void SetProgressValue(int nWndIndex, int nValue);

    /// Moves the audio control of the playback toolbar, 1 to 10, 1 at first, clamped; dropped if the pane
    /// isn't active. Another value than before comes back as sig_VoiceChanged.
    void SetVoiceValue(int nWndIndex, int nValue);

    /// Enables or disables the playback toolbar's transport, record, clip, snapshot and file slider
    /// (`bEnable`) and its audio controls (`bAudio`). Disabling the former also unchecks them, empties the
    /// scale and puts its thumb to 0:00; disabling the latter unchecks audio. Open, download, the 24-hour
    /// scale, layout buttons and full screen are always enabled. All is enabled at first.
    void SetToolBtnEnable(bool bEnable, bool bAudio);

    /// Chooses between the file view and the 24-hour scale of the playback toolbar; the scale shows at first.
    void ChangePlaybackViewType(PlaybackViewType eType);

    /// The time at the thumb of the 24-hour scale, then the end of the day, 23, 59 and 59. The scale's right
    /// end gives 23, 59, 59. While the user drags the thumb it follows. Without a playback toolbar all six
    /// stay as they were. SelectedTime() says the same in less.
    void GetSelectedTime(short& nHour, short& nMinute, short& nSecond, short& nEndHour, short& nEndMinute,
                         short& nEndSecond);

    /// Moves the thumb of the 24-hour scale as SetSelectedTime() does; 24, 0, 0 is its right end. More is
    /// dropped; the three are only read. They must be a real time: nothing else is checked.
    void SetTimerSliderPose(short& nHour, short& nMinute, short& nSecond);

    /// The time at the thumb of the 24-hour scale, to the second, 0:00 at first. The scale knows neither date
    /// nor time zone: it is on the clock that the application's colours are told by. Its right end is
    /// 23:59:59. Not valid without a playback toolbar.
    QTime SelectedTime();

    /// Moves the thumb of the 24-hour scale; no signal. Nothing happens if the time isn't valid or while the
    /// user holds the thumb, so playback may report its time at any moment. SelectedTime() gives the time at
    /// once; the thumb stands there only once the scale has been painted at its present size.
    void SetSelectedTime(QTime time);

    /// Hands the day's colours to the 24-hour scale, one entry for each second from midnight. An entry is a
    /// QRgb whose top byte has no effect; the meaning of colours is the application's. Grey (128, 128, 128),
    /// 0xff808080, is what an empty scale has; 0 is black, so fill the table with grey first. The table is
    /// copied and replaces the one before; hand it over again when it grows. Where several colours share a
    /// pixel the first one that reaches it shows. A table of any other size than 86400 is refused with a
    /// warning; without a playback toolbar nothing happens.
    void SetTimerPeriod(const QVector<QRgb>& colors);

    /// The same from an array of 86400 entries, which is copied and only read; its size can't be checked. Not
    /// null.
    void SetTimerPeriod(unsigned int* pColors);

    /// Which view the playback toolbar shows. PLAYBACK_VIEW_TIMER without such a toolbar.
    PlaybackViewType GetPlaybackViewType();

    /// Where the slider of the playback toolbar's file view stands, 0 to 1000; -1 without such a toolbar.
    int GetProgressValue();

    /// Where the playback toolbar's audio control stands, 1 to 10; -1 without such a toolbar.
    int GetVoiceValue();

    /// Whether the playback toolbar's button that tells of itself as `btnType` can be clicked, or is checked;
    /// false without such a button.
    bool IsToolBtnEnabled(Btn_type_EX btnType);
    bool IsToolBtnChecked(Btn_type_EX btnType);

    /// Where the 24-hour scale is seen, in the deck's coordinates; null while it isn't.
    QRect TimeScaleRect();

    /// Where the whole day lies, from midnight to midnight, in the deck's coordinates: second s is at left()
    /// + s * width() / 86400. It is as wide as TimeScaleRect(), or wider while the user has zoomed the scale,
    /// and then only a part of it is seen. Null while the scale isn't seen.
    QRect DayRect();

    /// Zooms and pans the scale so that DayRect() gets this left end and width: up to 200 times as wide as
    /// TimeScaleRect(), which stays covered. Dropped while the scale isn't seen. Signal: sig_DayRectChanged,
    /// later.
    void SetDayRect(int nLeft, int nWidth);

    /// Adds a widget of the application to the live toolbar, behind its first button, before those that were
    /// added earlier. The toolbar becomes its parent and owner. Only live and tour decks; else the widget
    /// stays the caller's.
    void addWidget(QWidget* pWidget);

    /// Adds a widget of the application to the live toolbar, at a place of its row, from 0; a negative one is
    /// the end. The stretch behind the first button counts as a place. Otherwise as addWidget().
    void insertWidget(int nIndex, QWidget* pWidget);

    /// Escape does what ChangeFull(false) does, in full screen or not; every other key is dropped, and not
    /// passed to the parent either.
    void keyPressEvent(QKeyEvent* event) override;

public Q_SLOTS:
    /// Selects a built-in layout as SetShowWndNo() does, with the same signals, without telling the live
    /// toolbar.
    void slot_changePageNo(int nNum);

    /// Selects a layout by reference: `type` 0 a normal one, any other a custom one; `no` 0 to 9. A custom
    /// layout of more panes than the deck has, or of none, is refused without a signal. Signals as of
    /// SetShowWndNo(); for a normal layout sig_wndNumberChanged fires once more before all others, even if
    /// the deck then refuses it.
    void slot_changePageNo(int type, int no);

Q_SIGNALS:
    /// A layout was selected; a page now has `nNum` panes. It fires after sig_activeWnd and before the panes
    /// are placed, once for SetShowWndNo(), twice for a click on a split button of the live or tour toolbar:
    /// the second time after the panes were placed, and then also for a number that was refused. For a normal
    /// layout by reference (slot_changePageNo(int,int), the picker) it fires before and after sig_activeWnd.
    void sig_wndNumberChanged(int nNum);

    /// The active pane has changed to the one given; -1 for none. It fires after sig_Activechangebefor and
    /// before whatever the press or the layout causes next. In a right press the window must not be deleted.
    void sig_activeWnd(int nWndIndex);

    /// Right press on the picture of a pane that isn't in mouse message mode, after sig_Activechangebefor and
    /// sig_activeWnd; where the scale mode leaves room beside the picture it does nothing. The place for a
    /// menu. The window must not be deleted.
    void sig_OnRightMouseClick(int nWndIndex);

    /// A button was clicked: one of the title bar for the pane that it serves, one of the toolbar for the
    /// active pane.
    ///
    /// From the title bar: BTN_RECORD, BTN_SNAPSHOT, BTN_AUDIO, BTN_INSTANT_PLAYBACK, BTN_ZOOM and
    /// BTN_CLOSE_VIDEO in a live deck; BTN_SNAPSHOT, BTN_ZOOM and BTN_CLOSE_VIDEO in a playback deck; in an
    /// alarm deck one click on its only button gives BTN_CLOSE_VIDEO, then, after the pane was made active,
    /// BTN_STOP. The check state of record, audio and zoom has been toggled by then: btncheck() gives the new
    /// one, SetBtnCheck() takes it back. Before BTN_CLOSE_VIDEO the pane has left mouse message mode and the
    /// deck full screen, without sig_OnStateChanged, and the page is split again. The pane itself isn't
    /// reset.
    ///
    /// From a live deck's toolbar: BTN_SAVE_VIEW. From a playback deck's: BTN_STOP, BTN_RECORD, BTN_SNAPSHOT,
    /// BTN_AUDIO, BTN_OPEN, BTN_PLAY, BTN_QUICK, BTN_SLOW, BTN_SPLIT_1 to BTN_SPLIT_9, which select no
    /// layout, and BTN_TIME_CLIP. Play, record and audio are checkable, and SetWndBtnState() puts them right.
    /// A click is dropped while no pane is active or, but for BTN_SAVE_VIEW, while the active pane lies on a
    /// later page.
    ///
    /// The handle's sig_sendClose() arrives as BTN_STOP.
    void sig_OnWndBtnClick(int nWndIndex, Btn_type_EX btnType);

    /// The pause button of the pane's instant playback bar; true when it is now pressed in. Live decks are
    /// its use, but any pane may have the bar.
    void sig_btnStopClick(int nWndIndex, bool bPause);

    /// The close button of the pane's instant playback bar. The bar stays until ClosePlayBackSlider(), which
    /// may be called here.
    void sig_btnCloseClick(int nWndIndex);

    /// Never fires; sig_DbClickWnd does.
    void sig_OnDbWndClick(int nWndIndex);

    /// The playback toolbar's file view was released at 0 to 1000, for the active pane; -1 if there is none.
    /// Nothing fires while the slider is dragged.
    void sig_SliderMoved(int nWndIndex, int nValue);

    /// A PTZ command of a pane whose function is 1: 0 centre, 1 up, 2 down, 3 left, 4 right, 5 left-up, 6
    /// left-down, 7 right-up, 8 right-down, 9 wheel forward, 10 wheel backward; `nType` 0 starts it, 1 stops
    /// it.
    ///
    /// A press starts the command of the zone under the cursor, before it makes the pane active; the release
    /// stops it, or whatever keeps the release from coming, such as a dialog, a menu or a window that hides.
    /// Dragging into another zone stops the old command before it starts the new one, in this order. Off the
    /// picture every move stops once more, of command 0 too. Dragging out of the centre starts a direction
    /// without a stop of command 0. So take a stop as a stop of whatever moves. A wheel command starts with
    /// the first notch and stops by a timer, one second later or, while the wheel turns, after that.
    void sig_SendPtzCommand(int nWndIndex, int nCommand, int nType);

    /// A rectangle is being drawn on a pane whose function is 2: the corner of the press, then the present
    /// one, every 50 ms while the button is held, though not before the first move or at the picture's left
    /// or top edge. Both points are (0, 0) at the end, right after sig_SelectRegion, or without it if the
    /// release never comes. Points are pixels of the picture as it stands in the pane, PaneWidget() from
    /// (0, 0); divide by its size and multiply by the frame's for pixels of the frame. While SetFrame() shows
    /// a part they are where they would be if the whole frame showed.
    void sig_RectanglePoint(int nWndIndex, QPoint ptStart, QPoint ptCur);

    /// A rectangle was drawn on the pane: the corner of the press, then that of the release, in any order of
    /// left and right, as sig_RectanglePoint counts them. After a click without a move the second one is (-1,
    /// -1); no sig_RectanglePoint has come before it then. sig_RectanglePoint with (0, 0) twice follows.
    void sig_SelectRegion(int nWndIndex, QPoint ptStart, QPoint ptEnd);

    /// A double click on the pane was handled: the pane fills the page, or the page is split again, before
    /// this fires; neither happens in a page of one pane or in a pane whose function is 2. It doesn't fire in
    /// a tour deck or in mouse message mode. Its first click has made the pane active before.
    void sig_DbClickWnd(int nWndIndex);

    /// The user has set the playback toolbar's audio control to another value, 1 to 10, told at the end of a
    /// drag, or SetVoiceValue() has changed it. It is for the active pane; -1 if there is none.
    void sig_VoiceChanged(int nWndIndex, int nValue);

    /// A device row was dropped on the pane: of a drag with the mime text "0" one whose record has type 2, or
    /// which has 3 at role 34, on a pane of any kind; with the text "2" one that has 2 at role 35, in a tour
    /// deck only (see CDeviceTreeWidget). The row belongs to its tree, and the drag isn't over yet: a
    /// receiver that deletes it does so later. The active pane stays as it is.
    void sig_DragEvent(QTreeWidgetItem* pItem, int nWndIndex);

    /// Double click on the strip of the 24-hour scale, for the active pane; -1 if there is none. The thumb
    /// has moved there: SelectedTime() gives the time. sig_TimerSliderReleased doesn't fire with it.
    void sig_TimerSliderdbClicked(int nWndIndex);

    /// The 24-hour scale's thumb was released, for the active pane; -1 if there is none. SelectedTime() gives
    /// the time. Nothing fires while it is dragged.
    void sig_TimerSliderReleased(int nWndIndex);

    /// Never fires.
    void sig_ChangeViewType(int nViewType);

    /// A pane was dragged onto another one of the page, in a live or tour deck. Nothing has moved: the
    /// application decides what follows, such as ExchangeDisplay(). It fires at the release, after the press
    /// has made the first one active.
    void sig_ChangeWnd(int nSrcWnd, int nDisWnd);

    /// The playback toolbar's download button, whether a pane is active or not.
    void sig_btnDownload_click();

    /// A mouse event of the pane in mouse message mode. Type 0 left, 1 right, 2 double click, 3 move with the
    /// left button held, at most one in 100 ms; `nDownUp` 0 down, 1 up (a double click has 0, a move 1). A
    /// left press is told before it makes the pane active; a right one makes nothing active. `pt` is in
    /// pixels of the picture as it stands in the pane, as sig_RectanglePoint counts them; a double click's
    /// counts from the pane's corner. In a right press the window must not be deleted.
    void sig_sendMouseMsg(int nMouseType, int nDownUp, QPoint pt);

    /// The active pane is about to be set, perhaps to the same one; the argument is the old one, -1 if there
    /// was none. At a left press the start of a PTZ command or a mouse message has been told before;
    /// sig_activeWnd follows if it is another pane. In a right press the window must not be deleted.
    void sig_Activechangebefor(int nWndIndex);

    /// Full screen is about to be entered (Qt::WindowFullScreen) or was left (Qt::WindowNoState), told before
    /// the deck is shown again, or the deck's own window state has changed. Qt::WindowNoState comes with each
    /// Escape and ChangeFull(false), in full screen or not, but not when setMousMsg() or the title bar's
    /// close button puts the deck back. In full screen the deck's windowState() doesn't say so: it is a
    /// frameless window of the screen's size.
    void sig_OnStateChanged(Qt::WindowStates eState);

    /// One page step: the new page from 0, its number of panes, and the page button last pressed, 7 back or 8
    /// forward, 0 before any; OnNextPage() and OnPreviePage() called by the application leave that as it was.
    /// The old page is hidden by now, the new one not yet shown. The place to stop and start streams.
    void sig_SwitchVideo(int pageNum, int wndNum, int pageType);

    /// The slider of the pane's instant playback bar was released at 0 to 1000. Nothing fires while it is
    /// dragged.
    void sig_ReplaySeek(int nWndIndex, int nValue);

    /// The user has edited a custom layout, 0 to 9, in the dialog that this deck or EditLayouts() opened; it
    /// is in force, and false says that it could not be written and lasts until the next deck is made. It may
    /// be as it was. Panes that are shown in it stay where they are until it is selected again.
    void sig_LayoutEdited(int nNo, bool bSaved);

    /// Full screen was entered or left, in whatever way, be it by the title bar's close button. It fires from
    /// the event loop, once the deck is shown in its new place.
    void sig_FullScreenChanged(bool bFull);

    /// DayRect() or TimeScaleRect() is another: the user has zoomed or panned the 24-hour scale, it has got
    /// another width, or is seen or hidden. It fires from the event loop, once for all that came before. A
    /// deck that only gets another height doesn't fire it.
    void sig_DayRectChanged();

    /// The pointer is over a second of the 24-hour scale, 0 to 86399, and the left button is up; -1 once it
    /// has left the scale.
    void sig_TimePointed(int nSecond);

    /// The thumb of the 24-hour scale is dragged and now at this second, 0 to 86399, as SelectedTime() says.
    void sig_TimeDragged(int nSecond);

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
