#!/bin/bash
# A camera of the network: found, added with its password, seen, turned and stopped, by hand.
CLIENT=$1
MAKE_VIDEO=$2
CAMERA=$3
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"

count_moves() { grep -c ContinuousMove "$device_log"; }
type_into() {
    click "$1"
    xdotool key ctrl+a
    xdotool type --delay 10 "$2"
}

"$MAKE_VIDEO" "$work/video.mkv" 1500 || fail "no video"
# Its clock is a day behind, and it tells another host than its own.
"$CAMERA" --video "$work/video.mkv" --user admin --password 's <c>' --clock -90000 --foreign-host 10.1.2.3 \
    --name "Yard" >"$device_log" &
pids+=($!)
until_true "the device" test -s "$device_log"
address=$(head -n 1 "$device_log")
mkdir -p "$XDG_CONFIG_HOME/PaneDeck"
cameras=$XDG_CONFIG_HOME/PaneDeck/cameras.json
echo '{"version": 1, "cameras": [{"id": "other", "name": "Other", "main": "synthetic:1"}]}' >"$cameras"
chmod 600 "$cameras"
start_screen
start_client --archive "$work/archive" --cameras "$cameras"

# Where multicast is cut off the camera is typed.
choose_menu "Cameras" 1
expect_dialog FoundDevices
type_into DeviceAddress "${address#http://}"
click AddAddress
type_into DeviceUser admin
type_into DevicePassword wrong
click AddFound
# It stays chosen after a wrong password, and the button comes back with the answer.
has_camera() { click AddFound && within_a_second grep -q '"onvifMainProfile": "main1"' "$cameras"; }
type_into DevicePassword 's <c>'
until_true "the camera in the list" has_camera
grep -q '10.1.2.3' "$cameras" && fail "a foreign address was believed"
! grep -rq 's <c>' "$cameras" "$log" "$work/errors" || fail "the password is seen"
xdotool key Escape
until_true "the dialog gone" has_no_place FoundDevices
double_click "Yard"
until_true "video" shows_video "$(pane 0)"

# A held direction, and its release.
choose_menu "Mouse" 2
pointer_to "$(pane 0)@90,50"
xdotool mousedown 1
until_true "a move" told 'ContinuousMove 0.5 0 0'
stopped_last && fail "it stops by itself"
xdotool mouseup 1
until_true "a stop" stopped_last

# Another program comes to the front: the release may never be seen.
pointer_to "$(pane 0)@10,50"
xdotool mousedown 1
until_true "a move to the left" told 'ContinuousMove -0.5 0 0'
xev -name other >/dev/null &
pids+=($!)
until_true "another window" xdotool search --onlyvisible --name '^other$'
xdotool windowactivate "$(xdotool search --onlyvisible --name '^other$')"
until_true "a stop when left" stopped_last
xdotool mouseup 1
kill "${pids[-1]}"
xdotool windowactivate --sync "$(main_window)"

# A rectangle
choose_menu "Mouse" 3
drag 1 "$(pane 0)@50,30" "$(pane 0)@90,80"
until_true "a move to the rectangle" told 'RelativeMove'
moves=$(count_moves)
stop_client
grep -q ' Unsubscribe$' "$device_log" || fail "it still listens"
[ "$(count_moves)" -eq "$moves" ] || fail "it was turned at the end"
