#!/usr/bin/env bash
# Installs the build into a folder of its own, moves that folder, and builds and runs the sample program against it:
# through the CMake package, and again through pkg-config; then hosts of other kinds (programs/).
#   consume.sh CMAKE CXX SAMPLES_DIR BUILD_DIR WORK_DIR
set -euo pipefail
cmake=$1 cxx=$2 samples=$3 build=$4 work=$5

rm -rf "$work"
mkdir -p "$work"
"$cmake" --install "$build" --prefix "$work/first" >"$work/install.log"
mv "$work/first" "$work/prefix" # an installed tree may be moved
prefix=$work/prefix

expect() { # what the sample prints, whichever way it was built
    "$1" >"$work/printed" 2>"$work/complaints"
    [ ! -s "$work/complaints" ]
    grep -qx 'changed sceneSetting' "$work/printed"
    grep -qx 'action: Rain.' "$work/printed"
}

expect_scenes() { # the same of the sample that reads a screenplay
    "$1" "$samples/the-last-ferry.fdx" >"$work/printed"
    grep -qx 'line 5: 1 INT. FERRY TERMINAL - NIGHT' "$work/printed"
    [ "$(wc -l <"$work/printed")" -eq 15 ]
}

"$cmake" -G Ninja -S "$samples" -B "$work/cmake" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$prefix" >"$work/configure.log"
"$cmake" --build "$work/cmake" >"$work/build.log"
expect "$work/cmake/link-the-library"
expect_scenes "$work/cmake/read-a-screenplay"

pc=$(dirname "$(find "$prefix" -name zonstoryparser.pc)")
flags=$(PKG_CONFIG_PATH=$pc pkg-config --cflags --libs zonstoryparser)
libraries=$(PKG_CONFIG_PATH=$pc pkg-config --variable=libdir zonstoryparser)
# shellcheck disable=SC2086 # the flags are words
"$cxx" -std=c++17 -Wall -Wextra -Werror "$samples/link-the-library.cpp" $flags -Wl,-rpath,"$libraries" -o "$work/by-pkg-config"
expect "$work/by-pkg-config"
flags=$(PKG_CONFIG_PATH=$pc pkg-config --cflags --libs zonscreenplay)
# shellcheck disable=SC2086 # the flags are words
"$cxx" -std=c++17 -Wall -Wextra -Werror "$samples/read-a-screenplay.cpp" $flags -Wl,-rpath,"$libraries" -o "$work/by-pkg-config"
expect_scenes "$work/by-pkg-config"

programs=$(cd "$(dirname "$0")" && pwd)/programs
"$cmake" -G Ninja -S "$programs" -B "$work/hosts" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$prefix" >"$work/configure.log"
"$cmake" --build "$work/hosts" >"$work/build.log"
in_silence() {
    "$@" >"$work/printed" 2>&1 || { cat "$work/printed"; echo "failed: $*"; exit 1; }
    [ ! -s "$work/printed" ] || { cat "$work/printed"; echo "printed by: $*"; exit 1; }
}
in_silence "$work/hosts/beside-the-toolkit"
# Freed memory counts as free: the allocator keeps none of it aside.
in_silence env GLIBC_TUNABLES=glibc.malloc.tcache_count=0 "$work/hosts/load-and-unload" "$work/hosts/libplugin.so"

# What was installed is a whole: nothing of the build or source tree is referred to.
if grep -rIlF -e "$build" -e "$(dirname "$samples")/" "$prefix"; then
    echo "the installed files above name the build tree" >&2
    exit 1
fi
for library in zoncore zonmetadata zonstoryparser zonscreenplay; do
    find "$prefix" -name "lib$library.so.*" | grep -q .
done
