#!/bin/bash
# What somebody does who has never seen the client: finds a camera, sees it, turns it, finds what moved yesterday, and
# takes ten seconds of it along.
CLIENT=$1
CAMERA=$3
MAKE_ARCHIVE=$4
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"
unset DBUS_SESSION_BUS_ADDRESS

type_into() { click "$1"; xdotool key ctrl+a; xdotool type --delay 20 "$2"; }

"$2" "$work/video.mkv" 3000 || fail "no video"
"$CAMERA" --video "$work/video.mkv" --user admin --password 's <c>' --name Yard >"$device_log" &
pids+=($!)
until_true "the device" test -s "$device_log"
address=$(head -n 1 "$device_log")

start_screen
start_bare WelcomeFind

# A camera of the network is found, or typed where multicast is cut off, or where another one answers and so none is
# chosen; and its picture comes.
click WelcomeFind
expect_dialog FoundDevices
for _ in $(seq 60); do has_place Yard && break; sleep 0.1; done
type_into DeviceUser admin
type_into DevicePassword 's <c>'
xdotool key Return
for _ in $(seq 60); do logged 'pane 0 plays Yard' && break; sleep 0.1; done
if ! logged 'pane 0 plays Yard'; then
    echo "not alone, or no multicast: the camera is typed"
    type_into DeviceAddress "${address#http://}"
    xdotool key --delay 50 Return Return
fi
expect_log 'pane 0 plays Yard'
xdotool key Escape
until_true "the dialog gone" has_no_place FoundDevices
until_true "the camera's picture" shows_video "$(pane 0)"

# Its menu says how it is turned.
right_click "$(pane 0)"
xdotool key --delay 30 Up Up Up Return
pointer_to "$(pane 0)@90,50"
xdotool mousedown 1
until_true "a move to the right" told 'ContinuousMove 0.5 0 0'
stopped_last && fail "it stops by itself"
xdotool mouseup 1
until_true "a stop" stopped_last

# The next day; what was recorded meanwhile is put where the client would have it.
stop_client
archive=$XDG_DATA_HOME/PaneDeck/panedeck-client/archive
"$MAKE_ARCHIVE" "$archive" Yard "$(date -d 'yesterday 15:00:10' +%s)" || fail "no archive"
start_bare CVideoWidget
until_true "the camera's picture again" shows_video "$(pane 0)"

# Yesterday, by the calendar; and what moved then.
mark
click "tab Playback"
until_true "video of today" shows_video "$(pane 0)"
click PlaybackDay@92,50
until_true "the calendar" has_place PlaybackCalendar
until_true "the calendar to rest" rests PlaybackCalendar
xdotool key Left Return
expect_log "playback: day $(date -d yesterday +%F)"
expect_log 'playback: shows .* ms after the seek'
mark
xdotool key n
expect_log "playback: motion at .*15:00:30"
expect_log 'playback: shows .* ms after the seek'

# Ten seconds of it, in a file that another player decodes whole.
mark
click PlaybackExport
expect_dialog ExportBegin
click ExportBegin
expect_log 'playback: exported: .*mp4'
exported=$(since_mark | sed -n 's/^playback: exported: //p')
[ "$(ffprobe -v error -count_frames -show_entries stream=nb_read_frames -of csv=p=0 "$exported" 2>&1)" = 250 ] ||
    fail "the export can't be decoded whole"
seconds=$(ffprobe -v error -show_entries format=duration -of csv=p=0 "$exported")
[ "$seconds" = 10.000000 ] || fail "the export is $seconds s long"
click ExportClose
until_true "no dialog" has_no_place ExportBegin
stop_client
