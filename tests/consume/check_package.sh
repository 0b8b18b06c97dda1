#!/bin/sh
# check_package.sh BUILD_DIR SOURCE_DIR WORK_DIR: installs into a fresh root, moves the root, builds and
# runs the examples against it by find_package, compiles each public header alone by pkg-config, and runs the client.
set -eu
build=$1 source=$2 work=$3
rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/root"
root=$work/root
lib=$(dirname "$(find "$root" -name libpanedeck.so)")

"$(dirname "$0")/check_examples.sh" "$root" "$source" "$work/examples"

export PKG_CONFIG_PATH=$lib/pkgconfig
for header in "$root"/include/PaneDeck/*.h; do
    echo "#include <$(basename "$header")>" >"$work/alone.cpp"
    # shellcheck disable=SC2046
    c++ -std=c++17 -Wall -Wextra -Wpedantic -Werror -fsyntax-only $(pkg-config --cflags panedeck) "$work/alone.cpp"
done
expected="CDeviceTreeWidget.h CPaneDeck.h MyMimeData.h PaneDeckExport.h PaneDeckTypes.h"
found=$(cd "$root/include/PaneDeck" && echo *.h)
[ "$found" = "$expected" ] || { echo "installed headers: $found"; exit 1; }

# The client runs from the moved root, with all that it looks for beside it.
QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data \
    "$root/bin/panedeck-client" --pictures "$work/pictures" 2>"$work/said"
if grep -q '^panedeck-client:' "$work/said"; then
    cat "$work/said"
    exit 1
fi
for count in 1 4 9 16 64; do
    [ -s "$work/pictures/live-$count.png" ] || { echo "no picture of $count panes"; exit 1; }
done
if env LC_ALL=C ldd "$root/bin/panedeck-client" | grep libpanedeck | grep -qv "$root"; then
    echo "the moved client takes another library"
    exit 1
fi
