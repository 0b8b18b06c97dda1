#!/bin/bash
# The other decks: alarms come up and are taken down, tours step, a pane has its menu and its mouse messages.
CLIENT=$1
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"

start_screen
start_client
until_true "video in the first pane" shows_video "$(pane 0)"

# Alarm: a camera that moves comes up, and the title bar's only button takes it down.
mark
click "tab Alarm"
until_true "the alarm deck" has_place alarmTab
expect_log 'alarm: camera Camera 0[1-8] brought up in pane 0'
expect_log 'alarm: pane 0 plays Camera'
until_true "video of the alarm" shows_video "$(pane 0)"
camera=$(since_mark | sed -n 's/^alarm: camera \(.*\) brought up in pane 0$/\1/p')
[ "$(since_mark | grep -c "camera $camera brought up")" -eq 1 ] || fail "$camera is up twice"
show_title "$(pane 0)"
picture "$work/before.png" "$(pane 0)"
until_true "a picture that moves under the alarm mark" differs "$work/before.png" "$(pane 0)"
[ -n "${E2E_KEEP:-}" ] && import -window root "$E2E_KEEP/alarm.png"
mark
click btnclose
expect_log 'alarm: sig_OnWndBtnClick\(0, 9\)'
expect_log 'alarm: sig_OnWndBtnClick\(0, 0\)'
expect_log 'alarm: pane 0 taken down'

# Tour: the panes step on by themselves.
mark
click "tab Tour"
until_true "the tour deck" has_place tourTab
expect_log 'tour: pane 0 plays Camera 01'
until_true "video of the tour" shows_video "$(pane 0)"
[ -n "${E2E_KEEP:-}" ] && import -window root "$E2E_KEEP/tour.png"
expect_log 'tour: pane 0 plays Camera 05'

# The menu of a right click: its second entry is remote control, which Escape ends.
click "tab Live"
until_true "the live deck" has_place liveTab
until_true "video in the third pane" shows_video "$(pane 2)"
mark
right_click "$(pane 2)"
expect_log 'live: sig_OnRightMouseClick\(2\)'
until_true "the menu" has_place PaneMenu
[ -n "${E2E_KEEP:-}" ] && import -window root "$E2E_KEEP/menu.png"
xdotool key --delay 50 Down Down Return
until_true "the toolbar to go" has_no_place btnPVplayer
until_true "the menu to go" has_no_place PaneMenu
remote_click() {
    pointer_to "$(pane 0)@40,40"
    xdotool click 1
    logged 'live: sig_sendMouseMsg\(0, 1, '
}
until_true "mouse messages" remote_click
expect_log 'live: sig_sendMouseMsg\(0, 0, '
xdotool key Escape
until_true "the toolbar back" has_place btnPVplayer
until_true "nine panes on screen" has_place "$(pane 8)"

# The last entry takes the camera out.
mark
right_click "$(pane 4)"
until_true "the menu" has_place PaneMenu
xdotool key --delay 50 Up Return
until_true "an idle pane" shows_no_video "$(pane 4)"

[ -n "${E2E_KEEP:-}" ] && { click "tab Playback"; until_true "the playback deck" has_place playbackTab; import -window root "$E2E_KEEP/playback.png"; }
stop_client
