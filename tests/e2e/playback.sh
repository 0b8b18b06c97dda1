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
click "tab Playback"
until_true "video in the first pane" shows_video "$(pane 0)"

# A double click in a gap of the day plays from the next recording on; after midnight there is one at any time of day.
mark
double_click m_dayWidget@0,60
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
