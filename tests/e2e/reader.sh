#!/bin/bash
# A screen reader on the session's bus: it finds the panes with number, camera and state, and no control without a name.
CLIENT=$1
if [ -z "${E2E_HAS_BUS:-}" ]; then
    E2E_HAS_BUS=1 exec dbus-run-session -- bash "$0" "$@"
fi
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"

export QT_ACCESSIBILITY=1 QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1

# read_screen ARGUMENTS...: what the reader finds now, in $work/read.
read_screen() { timeout 60 /usr/bin/python3 "$here/reader.py" 20 "$@" >"$work/read" 2>"$work/reader.errors"; }
finds() { read_screen && grep -Eqx "$1" "$work/read"; }

start_screen
start_client --synthetic --archive "$work/archive"
until_true "the second pane with camera and state" finds 'panel\|Pane 2, Camera 02\|playing\|-\|-'
until_true "the first pane, the active one" finds 'panel\|Pane 1, Camera 01\|playing\|-\|selected'

# Buttons and sliders all have a name.
nameless=$(grep -E '^(push button|toggle button|slider|check box|spin button)\|\|' "$work/read")
[ -z "$nameless" ] || fail "controls without a name: $nameless"

# The scale is a slider that the reader moves.
click "tab Playback"
until_true "the playback deck" has_place playbackTab
mark
until_true "a slider named Time" read_screen set Time 3600
expect_log 'playback: sig_TimerSliderReleased\(0\)'
stop_client
