#!/bin/bash
# What a camera reports by itself comes up as an alarm, is counted, acknowledged, played and kept with the day's marks.
# And a camera that turns when the client ends is stopped.
CLIENT=$1
CAMERA=$3
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"
unset DBUS_SESSION_BUS_ADDRESS

report() { echo "Device/Trigger/DigitalInput door $1" >>"$work/orders"; }
is_titled() { xdotool search --onlyvisible --name "^$1\$"; }
count_alarms() {
    python3 -c 'import sqlite3, sys
print(sqlite3.connect(sys.argv[1]).execute("SELECT count(*) FROM span WHERE camera = ? AND kind = 2", ["Yard"]).fetchone()[0])' \
        "$work/archive/index.sqlite"
}
hold_right() {
    click "tab Live"
    choose_menu "Mouse" 2
    pointer_to "$(pane 0)@90,50"
    xdotool mousedown 1
    until_true "a move" told 'ContinuousMove 0.5 0 0'
    stopped_last && fail "it stops by itself"
}

touch "$work/orders"
"$CAMERA" --orders "$work/orders" >"$device_log" &
pids+=($!)
until_true "the device" test -s "$device_log"
cameras=$work/cameras.json
# A picture in which nothing moves.
cat >"$cameras" <<END
{"version": 1, "cameras": [{"id": "yard", "name": "Yard", "main": "lavfi:color=gray:size=320x240:rate=10",
    "ptz": "onvif", "onvifAddress": "$(head -n 1 "$device_log")", "onvifMainProfile": "main1"}]}
END
start_screen
start_client --archive "$work/archive" --cameras "$cameras"
expect_log 'pane 0 plays Yard'
is_recorded() { find "$work/archive/Yard" -name '*.part' -size +1k | grep -q .; }
until_true "a recording" is_recorded

report 1
until_true "an alarm in the title" is_titled '\(1\) PaneDeck'
click "tab Alarm"
expect_log 'camera Yard brought up in pane 0'
click AlarmAllSeen
until_true "no alarm in the title" is_titled 'PaneDeck'
report 0
report 1
until_true "the next alarm in the title" is_titled '\(1\) PaneDeck'
report 0

# It is played from before it was, and found among the day's marks.
click AlarmList@20,40
click AlarmPlay
expect_log 'playback: shows .* ms after the seek'
mark
# What follows soon is one mark with what was before it.
xdotool key --delay 50 Home n
expect_log 'playback: alarm at'
# What is being written goes on where the recording ended.
parts() { [ "$(find "$work/archive/Yard" -name '*.mkv' | wc -l)" -ge "$1" ]; }
until_true "its next parts" parts 3

hold_right
kill "$client_pid"
until_true "a stop at the end" stopped_last
wait "$client_pid"
xdotool mouseup 1
[ "$(count_alarms)" -eq 2 ] || fail "the index has $(count_alarms) alarms"
