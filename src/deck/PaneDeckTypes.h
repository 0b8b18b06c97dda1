#pragma once

/// The kind of a deck; it decides the panes' class and the toolbar.
enum _WND_TYPE : int
{
    WND_TYPE_MONITOR = 0,
    WND_TYPE_ALARM = 1,
    WND_TYPE_PLAYBACK = 2,
    WND_TYPE_TOUR = 3
};

/// How a deck shows its page.
enum __WND_SHOW_MODE : int
{
    WND_SHOW_SPLIT = 0,   ///< every pane of the page in its layout cell
    WND_SHOW_SINGLE = 1,  ///< the page has one pane, which fills the display rectangle
    WND_SHOW_ENLARGED = 2 ///< the active pane fills the display rectangle, the others are hidden
};

/// The buttons of title bar, toolbars and panes; the signal sig_OnWndBtnClick of the deck says which of them
/// arrive from where. The others stay inside the library, or belong to buttons that don't show.
enum Btn_type_EX : int
{
    BTN_STOP = 0,
    BTN_RECORD = 1,
    BTN_SNAPSHOT = 3,
    BTN_AUDIO = 4,
    BTN_INSTANT_PLAYBACK = 5,
    BTN_ZOOM = 6,
    BTN_PREV_PAGE = 7,
    BTN_NEXT_PAGE = 8,
    BTN_CLOSE_VIDEO = 9,
    BTN_SAVE_VIEW = 10,
    BTN_REMOTE_CONTROL = 12,
    BTN_OPEN = 13,
    BTN_PLAY = 14,
    BTN_QUICK = 15,
    BTN_SLOW = 16,
    BTN_CONFIG = 17,
    BTN_SWITCH_BAR = 18,
    BTN_SPLIT_1 = 19,
    BTN_SPLIT_4 = 20,
    BTN_SPLIT_6 = 21,
    BTN_SPLIT_8 = 22,
    BTN_SPLIT_9 = 23,
    BTN_DOWNLOAD = 24,
    BTN_FREEZE_STOP = 25,
    BTN_FREEZE_PLAY = 26,
    BTN_TITLE_STOP = 27,
    BTN_TIME_CLIP = 28
};

/// The messages on a pane's message bus, inside the library.
enum WndMessage_type : int
{
    WNDMSG_SPEED = 1,    ///< playback speed, 1024 is normal
    WNDMSG_TITLE = 3,    ///< first part of the title
    WNDMSG_SUBTITLE = 4, ///< second part of the title
    WNDMSG_TEXT = 5      ///< status text over the picture
};

/// The ratio, width to height, that a pane's picture is fitted to, as large as the pane allows.
enum WndScase : int
{
    WND_SCASE_VIDEO = 0, ///< the video's own size
    WND_SCASE_FILL = 1,  ///< fills the surface
    WND_SCASE_1_1 = 2,
    WND_SCASE_4_3 = 3,
    WND_SCASE_3_4 = 4,
    WND_SCASE_5_4 = 5,
    WND_SCASE_4_5 = 6,
    WND_SCASE_16_9 = 7,
    WND_SCASE_9_16 = 8,
    WND_SCASE_64_9 = 9,
    WND_SCASE_9_64 = 10
};

/// The view of the playback toolbar.
enum PlaybackViewType : int
{
    PLAYBACK_VIEW_FILE = 0, ///< a slider from 0 to 1000 over the playing file
    PLAYBACK_VIEW_TIMER = 1 ///< the 24-hour scale
};
