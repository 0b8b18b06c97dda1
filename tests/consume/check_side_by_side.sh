#!/bin/sh
# check_side_by_side.sh QT6_BUILD_DIR QT5_BUILD_DIR SOURCE_DIR WORK_DIR: installs the builds with Qt 6 and with Qt 5 into
# one prefix, where neither may write over a file of the other's but the skin, then builds and runs the examples with
# the former, and one of them with the latter. Skipped (77) where there is no build with Qt 5.
set -eu
qt6=$1 qt5=$2 source=$3 work=$4
[ -e "$qt5/lib/libpanedeck.so" ] || { echo "no build with Qt 5 in $qt5"; exit 77; }
rm -rf "$work"
mkdir -p "$work"

# install_build BUILD_DIR NAME: as a list of its files too, without the data, which both make of the same sources
install_build() {
    cmake --install "$1" --prefix "$work/root" >/dev/null
    sed "s|^$work/root/||" "$1/install_manifest.txt" | grep -v '^share/panedeck/' | sort >"$work/$2.files"
}
install_build "$qt5" qt5
install_build "$qt6" qt6
both=$(comm -12 "$work/qt5.files" "$work/qt6.files")
[ -z "$both" ] || { echo "installed by both:"; echo "$both"; exit 1; }

CHECK_PACKAGE=PaneDeckQt6 "$(dirname "$0")/check_examples.sh" "$work/root" "$source" "$work/examples"
cmake -S "$source/examples/minimal" -B "$work/minimal" -G Ninja -DCMAKE_PREFIX_PATH="$work/root" >/dev/null
cmake --build "$work/minimal" >/dev/null
QT_QPA_PLATFORM=offscreen "$work/minimal/minimal" --once "$work/minimal.png"

# links PROGRAM LIBRARY OTHERS: with that build of the library from the prefix, and nothing of the other Qt
links() {
    env LC_ALL=C ldd "$1" >"$work/links"
    grep -q "^\s*$2\.so\S* => $work/root/" "$work/links" || { echo "$1 takes no $2"; exit 1; }
    ! grep "$3" "$work/links" || { echo "$1 takes the other Qt"; exit 1; }
}
links "$work/minimal/minimal" libpanedeck 'libQt6\|panedeck-qt6'
for name in minimal form; do
    links "$work/examples/$name/$name" libpanedeck-qt6 'libQt5\|panedeck\.so'
done
