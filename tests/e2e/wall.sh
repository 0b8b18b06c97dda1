#!/bin/bash
# A day at the live wall: enlarge, exchange, pages, picker, title bar, full screen, and the view kept for tomorrow.
CLIENT=$1
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"

start_screen
start_client
until_true "video in the first pane" shows_video "$(pane 0)"
until_true "video in the second pane" shows_video "$(pane 1)"

# Double click enlarges, a second one gives the layout back.
mark
double_click "$(pane 1)"
expect_log 'live: sig_DbClickWnd\(1\)'
until_true "one pane on screen" has_no_place "$(pane 1)"
mark
double_click "$(pane 0)"
expect_log 'live: sig_DbClickWnd\(1\)'
until_true "nine panes on screen" has_place "$(pane 8)"

# A pane dragged onto another one: the cameras change places.
mark
drag 1 "$(pane 0)" "$(pane 2)"
expect_log 'live: sig_ChangeWnd\(0, 2\)'
expect_log 'live: pane 0 plays Camera 03'
expect_log 'live: pane 2 plays Camera 01'

# Pages.
mark
click btnNext
expect_log 'live: sig_SwitchVideo\(1, 9, 8\)'
expect_log 'live: pane 9 plays Camera 10'
mark
click btnPrive
expect_log 'live: sig_SwitchVideo\(0, 9, 7\)'

# The picker: the second normal layout has four panes.
mark
click btmMoreFrame
until_true "the picker" has_place CSplitCustomDialog
click btnN2
expect_log 'live: sig_wndNumberChanged\(4\)'
until_true "four panes on screen" has_no_place "$(pane 4)"
until_true "video after the switch" shows_video "$(pane 3)"

# The title bar over a playing pane: snapshot, record on and off, close.
show_title "$(pane 3)"
mark
click btnsnapshot
expect_log 'live: sig_OnWndBtnClick\(3, 3\)'
expect_log 'live: snapshot saved: '
saved=$(since_mark | sed -n 's/^live: snapshot saved: //p')
[ "$(identify -format '%m' "$saved")" = PNG ] || fail "the snapshot is no PNG: $saved"
mark
click btnLocalRecord
expect_log 'live: pane 3 is recorded to '
recorded=$(since_mark | sed -n 's/^live: pane 3 is recorded to //p')
until_true "recorded pictures" test -s "$recorded"
click btnLocalRecord
expect_log 'live: recording saved: '
logged "recording saved: $recorded\$" || fail "another file was saved than $recorded"
[ "$(head -c 4 "$recorded" | od -An -tx1 | tr -d ' ')" = 1a45dfa3 ] || fail "no Matroska file: $recorded"
mark
click btninstant
expect_log 'live: instant playback in pane 3'
until_true "the instant playback bar" has_place CTimePlayBackWidget
click btnStop
expect_log 'live: sig_btnStopClick\(3, true\)'
# The handle lies as far from the begin as playback had come, which is the farther the less there was to play.
seek_once() {
    local at
    for ((at = 1; at < 100; at += 2)); do
        drag 1 "SdrTime@$at,50" SdrTime@50,50
        logged 'live: sig_ReplaySeek\(3, ' && return
    done
    return 1
}
until_true "a seek" seek_once
click CTimePlayBackWidget@98,50
expect_log 'live: sig_btnCloseClick\(3\)'
until_true "the bar to go" has_no_place CTimePlayBackWidget
show_title "$(pane 3)"
mark
click btnclose
expect_log 'live: sig_OnWndBtnClick\(3, 9\)'
until_true "an idle pane" shows_no_video "$(pane 3)"

# Full screen and back by Escape.
mark
click btnPVplayer
expect_log 'live: sig_OnStateChanged\(4\)'
until_true "the toolbar to go" has_no_place btnPVplayer
until_true "video in full screen" shows_video "$(pane 0)"
xdotool key Escape
expect_log 'live: sig_OnStateChanged\(0\)'
until_true "the toolbar back" has_place btnPVplayer
until_true "video after full screen" shows_video "$(pane 0)"

# The window in front of a deck that fills the screen: choosing its tab brings the deck back.
mark
click btnPVplayer
expect_log 'live: sig_OnStateChanged\(4\)'
until_true "video in full screen" shows_video "$(pane 0)"
xdotool windowactivate --sync "$(main_window)"
until_true "the window in front" says_nothing_there liveTab
click "tab Live"
expect_log 'live: sig_OnStateChanged\(0\)'
until_true "video in the tab" shows_video "$(pane 0)"

# The view is kept.
mark
click btnSaveView
expect_log 'live: view saved'

# A recording that runs when the program is left is ended; one that can't start says so, each time anew.
show_title "$(pane 1)"
mark
click btnLocalRecord
expect_log 'live: pane 1 is recorded to '
recorded=$(since_mark | sed -n 's/^live: pane 1 is recorded to //p')
until_true "recorded pictures" test -s "$recorded"
mv "${recorded%/*}" "$work/kept"
touch "${recorded%/*}"
for _ in 1 2; do
    show_title "$(pane 0)"
    mark
    click btnLocalRecord
    expect_log "live: cannot write ${recorded%/*}/"
done
mark
stop_client
logged "live: recording saved: $recorded\$" || fail "the recording was not ended"
[ -s "$work/kept/${recorded##*/}" ] || fail "the recording is lost"
start_client
until_true "the kept view" logged_ever 'live: pane 0 plays Camera 03'
stop_client
