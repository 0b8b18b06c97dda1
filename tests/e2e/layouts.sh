#!/bin/bash
# A layout of the user's own: cut, merge and resize in the dialog, pick it, and find it after a restart. With
# E2E_READ_ONLY the user can't write into the installation, and keeps layouts among data of his own.
CLIENT=$1
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"

# An installation of the test's own, as the edits are written into it.
built=$(dirname "$(dirname "$CLIENT")")
mkdir -p "$work/root/bin"
cp "$CLIENT" "$work/root/bin/"
for directory in Organization ResourcesBlank ResourcesWhite Resources languages; do
    cp -r "$built/$directory" "$work/root/"
done
rm -f "$work/root/Organization/SplitInfo.xml"
CLIENT=$work/root/bin/$(basename "$CLIENT")
installed_file=$work/root/Organization/SplitInfo.xml
split_file=$installed_file
if [ -n "${E2E_READ_ONLY:-}" ]; then
    as_user_without_rights "$work/root" "$built/lib"
    split_file=$XDG_DATA_HOME/PaneDeck/panedeck-client/SplitInfo.xml
fi

# What the split file says of the first custom layout.
first_custom() { sed -n '/<CustoSplit/,$p' "$split_file" | grep -m 1 '<Split NID="1"'; }
first_custom_is() { [ "$(first_custom)" = "        <Split NID=\"1\" $1>" ]; }

# click_line ROW COLUMN: in the editor's grid of six by six, in halves of a unit
click_line() {
    local x y w h
    read -r x y w h <<<"$(place SplitWidget)"
    move_to $((x + $2 * (w / 6) / 2)) $((y + $1 * (h / 6) / 2))
    xdotool click 1
}

open_picker() {
    click btmMoreFrame
    until_true "the picker" has_place CSplitCustomDialog
}

start_screen
start_client
until_true "video in the first pane" shows_video "$(pane 0)"
open_picker
click btnEditSplit
expect_dialog SplitWidget
[ ! -e "$split_file" ] || fail "opening the dialog wrote the split file"

click_line 3 6
until_true "the cut across" first_custom_is 'row="6" col="6" count="2"'
click_line 6 3
until_true "the cut of the left half" first_custom_is 'row="6" col="6" count="3"'
click_line 6 3
until_true "the merge" first_custom_is 'row="6" col="6" count="2"'
double_click sbxRow@30,50
xdotool type 8
xdotool key Return
until_true "two more rows" first_custom_is 'row="8" col="6" count="14"'
picture "$work/dialog.png" CSegmentationDialog
click close
until_true "the dialog to go" has_no_place SplitWidget

mark
open_picker
click btnC1
expect_log 'live: sig_wndNumberChanged\(14\)'
until_true "fourteen panes" has_place "$(pane 13)"
until_true "video in the last cell" shows_video "$(pane 13)"
until_true "video in the first cell" shows_video "$(pane 0)"
stop_client

start_client
until_true "video in the first pane" shows_video "$(pane 0)"
mark
open_picker
click btnC1
expect_log 'live: sig_wndNumberChanged\(14\)'
until_true "fourteen panes after a restart" has_place "$(pane 13)"
stop_client
[ "$split_file" = "$installed_file" ] || [ ! -e "$installed_file" ] || fail "written into the installation"
