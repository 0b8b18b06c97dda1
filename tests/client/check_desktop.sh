#!/bin/sh
# check_desktop.sh CLIENT RECORDER BUILD_DIR SOURCE_DIR: the manual pages have the options of --help and no other; menu
# entry and metadata are valid, but for the licence that has not been chosen.
set -eu
made=$3/packaging source=$4/packaging
options() {
    grep -o -e '--[a-z][a-z-]*' | sort -u
}
for program in "$1" "$2"; do
    helped=$("$program" --help | options)
    described=$(sed 's/\\-/-/g' "$made/$(basename "$program").1" | options)
    [ "$helped" = "$described" ] || { printf '%s\n' "--help has:" "$helped" "the manual page:" "$described"; exit 1; }
done
if command -v desktop-file-validate >/dev/null; then
    said=$(desktop-file-validate "$source/panedeck-client.desktop")
    [ -z "$said" ] || { echo "$said"; exit 1; }
fi
if command -v appstreamcli >/dev/null; then
    ! appstreamcli validate --no-net --no-color --pedantic "$made/panedeck-client.metainfo.xml" | grep '^[EWIP]:' |
        grep -v ' metadata-license-missing$' || exit 1
fi
