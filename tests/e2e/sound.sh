#!/bin/bash
# A camera with sound: heard live, recorded, heard again from its recording and from a file, at a volume.
CLIENT=$1
MAKE_VIDEO=$2
here=$(dirname "$0")
# shellcheck source=lib.sh
. "$here/lib.sh"

# What would be heard goes into a file, at the pace of a device.
export SDL_AUDIODRIVER=disk SDL_DISKAUDIOFILE=$work/heard.raw

# loudness: the highest level of the last half second, 0 while there is silence
loudness() { tail -c 96000 "$SDL_DISKAUDIOFILE" | od -An -v -w2 -td2 | awk '{ v = $1 < 0 ? -$1 : $1; if (v > m) m = v } END { print m + 0 }'; }
is_heard() { [ "$(loudness)" -gt 100 ]; }
is_silent() { [ "$(loudness)" -eq 0 ]; }

"$MAKE_VIDEO" "$work/hall.mkv" 250 || fail "no video to show"
start_screen
start_client --archive "$work/archive" --source "Hall=$work/hall.mkv"
until_true "the archive" logged_ever 'archive: records into'
until_true "video in the first pane" logged_ever 'live: pane 0 plays Hall'
mark
show_title "$(pane 0)"
click btnAudio
expect_log 'live: pane 0 audio on'
until_true "sound" is_heard
mark
show_title "$(pane 0)"
click btnAudio
expect_log 'live: pane 0 audio off'
until_true "silence" is_silent

# What was recorded until the client was killed plays with its sound.
kill -9 "$client_pid"
wait "$client_pid" 2>/dev/null
start_client --archive "$work/archive" --source "Hall=$work/hall.mkv"
click "tab Playback"
until_true "the recording" logged_ever 'playback: shows .* ms after the seek'
until_true "its strip" has_strips 1
mark
click_until m_playBtn 'playback: sig_OnWndBtnClick\(0, 14\)'
click_until m_audioBtn 'playback: pane 0 audio on'
until_true "recorded sound" is_heard
click m_stopBtn
until_true "silence again" is_silent

# A file's sound, with its volume.
click m_openBtn
expect_dialog OpenRecording
xdotool type --delay 5 "$work/hall.mkv"
mark
xdotool key Return
expect_log 'playback: opened: .*hall.mkv'
expect_log 'playback: pane 0 plays hall.mkv'
click_until m_audioBtn 'playback: pane 0 audio on'
until_true "the file's sound" is_heard
mark
drag 1 "m_audioSlider@64,50" "m_audioSlider@0,50"
expect_log 'playback: sig_VoiceChanged\(0, 1\)'
is_quiet() { [ "$(loudness)" -gt 0 ] && [ "$(loudness)" -lt 400 ]; }
until_true "quiet sound" is_quiet
stop_client
