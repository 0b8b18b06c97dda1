#!/bin/sh
# check_sanitized.sh BUILD_DIR SOURCE_DIR WORK_DIR: installs a build made with the address sanitizer, and builds and runs
# the examples against it under that; then the wall, which is fed by threads, against a library of its own under the
# thread sanitizer.
set -eu
build=$1 source=$2 work=$3
here=$(dirname "$0")
rm -rf "$work/root" "$work/threads-root"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/root" >/dev/null
CHECK_FLAGS="-g1 -fsanitize=address,undefined -fno-sanitize-recover=all" \
    "$here/check_examples.sh" "$work/root" "$source" "$work/examples"

cmake -S "$source" -B "$work/threads" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQT_MAJOR=5 \
    -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -g1" -DCMAKE_CXX_FLAGS=-fsanitize=thread -DPANEDECK_BUILD_TESTS=OFF \
    -DPANEDECK_BUILD_CLIENT=OFF -DPANEDECK_BUILD_BENCHMARKS=OFF -DPANEDECK_BUILD_DESIGNER=OFF >/dev/null
# What makes the skin is a program of this build too, and Qt's own threads are at work in it.
TSAN_OPTIONS=report_bugs=0 cmake --build "$work/threads" -- --quiet
cmake --install "$work/threads" --prefix "$work/threads-root" >/dev/null
CHECK_FLAGS="-g1 -fsanitize=thread" CHECK_EXAMPLES=wall \
    "$here/check_examples.sh" "$work/threads-root" "$source" "$work/threads-examples"
