#!/bin/bash
# A live deck worked by hand: drag from the tree, PTZ, wheel, rectangle, pages.
CLIENT=$1
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"

start_screen
start_client
until_true "video in the first pane" shows_video "$(pane 0)"

# A camera is dragged onto a pane and plays there.
mark
drag 1 "Camera 12" "$(pane 4)"
expect_log 'live: sig_DragEvent\(Camera 12, 4\)'
expect_log 'live: pane 4 plays Camera 12'
until_true "video in the fifth pane" shows_video "$(pane 4)"

# PTZ: a press in the right zone moves the picture and the release stops it; a wheel zooms.
choose_menu "Mouse" 2
pointer_to "$(pane 4)@90,50"
picture "$work/before.png" "$(pane 4)"
mark
xdotool mousedown 1
expect_log 'live: sig_SendPtzCommand\(4, 4, 0\)'
until_true "a picture that moves" differs "$work/before.png" "$(pane 4)"
drag_to "$(pane 4)@50,8"
expect_log 'live: sig_SendPtzCommand\(4, 4, 1\)'
expect_log 'live: sig_SendPtzCommand\(4, 1, 0\)'
xdotool mouseup 1
expect_log 'live: sig_SendPtzCommand\(4, 1, 1\)'
mark
pointer_to "$(pane 4)"
xdotool click 4
expect_log 'live: sig_SendPtzCommand\(4, 9, 0\)'
expect_log 'live: sig_SendPtzCommand\(4, 9, 1\)'

# A minimized window gets no release; its camera stops all the same.
pointer_to "$(pane 4)@90,50"
mark
xdotool mousedown 1
expect_log 'live: sig_SendPtzCommand\(4, 4, 0\)'
window=$(main_window)
xdotool windowminimize --sync "$window"
expect_log 'live: sig_SendPtzCommand\(4, 4, 1\)'
xdotool mouseup 1 windowactivate --sync "$window" 2>/dev/null

# Rectangle.
choose_menu "Mouse" 3
mark
drag 1 "$(pane 4)@20,20" "$(pane 4)@80,80"
expect_log 'live: sig_SelectRegion\(4, '
expect_log 'live: sig_RectanglePoint\(4, 0:0, 0:0\)'

stop_client
