#!/bin/bash
# What a wall shows: digital zoom by the wheel, a drag and a double click, views under names, pages, full screen and
# back by its own key, a second window, and all of it again at the next start.
CLIENT=$1
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"

# tones NAME: how many colours the middle of a pane shows, beside title bar, label and map
tones() {
    picture "$work/tones.png" "$1"
    convert "$work/tones.png" -gravity center -crop 60x40%+0+0 +repage -posterize 6 -format '%k' info:
}
has_one_tone() { [ "$(tones "$1")" -le 2 ]; }
has_many_tones() { [ "$(tones "$1")" -ge 5 ]; }

start_screen
cameras=(--source "Bars=lavfi:smptebars=size=1920x1080:rate=5" --source "Door=synthetic:2" --source "Yard=synthetic:3")
start_client "${cameras[@]}"
until_true "video in the first pane" has_many_tones "$(pane 0)"

# The wheel zooms at the pointer: far enough on one bar there is no other in sight.
show_title "$(pane 0)"
mark
click btnZoomIn
expect_log 'live: pane 0 zoom on'
pointer_to "$(pane 0)@7,40"
for _ in 1 2 3 4 5 6 7 8 9 10 11; do xdotool click 4; done
until_true "one bar alone" has_one_tone "$(pane 0)"
until_true "the map" has_place PaneMap

# A drag brings the next bars in, a double click the whole picture; no pane is dragged and none is enlarged.
picture "$work/bar.png" "$(pane 0)"
drag 1 "$(pane 0)@90,50" "$(pane 0)@5,50"
until_true "another bar" differs "$work/bar.png" "$(pane 0)"
mark
double_click "$(pane 0)@30,50"
until_true "the whole picture" has_many_tones "$(pane 0)"
until_true "no map" has_no_place PaneMap
expect_no_log 'sig_ChangeWnd|sig_DbClickWnd'

# Zoomed in again, that is part of the view. The second view has four panes and another camera first.
pointer_to "$(pane 0)@7,40"
for _ in 1 2 3 4 5 6 7 8 9 10 11; do xdotool click 4; done
until_true "one bar alone" has_one_tone "$(pane 0)"
mark
xdotool key ctrl+s
expect_log 'live: view saved'
drag 1 "Door" "$(pane 0)"
expect_log 'live: pane 0 plays Door'
choose_menu "Layout" 2
until_true "four panes on screen" has_no_place "$(pane 4)"
mark
choose_menu "View" 3
expect_dialog ViewName
xdotool type --delay 30 "Night & day"
xdotool key Return
expect_log 'live: view saved'
mark
xdotool key ctrl+1
expect_log 'live: view View 1'
until_true "nine panes" has_place "$(pane 8)"
until_true "the zoomed bar" has_one_tone "$(pane 0)"
mark
xdotool key ctrl+2
expect_log 'live: view Night & day'
until_true "four panes" has_no_place "$(pane 4)"

# F11 goes in and out, views go by their keys in between, Escape goes out as well.
for leave in F11 Escape; do
    mark
    xdotool key F11
    expect_log 'live: sig_OnStateChanged\(4\)'
    until_true "the toolbar to go" has_no_place btnPVplayer
    pointer_to "$(pane 0)"
    xdotool key ctrl+1
    expect_log 'live: view View 1'
    xdotool key ctrl+2
    expect_log 'live: view Night & day'
    xdotool key "$leave"
    expect_log 'live: sig_OnStateChanged\(0\)'
    until_true "the toolbar back" has_place btnPVplayer
done

# A second window shows a view of its own.
choose_menu "Window" 2
xdotool key Return
until_true "the second window" has_place LiveWindow
second=$(xdotool search --onlyvisible --name '^PaneDeck 2$')
xdotool windowactivate --sync "$second" key ctrl+1
until_true "the bar in the second window" has_one_tone "$(pane 4)"
xdotool windowactivate --sync "$(main_window)"
stop_client

# All is there at the next start, but for a camera that is gone: its pane says so, and it keeps its place.
unset 'cameras[2]' 'cameras[3]'
start_client "${cameras[@]}"
until_true "the second window" has_place LiveWindow
xdotool search --onlyvisible --name '^PaneDeck 2$' windowactivate --sync
xdotool key alt+F4
until_true "one window" has_no_place LiveWindow
until_true "four panes" has_no_place "$(pane 4)"
mark
xdotool key ctrl+1
expect_log 'live: view View 1'
until_true "the zoomed bar" has_one_tone "$(pane 0)"
xdotool key ctrl+s
expect_log 'live: view saved'
grep -q '"name": "Door"' "$XDG_CONFIG_HOME"/PaneDeck/panedeck-client/views.json || fail "the camera's place is lost"
stop_client
