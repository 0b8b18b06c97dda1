#!/bin/sh
# check_package.sh BUILD_DIR SOURCE_DIR WORK_DIR: installs into a fresh root, moves the root, builds the example
# against it by find_package and by pkg-config, compiles each public header alone, and runs the result.
set -eu
build=$1 source=$2 work=$3
rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/root"
root=$work/root
lib=$(dirname "$(find "$root" -name libpanedeck.so)")

cmake -S "$source/examples/minimal" -B "$work/example" -G Ninja -DCMAKE_PREFIX_PATH="$root" \
    -DCMAKE_CXX_FLAGS="${CHECK_FLAGS:-}" >/dev/null
cmake --build "$work/example" >/dev/null
QT_QPA_PLATFORM=offscreen "$work/example/minimal" --once

export PKG_CONFIG_PATH=$lib/pkgconfig
for header in "$root"/include/PaneDeck/*.h; do
    echo "#include <$(basename "$header")>" >"$work/alone.cpp"
    # shellcheck disable=SC2046
    c++ -std=c++17 -Wall -Wextra -Wpedantic -Werror -fsyntax-only $(pkg-config --cflags panedeck) "$work/alone.cpp"
done
expected="CDeviceTreeWidget.h CPaneDeck.h MyMimeData.h PaneDeckExport.h PaneDeckTypes.h"
found=$(cd "$root/include/PaneDeck" && echo *.h)
[ "$found" = "$expected" ] || { echo "installed headers: $found"; exit 1; }
