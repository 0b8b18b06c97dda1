#!/bin/sh
# check_examples.sh ROOT SOURCE_DIR WORK_DIR: builds each example against the tree installed in ROOT, runs it offscreen
# and asks for its picture, and holds the programs in the guide to the examples' text. CHECK_FLAGS are the compiler's,
# such as a sanitizer's; the tree should have been built with the same. CHECK_PACKAGE is the package, PaneDeck by default,
# CHECK_EXAMPLES names those that are wanted.
set -eu
root=$1 source=$2 work=$3
flags=${CHECK_FLAGS:-}
mkdir -p "$work/run"
chmod 700 "$work/run"
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$work/run"
export LSAN_OPTIONS="suppressions=$source/tests/support/lsan.supp:print_suppressions=0"
case $flags in *thread*) export TSAN_OPTIONS="halt_on_error=1 suppressions=$source/tests/consume/tsan.supp ${TSAN_OPTIONS:-}" ;; esac

for name in ${CHECK_EXAMPLES:-minimal wall playback tree form}; do
    cmake -S "$source/examples/$name" -B "$work/$name" -G Ninja -DCMAKE_PREFIX_PATH="$root" -DCMAKE_BUILD_TYPE=Debug \
        -DPANEDECK_PACKAGE="${CHECK_PACKAGE:-PaneDeck}" -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror $flags" >/dev/null
    cmake --build "$work/$name" >/dev/null
    rm -f "$work/$name.png"
    timeout 60 "$work/$name/$name" --once "$work/$name.png" >"$work/$name.said" 2>&1 || { cat "$work/$name.said"; exit 1; }
    [ -s "$work/$name.png" ] || { echo "$name has left no picture"; exit 1; }
    # The deck's own line, what Qt thinks of the strip's sheet, and the offscreen platform's excuse.
    if grep -v -e '~CPaneDeck' -e 'propagateSizeHints' -e 'QCssParser::parseColorValue: Specified color' "$work/$name.said"; then
        echo "$name says more than it should"
        exit 1
    fi
done

# What stands in the guide behind <!-- file --> is that file.
guide=$source/docs/embedding.md
for file in $(sed -n 's/^<!-- \(examples\/[^ ]*\) -->$/\1/p' "$guide"); do
    awk -v mark="<!-- $file -->" '$0 == mark { found = 1; next } found && /^```/ { if (inside) exit; inside = 1; next } inside' \
        "$guide" | cmp - "$source/$file" || { echo "the guide differs from $file"; exit 1; }
done
