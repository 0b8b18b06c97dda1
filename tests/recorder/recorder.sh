#!/bin/bash
# recorder.sh RECORDER MAKE_VIDEO WORK_DIR: the recorder as a service: told to end, killed, beside another one, with an
# index made anew, and without anything to do.
set -eu
recorder=$1 make_video=$2 work=$3
rm -rf "$work"
mkdir -p "$work/config/PaneDeck"
export XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work
unset DBUS_SESSION_BUS_ADDRESS
archive=$work/archive
children=()
trap 'for child in "${children[@]}"; do kill -9 "$child" 2>/dev/null || true; done' EXIT

fail() { echo "FAIL: $1"; cat "$work"/said-*; exit 1; }
until_true() { # WHAT COMMAND...
    what=$1
    shift
    for _ in $(seq 300); do
        if "$@"; then return; fi
        sleep 0.1
    done
    fail "no $what"
}
start() { # NAME OPTIONS...
    name=$1
    shift
    "$recorder" --archive "$archive" --source "Gate 门=$work/gate.mkv" "$@" 2>"$work/said-$name" &
    pid=$!
    children+=("$pid")
}
said() { grep -q "$2" "$work/said-$1"; }
files() { find "$archive" -name "*.mkv$1" 2>/dev/null | wc -l; }
grown() { [ -n "$(find "$archive" -name "*.part" -size +20k 2>/dev/null)" ]; }
has_whole() { [ "$(files '')" -eq "$1" ]; }

"$make_video" "$work/gate.mkv" 20
for wrong in "" "--source" "--archive-days 0 --source A=a.mkv" "--source A=a.mkv --source A=b.mkv" "--source A=a.mkv x"; do
    # shellcheck disable=SC2086
    "$recorder" --archive "$archive" $wrong 2>"$work/said-wrong" && fail "'$wrong' is taken"
    [ $? -eq 2 ] && [ -s "$work/said-wrong" ] || fail "'$wrong' is not told"
done

cameras=$work/config/PaneDeck/cameras.json
echo '{"version":9,"cameras":[]}' >"$cameras"
"$recorder" --archive "$archive" 2>"$work/said-wrong" && fail "a list of another version is taken"
said wrong 'another version' || fail "a list of another version is not told"
echo "{\"version\":1,\"cameras\":[{\"id\":\"1\",\"name\":\"Yard\",\"recordedAs\":\"Gate\",\"main\":\"$work/gate.mkv\"},
    {\"id\":\"2\",\"name\":\"Never\",\"recording\":\"never\",\"main\":\"$work/gate.mkv\"},
    {\"id\":\"3\",\"name\":\"Locked\",\"user\":\"me\",\"main\":\"rtsp://127.0.0.1:9/s\"}]}" >"$cameras"
echo '{"version":1,"passwords":{"3":"s3cret"}}' >"$work/config/PaneDeck/passwords.json"
passwords=$work/config/PaneDeck/passwords.json
echo n3w | "$recorder" --password Locked || fail "a password can't be kept"
grep -q '"3": "n3w"' "$passwords" && [ "$(stat -c %a "$passwords")" = 600 ] || fail "a password is not kept: $(cat "$passwords")"
echo s3cret | "$recorder" --passwords "$passwords" --password 3 || fail "a password can't be kept in a file of its own"
echo no | "$recorder" --password Nobody 2>"$work/said-wrong" && fail "nobody's password is kept"
"$recorder" --password Locked </dev/null 2>"$work/said-wrong" && fail "no password is kept"
"$recorder" --archive "$archive" 2>"$work/said-list" &
listed=$!
children+=("$listed")
until_true "a camera of the list" grown
until_true "the loss of another" said list 'Locked: '
tr '\0' ' ' <"/proc/$listed/cmdline" | cat - "$work/said-list" | grep -q s3cret && fail "a password is told"
kill -TERM "$listed"
wait "$listed" || fail "told to end it ends with $?"
[ "$(ls -d "$archive"/*/)" = "$archive/Gate/" ] || fail "recorded is $(ls "$archive")"
rm -rf "$archive"

start first
first=$pid
until_true "recording" grown
start second
second=$pid
until_true "viewer" said second 'another program records'
[ "$(files .part)" -eq 1 ] || fail "the viewer took the part away"
kill -9 "$first"
until_true "takeover" said second 'records into'
until_true "recording of what the killed one left" has_whole 1
until_true "recording after it" grown
"$recorder" --archive "$archive" --rebuild 2>"$work/said-rebuild" && fail "an index is made anew beside a recorder"
# Who reads the index and goes is not the last one: the log that the recorder writes stays.
sleep 1.5
python3 -c "import sqlite3; sqlite3.connect('$archive/index.sqlite').execute('SELECT * FROM segment').fetchall()"
[ -e "$archive/index.sqlite-wal" ] || fail "the recorder does not hold its index"
kill -TERM "$second"
wait "$second" || fail "told to end it ends with $?"
[ "$(files .part)" -eq 0 ] || fail "a part is left"
has_whole 2 || fail "there are $(files '') recordings"
[ "$(cat "$archive"/*/camera.txt)" = "Gate 门" ] || fail "the name is lost"

rm -f "$archive"/index.sqlite*
"$recorder" --archive "$archive" --rebuild 2>"$work/said-rebuild" || fail "the index can't be made"
said rebuild '2 recordings in the index' || fail "the index has not all"
