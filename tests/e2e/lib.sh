# What the end-to-end tests share: a screen of their own with a window manager, the built client on it, a real
# pointer, and judgement by the client's log and by pictures. Sourced with CLIENT set to the client's path.
# shellcheck shell=bash
set -u

E2E_PATIENCE=${E2E_PATIENCE:-60}
work=$(mktemp -d)
log=$work/events.log
places=$work/places
export XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data XDG_RUNTIME_DIR=$work/runtime
# The screen's pixels to one of a widget's; the screen grows with it.
scale=${E2E_SCALE:-1}
export HOME=$work LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=$scale
# What a desktop would have the client look like, or speak.
unset LANGUAGE QT_QPA_PLATFORMTHEME QT_STYLE_OVERRIDE QT_SCREEN_SCALE_FACTORS QT_AUTO_SCREEN_SCALE_FACTOR QT_IM_MODULE
# A time zone in which it is noon now: there is room for a sample in today, and no midnight falls into a test.
TZ=$(printf 'Etc/GMT%+d' $((10#$(date -u +%H) - 12)))
export TZ
mkdir -p -m 700 "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_RUNTIME_DIR"
pids=()

fail() {
    echo "FAILED: $*" >&2
    [ -f "$log" ] && { echo "-- the log's end:"; tail -n 25 "$log"; } >&2
    [ -s "$work/errors" ] && { echo "-- what the client said:"; tail -n 40 "$work/errors"; } >&2
    [ -n "${E2E_KEEP:-}" ] && { import -window root "$E2E_KEEP/failed.png"; cp "$work"/*.png "$E2E_KEEP"; }
    # From within $(...), exit would only leave that.
    [ "$BASHPID" = "$$" ] || kill "$$"
    exit 1
}
trap 'exit 1' TERM

finish() {
    local status=$? pid
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null; done
    for _ in $(seq 50); do [ -n "$(jobs -r)" ] && sleep 0.1; done
    for pid in $(jobs -rp); do kill -9 "$pid"; done
    for pid in "${pids[@]}"; do wait "$pid" 2>/dev/null; done
    chmod -R u+w "$work"
    rm -rf "$work"
    exit "$status"
}
trap finish EXIT

# What it waits for with --sync may never come.
xdotool() { timeout "$E2E_PATIENCE" xdotool "$@"; }

# until_true WHAT COMMAND...: waits for the command to succeed.
until_true() {
    local what=$1 deadline=$((SECONDS + E2E_PATIENCE))
    shift
    until "$@" >/dev/null 2>&1; do
        [ "$SECONDS" -lt "$deadline" ] || fail "waited in vain for $what"
        sleep 0.05
    done
}

start_screen() {
    local display size
    size=$(awk -v scale="$scale" 'BEGIN { print int(1400 * scale) "x" int(900 * scale) }')
    Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp -noreset 3>"$work/display" 2>/dev/null &
    pids+=($!)
    until_true "a screen" test -s "$work/display"
    read -r display <"$work/display"
    export DISPLAY=:$display
    openbox --sm-disable >/dev/null 2>&1 &
    pids+=($!)
    until_true "the window manager" sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"'
}

# start_client OPTIONS...: with the built-in cameras, unless the options name others
start_client() {
    case " $* " in *" --source "* | *" --cameras "*) ;; *) set -- --synthetic "$@" ;; esac
    : >"$log"
    log_mark=0
    rm -f "$places"
    "$CLIENT" --log "$log" --places "$places" "$@" 2>"$work/errors" &
    client_pid=$!
    pids+=("$client_pid")
    until_true "the client's window" has_place CVideoWidget
    settle_window
}

# start_bare NAME: the client as a user starts it, until something of that name is there
start_bare() {
    : >"$log"
    log_mark=0
    rm -f "$places"
    "$CLIENT" --log "$log" --places "$places" 2>"$work/errors" &
    client_pid=$!
    pids+=("$client_pid")
    until_true "$1" has_place "$1"
    settle_window "$1"
}

# Now and then the toolkit misses where the window manager has put a new window, and learns it only from a move. A
# window that comes up where it was left is moved twice.
settle_window() {
    until_true "the window on the screen" xdotool search --onlyvisible --name 'PaneDeck$'
    move_window 60 30
    move_window 30 10
}
# move_window X Y: until the client tells of the place where the screen has the window
move_window() {
    local window before
    window=$(main_window)
    before=$(corner "$window")
    xdotool windowmove "$window" "$(($1 * ${scale%.*}))" "$(($2 * ${scale%.*}))"
    within_a_second has_left "$window" "$before"
    until_true "the window at its place" knows_place_of "$window"
}
main_window() { xdotool search --onlyvisible --name 'PaneDeck$'; }
# corner WINDOW: left and top
corner() { xwininfo -id "$1" | awk '/Absolute upper-left/ { printf "%d ", $NF }'; }
has_left() { [ "$(corner "$1")" != "$2" ]; }
# knows_place_of WINDOW: the client tells of something that begins at the window's corner. It counts in the widgets'
# pixels, which may be larger than the screen's.
knows_place_of() {
    local x y
    read -r x y <<<"$(corner "$1")"
    awk -F'\t' -v x="$x" -v y="$y" -v scale="$scale" 'function near(a, b) { return a - b <= 2 && b - a <= 2 }
        near(int($2 * scale), x) && near(int($3 * scale), y) { found = 1 } END { exit !found }' "$places"
}

# as_user_without_rights DIRECTORY LIBRARY_DIR: from now on the client can't write there. Root could write everywhere, so in its stead
# nobody runs the client; where that is forbidden, the test is skipped.
as_user_without_rights() {
    chmod -R a-w "$1"
    [ "$(id -u)" -eq 0 ] || return 0
    setpriv --reuid=nobody --regid=nogroup --clear-groups true || { echo "can't become nobody"; exit 77; }
    # The build may lie where nobody can't read.
    cp "$2"/libpanedeck.so* "$work/"
    printf '#!/bin/bash\nLD_LIBRARY_PATH=%q exec setpriv --reuid=nobody --regid=nogroup --clear-groups %q "$@"\n' \
        "$work" "$CLIENT" >"$work/client"
    chmod +x "$work/client"
    touch "$log"
    chown nobody "$work" "$log" "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_RUNTIME_DIR"
    CLIENT=$work/client
}

# What the playback tests begin with: few cameras with their sample of today, and the tab with its first pictures
start_playback() {
    local i cameras=()
    for i in 1 2 3 4; do cameras+=(--source "Camera 0$i=synthetic:$i"); done
    start_screen
    start_client --archive "$work/archive" "${cameras[@]}"
    E2E_PATIENCE=180 until_true "the sample" logged_ever 'archive: sample recordings made'
    click "tab Playback"
    until_true "video in the first pane" shows_video "$(pane 0)"
    until_true "a strip for each camera" has_strips 4
    until_true "the scale to rest" rests m_dayWidget
}
has_strips() { [ "$(place CameraStrips | cut -d' ' -f4)" -ge $((19 * $1)) ]; }

# Asks the window to close, as its user would, and demands that the client ends within a few seconds.
stop_client() {
    local deadline
    xdotool windowactivate --sync "$(main_window)"
    xdotool key alt+F4
    deadline=$((SECONDS + 8))
    while kill -0 "$client_pid" 2>/dev/null; do
        [ "$SECONDS" -lt "$deadline" ] || fail "the client does not end"
        sleep 0.05
    done
    wait "$client_pid" || fail "the client ended with $?"
}

has_place() { grep -q "^$1	" "$places"; }

# place NAME: left top width height, in the screen's pixels
place() {
    until_true "a place for $1" has_place "$1"
    awk -F'\t' -v name="$1" -v scale="$scale" \
        '$1 == name { print int($2 * scale), int($3 * scale), int($4 * scale), int($5 * scale); exit }' "$places"
}

# expect_dialog NAME: waits for a dialog by the name of something in it, and moves it, as the window was
expect_dialog() {
    local dialog before
    until_true "the dialog with $1" has_place "$1"
    until_true "the dialog with $1 in front" has_dialog_in_front
    before=$(corner "$dialog")
    xdotool windowmove "$dialog" 250 130
    within_a_second has_left "$dialog" "$before"
    until_true "the dialog with $1 at its place" knows_place_of "$dialog"
    until_true "the dialog with $1 to rest" rests "$1"
}
# While the focus goes from one window to another none has it.
has_dialog_in_front() { dialog=$(xdotool getactivewindow) && [ "$dialog" != "$(main_window)" ]; }

# rests NAME: the place stands still, away from the screen's corner
rests() {
    local before
    before=$(place "$1")
    sleep 0.2
    [ "$(place "$1")" = "$before" ] && [ "${before%% *}" -gt 200 ]
}

pane() { if [ "$1" -eq 0 ]; then echo CVideoWidget; else echo "CVideoWidget#$1"; fi; }

# point NAME[@X,Y]: a point of a named place, X and Y in percent of it; its centre by default
point() {
    local name=${1%@*} at=50,50 x y w h
    [ "$name" = "$1" ] || at=${1##*@}
    read -r x y w h <<<"$(place "$name")"
    echo $((x + w * ${at%,*} / 100)) $((y + h * ${at#*,} / 100))
}

# move_to X Y: waits until the pointer is there; a pointer that is there already would be waited for in vain
move_to() {
    local at
    at=$(xdotool getmouselocation)
    [[ $at == "x:$1 y:$2 "* ]] || xdotool mousemove --sync "$1" "$2"
}

# What moves when the layout changes, as a bar does that a list pushes aside, is waited for; what never rests, as a
# thumb that walks, only so long.
pointer_to() {
    local x y
    within_a_second places_rest
    read -r x y <<<"$(point "$@")"
    move_to "$x" "$y"
}

places_rest() { [ $((${EPOCHREALTIME/[.,]/} - $(stat -c %.6Y "$places" | tr -d .,))) -gt 150000 ]; }

click() { pointer_to "$@"; xdotool click 1; }
right_click() { pointer_to "$@"; xdotool click 3; }
double_click() { pointer_to "$@"; click_twice; }
# Not at once: the window manager sees each press before the client does, and may swallow a second one meanwhile.
click_twice() { xdotool click --repeat 2 --delay 60 1; }

# drag BUTTON FROM TO: the way is walked in steps, as a hand does
drag() {
    local x1 y1 x2 y2 i
    read -r x1 y1 <<<"$(point "$2")"
    read -r x2 y2 <<<"$(point "$3")"
    move_to "$x1" "$y1"
    xdotool mousedown "$1"
    for i in 1 2 3 4 5 6 7 8; do
        move_to $((x1 + (x2 - x1) * i / 8)) $((y1 + (y2 - y1) * i / 8))
        sleep 0.03
    done
    xdotool mouseup "$1"
}

mark() { log_mark=$(wc -l <"$log"); }
since_mark() { tail -n +$((log_mark + 1)) "$log"; }
logged() { since_mark | grep -Eq -- "$1"; }

# expect_log PATTERN: a line since the last mark
expect_log() { until_true "the log line '$1'" logged "$1"; }
# click_until NAME PATTERN: clicks again while the log lacks the line, as a button takes no click until it is enabled
click_until() {
    local deadline
    for _ in 1 2 3 4 5; do
        click "$1"
        deadline=$((SECONDS + 4))
        while [ "$SECONDS" -lt "$deadline" ]; do
            logged "$2" && return
            sleep 0.05
        done
    done
    fail "clicked $1 in vain for the log line '$2'"
}
expect_no_log() { ! logged "$1" || fail "not to be logged: '$1'"; }

# picture FILE NAME: what the screen shows of a named place
picture() {
    local x y w h
    read -r x y w h <<<"$(place "$2")"
    import -window root -crop "${w}x${h}+${x}+${y}" +repage "$1"
}

# colours NAME: how many colours the place shows now; a playing picture has many, an idle pane a few
colours() {
    picture "$work/colours.png" "$1"
    identify -format '%k' "$work/colours.png"
}
shows_video() { [ "$(colours "$1")" -gt 60 ]; }
shows_no_video() { [ "$(colours "$1")" -le 60 ]; }

# says_nothing_there NAME: the pane has a plain ground, be there words in its middle or not
says_nothing_there() {
    picture "$work/ground.png" "$1"
    [ "$(convert "$work/ground.png" -crop "x40+0+4" -shave 4x0 -format '%k' info:)" -eq 1 ]
}

# drag_to NAME[@X,Y]: the pointer goes there in steps, with whatever button is down
drag_to() {
    local x y i
    eval "$(xdotool getmouselocation --shell | grep -E '^[XY]=')"
    read -r x y <<<"$(point "$@")"
    for i in 1 2 3 4 5 6; do
        # shellcheck disable=SC2153
        move_to $((X + (x - X) * i / 6)) $((Y + (y - Y) * i / 6))
    done
}

# unlike FILE FILE: how many pixels differ; compare says 1.5e+06 for what is much
unlike() { compare -metric AE -fuzz 10% "$1" "$2" null: 2>&1 | awk '{ print int($1) }'; }

# differs FILE NAME: the place does not look like the picture any more
differs() {
    picture "$work/now.png" "$2"
    [ "$(unlike "$1" "$work/now.png")" -gt 4000 ]
}

# moves NAME, stands_still NAME: whether the place changes while it is looked at
moves() {
    local i
    picture "$work/first.png" "$1"
    for ((i = 0; i < 8; i++)); do
        differs "$work/first.png" "$1" && return
    done
    return 1
}
stands_still() { ! moves "$1"; }

# choose_menu TITLE N: the Nth entry of a menu of the window, by its mnemonic key and the arrow keys
choose_menu() {
    local keys="" i
    xdotool key "alt+$(printf %s "${1:0:1}" | tr A-Z a-z)"
    for ((i = 1; i < $2; i++)); do keys="$keys Down"; done
    # shellcheck disable=SC2086
    [ -z "$keys" ] || xdotool key --delay 30 $keys
    xdotool key Return
}

has_no_place() { ! has_place "$1"; }
logged_ever() { grep -Eq -- "$1" "$log"; }

# show_title PANE: points at the pane until the title bar lies over it; a pane has one only while it plays, and
# takes notice of the pointer when it comes
show_title() { until_true "the title bar over $1" points_at "$1"; }
points_at() {
    pointer_to EventLog
    within_a_second has_no_place TitleWidget || return 1
    pointer_to "$1"
    within_a_second has_place TitleWidget
}

within_a_second() {
    local i
    for ((i = 0; i < 20; i++)); do
        "$@" && return
        sleep 0.05
    done
    return 1
}

# What a simulated device was asked, if it writes it there.
device_log=$work/device.log
told() { grep -q -- "$1" "$device_log"; }
stopped_last() { tail -n 1 "$device_log" | grep -q ' Stop$'; }
