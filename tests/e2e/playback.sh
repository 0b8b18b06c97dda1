#!/bin/bash
# Recorded video worked by hand: play and pause, snapshot, download, clip, a camera from the tree, layouts, full
# screen, and any file with its slider.
CLIENT=$1
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"

keep_screen() { [ -z "${E2E_KEEP:-}" ] || import -window root "$E2E_KEEP/$1.png"; }
# saved WHAT: the file that the log says was saved since the mark
saved() { since_mark | sed -n "s/^playback: $1: //p"; }

start_playback

# A double click in a gap of the day plays from the next recording on; after midnight there is one.
mark
double_click m_dayWidget@0,60
expect_log 'playback: sig_TimerSliderdbClicked\(0\)'
expect_log 'playback: shows .* ms after the seek'
until_true "a picture that moves" moves "$(pane 0)"
until_true "one in step with it" moves "$(pane 3)"
click m_playBtn
until_true "a picture that stands still" stands_still "$(pane 0)"
until_true "one that stands still with it" stands_still "$(pane 3)"

# What the pane shows goes into a picture file, and the recording itself into another.
mark
click m_screenshotBtn
expect_log 'playback: snapshot saved: .*png'
[ "$(identify -format '%k' "$(saved 'snapshot saved')")" -gt 60 ] || fail "the snapshot is no picture of the scene"
click m_downloadBtn
expect_log 'playback: downloaded: .*mkv'
download=$(saved downloaded)
sample=$(find "$work/archive/Camera 01" -name '*-sample.mkv' | sort | head -1)
cmp "$download" "$sample" || fail "the download is not the recording"

# Two clicks on the scissors write what lies between them.
click m_playBtn
click m_quickBtn
mark
click m_clipBtn
expect_log 'playback: clip starts at'
until_true "something to clip" moves "$(pane 0)"
click m_clipBtn
expect_log 'playback: clip saved: .*mkv'
clip=$(saved 'clip saved')
[ -s "$clip" ] && [ "$(stat -c %s "$clip")" -lt "$(stat -c %s "$sample")" ] || fail "the clip is no part of the recording"
[ "$(since_mark | grep -c 'clip saved')" -eq 1 ] || fail "more than one clip"
mark
click m_stopBtn
expect_log 'playback: shows .* ms after the seek'
expect_log 'playback: pane 0 speed 1X'
until_true "a picture that stands still" stands_still "$(pane 0)"

# The next motion, and ten seconds of it in a file that others can check and that plays again below.
xdotool key n
mark
click PlaybackExport
expect_dialog ExportBegin
click ExportBegin
expect_log 'playback: exported: .*mp4'
exported=$(saved exported)
(cd "$(dirname "$exported")" && sha256sum --quiet -c ./*.sha256) || fail "the sums are not those of the export"
click ExportClose
until_true "no dialog" has_no_place ExportBegin

# A camera from the tree takes the pane it is dropped on, and shows the moment that all show.
mark
drag 1 "Camera 03" "$(pane 0)"
expect_log 'playback: sig_DragEvent\(Camera 03, 0\)'
expect_log 'playback: pane 0 plays Camera 03'
same_as_third() {
    picture "$work/first.png" "$(pane 0)" && picture "$work/third.png" "$(pane 2)"
    convert "$work/first.png" -crop 300x120+60+40 +repage "$work/first.png"
    convert "$work/third.png" -crop 300x120+60+40 +repage "$work/third.png"
    [ "$(unlike "$work/first.png" "$work/third.png")" -lt 2000 ]
}
until_true "the same picture in both panes" same_as_third

# Layouts, each with its pictures although nothing plays.
for count in 1 6 8 9 4; do
    mark
    click "m_btn$count"
    expect_log "playback: sig_wndNumberChanged\\($count\\)"
    until_true "$count panes" has_place "$(pane $((count - 1)))"
    until_true "no more panes" has_no_place "$(pane "$count")"
    until_true "a picture in the first of $count panes" shows_video "$(pane 0)"
done
until_true "a picture in the last pane" shows_video "$(pane 3)"

is_full_screen() { [ "$(place m_disPlayRect)" = "0 0 1400 900" ]; }
click btnPVplayer
until_true "full screen" is_full_screen
until_true "a picture on all of the screen" shows_video "$(pane 0)"
keep_screen full-screen
xdotool key Escape
until_true "the toolbar back" has_place btnPVplayer
until_true "the picture back" shows_video "$(pane 0)"

# Any video file plays in the active pane, with a slider in place of the scale.
click "$(pane 1)"
mark
click m_openBtn
until_true "the dialog" has_place OpenRecording
until_true "the dialog to rest" rests OpenRecording
xdotool type --delay 5 "$exported"
xdotool key Return
expect_log 'playback: opened: '
until_true "the file's slider" has_place m_fileTypeWidget
until_true "no scale" has_no_place m_dayWidget
until_true "a file that plays" moves "$(pane 1)"
stands_still "$(pane 2)" || fail "the file makes the recordings play"
click m_playBtn
until_true "a file that stands still" stands_still "$(pane 1)"
# However long it has played: stop brings the thumb back to the start.
mark
click m_stopBtn
expect_log 'playback: pane 1 speed 1X'
until_true "the file's start" stands_still "$(pane 1)"
picture "$work/early.png" "$(pane 1)"
mark
drag 1 m_fileTypeWidget@2,55 m_fileTypeWidget@80,55
expect_log 'playback: sig_SliderMoved\(1, (7[5-9]|8[0-5]).\)'
until_true "another picture" differs "$work/early.png" "$(pane 1)"
keep_screen file
until_true "a file that stands still" stands_still "$(pane 1)"
click "$(pane 0)"
until_true "the scale back" has_place m_dayWidget
click "$(pane 1)"
until_true "the slider back" has_place m_fileTypeWidget
mark
drag 1 "Camera 02" "$(pane 1)"
expect_log 'playback: pane 1 plays Camera 02'
until_true "the scale of the camera" has_place m_dayWidget
stop_client
