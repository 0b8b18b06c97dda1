#!/bin/bash
# Recorded video worked by hand: the sample of a first start, double click on the scale, speed, clip, stop.
CLIENT=$1
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"

start_screen
start_client --archive "$work/archive"
until_true "the sample" logged_ever 'archive: sample recordings made'

# The last tab comes up with the first recording of the newest day.
read -r x y w h <<<"$(place Tabs)"
for dx in 180 200 220 240 260; do
    has_place m_dayWidget || xdotool mousemove --sync $((x + dx)) $((y + h / 2)) click 1
    sleep 0.3
done
until_true "video in the first pane" shows_video "$(pane 0)"

# A double click in a gap of the day plays from the next recording on.
mark
double_click m_dayWidget@30,60
expect_log 'playback: sig_TimerSliderdbClicked\(0\)'
expect_log 'playback: shows .* ms after the seek'
picture "$work/before.png" "$(pane 0)"
until_true "a picture that moves" differs "$work/before.png" "$(pane 0)"

# Two clicks on the scissors write what lies between them.
click m_quickBtn
mark
click m_clipBtn
expect_log 'playback: clip starts at'
picture "$work/before.png" "$(pane 0)"
until_true "something to clip" differs "$work/before.png" "$(pane 0)"
click m_clipBtn
expect_log 'playback: clip saved: .*mkv'
clip=$(since_mark | sed -n 's/.*clip saved: //p')
[ -s "$clip" ] || fail "the clip is empty"

mark
click m_stopBtn
expect_log 'playback: shows .* ms after the seek'
stop_client
