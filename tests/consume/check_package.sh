#!/bin/sh
# check_package.sh BUILD_DIR SOURCE_DIR WORK_DIR: installs into a fresh root, moves the root, builds and runs the
# examples against it by find_package, compiles each public header alone by pkg-config, and runs the client. Then the
# library as a static one, and as a part of another project.
set -eu
build=$1 source=$2 work=$3
rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/root"
root=$work/root
lib=$(dirname "$(find "$root" -name libpanedeck.so)")

export QT_QPA_PLATFORM=offscreen

# link_example LIBDIR PROGRAM PACKAGE...: by pkg-config.
link_example() {
    dir=$1 program=$2
    shift 2
    # shellcheck disable=SC2046
    c++ -std=c++17 -DPANEDECK_TREE="\"$root/share/panedeck\"" -o "$program" "$source/examples/minimal/main.cpp" \
        $(PKG_CONFIG_PATH=$dir/pkgconfig pkg-config --cflags --libs "$@")
    LD_LIBRARY_PATH=$dir "$program" --once "$program.png"
}

"$(dirname "$0")/check_examples.sh" "$root" "$source" "$work/examples"
link_example "$lib" "$work/linked" panedeck panedeck-devicetree panedeck-form
for version in 0.1 0.3; do
    sed "s/} REQUIRED/} $version REQUIRED/" "$source/examples/minimal/CMakeLists.txt" >"$work/CMakeLists.txt"
    if cmake -S "$work" -B "$work/other-version" -G Ninja -DCMAKE_PREFIX_PATH="$root" >"$work/refusal" 2>&1 ||
        ! grep -q 'compatible with requested' "$work/refusal"; then
        echo "found for version $version"
        exit 1
    fi
done

export PKG_CONFIG_PATH=$lib/pkgconfig
for header in "$root"/include/PaneDeck/*.h; do
    echo "#include <$(basename "$header")>" >"$work/alone.cpp"
    # shellcheck disable=SC2046
    c++ -std=c++17 -Wall -Wextra -Wpedantic -Werror -fsyntax-only $(pkg-config --cflags panedeck) "$work/alone.cpp"
done
expected="CDeviceTreeWidget.h CPaneDeck.h FormDeck.h MyMimeData.h PaneDeckExport.h PaneDeckTypes.h PaneDeckVersion.h"
found=$(cd "$root/include/PaneDeck" && echo *.h)
[ "$found" = "$expected" ] || { echo "installed headers: $found"; exit 1; }

# The client runs from the moved root, with all that it looks for beside it.
XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data \
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

# A static library, and what it needs in turn; no test, client or skin.
cmake -S "$source" -B "$work/static-build" -G Ninja -DBUILD_SHARED_LIBS=OFF -DPANEDECK_BUILD_TESTS=OFF \
    -DPANEDECK_BUILD_CLIENT=OFF -DPANEDECK_BUILD_SKIN=OFF -DPANEDECK_BUILD_BENCHMARKS=OFF >/dev/null
cmake --build "$work/static-build" >/dev/null
cmake --install "$work/static-build" --prefix "$work/static" >/dev/null
cmake -S "$source/examples/minimal" -B "$work/static-example" -G Ninja -DCMAKE_PREFIX_PATH="$work/static" \
    -DPANEDECK_TREE="$root/share/panedeck" >/dev/null
cmake --build "$work/static-example" >/dev/null
"$work/static-example/minimal" --once "$work/static.png"
link_example "$(dirname "$(find "$work/static" -name libpanedeck.a)")" "$work/static-linked" panedeck
if ldd "$work/static-example/minimal" "$work/static-linked" | grep libpanedeck; then
    echo "linked statically, and still needs the library"
    exit 1
fi

# In a host's tree library and skin lie where the host's own bin/ finds them, built and installed; it asks for the latter.
cmake -S "$source/tests/consume/host" -B "$work/host" -G Ninja -DPANEDECK_SOURCE="$source" >/dev/null
cmake --build "$work/host" >/dev/null
"$work/host/bin/host"
cmake --install "$work/host" --prefix "$work/quiet" >/dev/null
[ "$(cd "$work/quiet" && find . -type f)" = ./bin/host ] || { echo "installed without being asked"; exit 1; }
cmake -DPANEDECK_INSTALL=ON "$work/host" >/dev/null
cmake --build "$work/host" >/dev/null
cmake --install "$work/host" --prefix "$work/asked" >/dev/null
"$work/asked/bin/host"
