#!/bin/bash
# The day's scale worked by hand: zoom by the wheel, pan, seeks by thumb and double click, the speed of the thumb,
# another day by the calendar, and what is left of the scale without the sample.
CLIENT=$1
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"

day_seconds=86400
closest=192

read_scale() {
    read -r left top width _ <<<"$(place m_dayWidget)"
    read -r view_left _ view_width _ <<<"$(place m_timerTypeWidget)"
}
scale_lies() { read_scale && [ "$left" -eq "$1" ] && [ "$width" -eq "$2" ]; }
scale_is_wide() { read_scale && [ "$width" -eq "$1" ]; }
second_at() { echo $((($1 - left) * day_seconds / width)); }
x_of() { echo $((left + $1 * width / day_seconds)); }
near() { local d=$(($1 - $2)); [ "${d#-}" -le "$3" ]; }
demand_near() { near "$2" "$3" "$4" || fail "$1: $2, not $3"; }
second_of_day() { local h m s; IFS=: read -r h m s <<<"$1"; echo $((10#$h * 3600 + 10#$m * 60 + 10#$s)); }

# turn NOTCHES: the wheel where the pointer is, forward if above 0, until the scale is as wide as that makes it
turn() {
    local ratio to button=4
    read_scale
    ratio=$((width / view_width))
    to=$((ratio + $1))
    [ "$1" -gt 0 ] || button=5
    [ "$to" -gt 0 ] || to=1
    xdotool click --repeat "${1#-}" --delay 5 "$button"
    until_true "a scale $to times as wide" scale_is_wide $((to * view_width))
}

# zoom_to SECOND RATIO: from the whole day, the second being on screen thereafter
zoom_to() {
    turn -200
    move_to "$(x_of "$1")" $((top + 8))
    turn $(($2 - 1))
    [ "$(x_of "$1")" -gt "$view_left" ] && [ "$(x_of "$1")" -lt $((view_left + view_width)) ] ||
        fail "the wheel did not keep second $1 in view"
}

strip_picture() { picture "$work/scale.png" m_timerTypeWidget && convert "$work/scale.png" -crop "x13+0+22" +repage "$1"; }
strip_colours() { strip_picture "$work/strip.png" && identify -format '%k' "$work/strip.png"; }
strip_is_empty() { [ "$(strip_colours)" -eq 1 ]; }
strip_has_recordings() { [ "$(strip_colours)" -gt 1 ]; }

# thumb_x: where the thumb's centre is on the screen
thumb_x() {
    local at
    picture "$work/scale.png" m_timerTypeWidget
    at=$(convert "$work/scale.png" -crop "x14+0+36" +repage -fuzz 10% -trim -format '%X %w' info:)
    echo $((view_left + ${at%% *} + ${at##* } / 2))
}
# A second may be three pixels wide.
thumb_is_at() { near "$(thumb_x)" "$1" 3; }

# The second of the day that the log says was sought, and shown thereafter; and how long that took.
sought() { second_of_day "$(since_mark | sed -n 's/.*playback: seeks .* //p' | tail -1)"; }
shown() { second_of_day "$(since_mark | sed -n 's/.*playback: shows [^ ]* \([^ ]*\) .*/\1/p' | tail -1)"; }
tell_seek() { echo "$1: $(since_mark | sed -n 's/.*playback: shows .* \([0-9]* ms\) after the seek/\1/p' | tail -1)"; }

# expect_seek WHAT SECOND: the second was sought as near as a pixel allows, and shown within a second of it
expect_seek() {
    expect_log 'playback: seeks '
    expect_log 'playback: shows .* ms after the seek'
    demand_near "$1 seeks" "$(sought)" "$2" 1
    demand_near "$1 shows" "$(shown)" "$(sought)" 1
    tell_seek "$1"
}

start_playback
file=$(find "$work/archive/Camera 01" -name '*-sample.mkv' | sort | sed -n 2p)
stamp=$(basename "$file")
start=$(second_of_day "$(date -d "${stamp:0:8} ${stamp:9:2}:${stamp:11:2}:${stamp:13:2} UTC" +%T)")

# The wheel holds the second under the pointer, in and out, and all of the day comes back.
read_scale
[ "$left $width" = "$view_left $view_width" ] || fail "the scale does not begin with the whole day"
until_true "the thumb at the first recording" thumb_is_at "$(x_of "$(shown)")"
picture "$work/whole.png" m_timerTypeWidget
x=$(x_of $((start + 70)))
move_to "$x" $((top + 8))
for notches in 1 1 2 4 8 -8 -4 -1; do
    read_scale
    from=$((x - left)) from_width=$width
    turn "$notches"
    near $((from * width / from_width)) $((x - left)) $((${notches#-} + 2)) ||
        fail "the scale slid under the pointer by $((from * width / from_width - x + left)) pixels"
done
picture "$work/closer.png" m_timerTypeWidget
[ "$(unlike "$work/whole.png" "$work/closer.png")" -gt 300 ] || fail "a closer scale looks like the whole day"
turn -3
until_true "the whole day" scale_lies "$view_left" "$view_width"
picture "$work/again.png" m_timerTypeWidget
[ "$(unlike "$work/whole.png" "$work/again.png")" -lt 100 ] || fail "the whole day looks different after the wheel"

# A drag of the scale pans it by as many pixels, but not one that begins on the strip, nor beyond the day's ends.
turn 15
read_scale
middle=$left
picture "$work/before.png" m_timerTypeWidget
drag 1 m_timerTypeWidget@60,50 m_timerTypeWidget@30,50
drag 1 m_timerTypeWidget@70,16 m_timerTypeWidget@40,16
way=$((view_width * 70 / 100 - view_width * 40 / 100))
until_true "the scale panned" scale_lies $((middle - way)) $((16 * view_width))
picture "$work/after.png" m_timerTypeWidget
convert "$work/before.png" -crop "$((view_width - way))x35+$way+0" +repage "$work/kept.png"
convert "$work/after.png" -crop "$((view_width - way))x35+0+0" +repage "$work/moved.png"
[ "$(unlike "$work/kept.png" "$work/moved.png")" -lt 50 ] || fail "the panned scale is another"
turn -14
for i in 1 2; do drag 1 m_timerTypeWidget@10,16 m_timerTypeWidget@95,16; done
until_true "the day's start" scale_lies "$view_left" $((2 * view_width))
for i in 1 2; do drag 1 m_timerTypeWidget@95,16 m_timerTypeWidget@10,16; done
until_true "the day's end" scale_lies $((view_left - view_width)) $((2 * view_width))

# At the closest row a pixel is less than a second. A double click seeks and plays, the button pauses.
zoom_to $((start + 70)) $closest
mark
x=$(x_of $((start + 40)))
move_to "$x" $((top + 26))
click_twice
expect_log 'playback: sig_TimerSliderdbClicked\(0\)'
expect_seek "double click" "$(second_at "$x")"
until_true "a picture that moves" moves "$(pane 0)"
click m_playBtn
until_true "a picture that stands still" stands_still "$(pane 0)"

# drag_thumb PIXELS SLACK: from where it is; how far it may have gone by itself before it was held
drag_thumb() {
    local x i
    x=$(thumb_x)
    move_to "$x" $((top + 43))
    xdotool mousedown 1
    for i in 1 2 3 4; do move_to $((x + $1 * i / 4)) $((top + 43)); done
    until_true "a picture above the thumb" shows_video ScalePicture
    until_true "the thumb under the pointer" thumb_is_held_near $((x + $1)) "$2"
    xdotool mouseup 1
}
thumb_is_held_near() { target=$(thumb_x) && near "$target" "$1" "$2" && [ "$(thumb_x)" -eq "$target" ]; }
for way in 120 -90; do
    mark
    drag_thumb "$way" 3
    expect_log 'playback: sig_TimerSliderReleased\(0\)'
    expect_seek "thumb by $way" "$(second_at "$target")"
    until_true "the thumb where it was left" thumb_is_at "$target"
done
click m_playBtn
until_true "a picture that moves" moves "$(pane 0)"
mark
drag_thumb -60 40
expect_seek "thumb while it plays" "$(second_at "$target")"
click m_playBtn

# Two seconds before the segment's end there is the most to decode.
mark
x=$(x_of $((start + 148)))
move_to "$x" $((top + 26))
click_twice
expect_seek "near the segment's end" "$(second_at "$x")"
click m_stopBtn

# seek_to SECOND, by a double click, which plays
seek_to() {
    mark
    move_to "$(x_of "$1")" $((top + 26))
    click_twice
    expect_log 'playback: shows .* ms after the seek'
}
thumb_is_beyond() { [ "$(thumb_x)" -ge "$1" ]; }

# pace SECONDS: how fast the thumb walks that far, in hundredths; it goes from one whole second to the next
pace() {
    local from since
    from=$(thumb_x)
    until_true "the thumb to go on" thumb_is_beyond $((from + 1))
    from=$(thumb_x) since=${EPOCHREALTIME/./}
    until_true "the thumb to walk $1 seconds" thumb_is_beyond $((from + $1 * width / day_seconds))
    echo $((100 * ($(thumb_x) - from) * (day_seconds * 1000000 / width) / (${EPOCHREALTIME/./} - since)))
}

# expect_pace WHAT SECONDS LEAST MOST: a machine that stands still for a moment spoils one span, and so a longer one
# is judged after it.
expect_pace() {
    local walked times
    for times in 1 2 4; do
        walked=$(pace $(($2 * times)))
        echo "$1: $walked hundredths of the pace"
        [ "$walked" -ge "$3" ] && [ "$walked" -le "$4" ] && return
    done
    fail "$1: the thumb walks at $walked hundredths"
}

# change_speed BUTTON SPEED...: each click brings the next speed
change_speed() {
    local button=$1 speed
    shift
    for speed in "$@"; do
        mark
        click "$button"
        expect_log "playback: pane 0 speed $speed\$"
    done
}

seek_to $((start + 3))
expect_pace 1X 3 70 130
# Backwards it walks to the left.
thumb_is_before() { [ "$(thumb_x)" -le "$1" ]; }
seek_to $((start + 60))
mark
xdotool key b
expect_log 'playback: plays backwards'
until_true "the thumb to walk back" thumb_is_before "$(x_of $((start + 55)))"
until_true "a picture that moves" moves "$(pane 0)"
xdotool key b
expect_log 'playback: plays forwards'
seek_to $((start + 3))
change_speed m_quickBtn 2X 4X 8X 8X
expect_pace 8X 16 550 1050
seek_to $((start + 3))
change_speed m_slowBtn 4X 2X 1X 1/2X 1/4X 1/8X 1/8X
# A second is less than two pixels here, so that one alone may look like half of it.
expect_pace 1/8X 2 8 19
click m_playBtn

# A day without recordings is grey. The calendar's rows are weeks, so today's place follows from another's.
cell() { # ROW COLUMN, the first rows being the month's name and those of the days
    click "PlaybackCalendar@$(($2 * 100 / 7 + 7)),$((($1 + 2) * 100 / 8 + 7))"
}
open_calendar() {
    click PlaybackDay@92,50
    until_true "the calendar" has_place PlaybackCalendar
    until_true "the calendar to rest" rests PlaybackCalendar
}
until_true "colours where the sample is" strip_has_recordings
open_calendar
column=$(($(date +%u) % 7))
mark
cell 2 "$column"
expect_log 'playback: day '
day=$(since_mark | sed -n 's/^playback: day //p')
until_true "a grey day" strip_is_empty
until_true "a pane without a recording" says_nothing_there "$(pane 3)"
place=$((14 + column + ($(date -d "$(date +%F)" +%s) - $(date -d "$day" +%s)) / day_seconds))
open_calendar
mark
cell $((place / 7)) $((place % 7))
expect_log "playback: day $(date +%F)"
until_true "today's colours" strip_has_recordings
until_true "today's first recording" shows_video "$(pane 3)"

# Without the sample its place is grey, and so is the pane that showed it.
mark
xdotool key alt+w s
expect_log 'archive: 16 sample recordings removed'
until_true "grey where the sample was" strip_is_empty
until_true "a pane without a recording" says_nothing_there "$(pane 3)"
stop_client
