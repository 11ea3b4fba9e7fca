#!/usr/bin/env bash
# scripts/package.sh [amd64|i386]...
#
# Makes the source tarball and the Debian packages for both architectures, or the named ones, from the tree as it stands, and writes them to package-out/. Then unpacks
# them to a root of their own, and from there builds and runs the package test, by CMake and pkg-config, shared and static, the tool and the Python package.
# Nothing is installed on this machine but what the build needs.
set -uo pipefail
cd "$(dirname "$0")/.." || exit 1
source scripts/packages.sh

architectures=("$@")
(($#)) || architectures=(amd64 i386)
for architecture in "${architectures[@]}"; do
    [[ $architecture == amd64 || $architecture == i386 ]] || fail "usage: scripts/package.sh [amd64|i386]..."
done
need "${kBuildPackages[@]}" "${kToolPackages[@]}" "${kManualPackages[@]}" python3-dev python3-numpy python3-setuptools pkg-config dpkg-dev debhelper dh-python fakeroot lintian xz-utils
[[ " ${architectures[*]} " != *" i386 "* ]] || need g++-multilib binutils-i686-linux-gnu

revision=$(dpkg-parsechangelog -S Version)
version=${revision%-*}
declared=$(sed -nE 's/^project\(tevs VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
[[ $version == "$declared" ]] || fail "debian/changelog is of version $version, CMakeLists.txt of $declared"

work=$PWD/build/packages out=$PWD/package-out
rm -rf "$work" && mkdir -p "$work/tevs-$version" "$out" || fail "cannot write to $work and $out"
SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -S Timestamp)
export SOURCE_DATE_EPOCH
reproducible=(--sort=name --owner=0 --group=0 --numeric-owner --mode=go=rX,u+w --mtime="@$SOURCE_DATE_EPOCH")

# The tarball is what the tree holds, without what builds leave in it; the packages are made of it.
tar --exclude-vcs --exclude='./build' --exclude='./*-out' --exclude='./python/'{build,dist,generated,LICENSE,'*.egg-info',tevs/_index.py,tevs/_lib,tevs/raw.pyi} \
    --exclude='__pycache__' --exclude='*.so' --exclude=./debian -c . | tar -x -C "$work/tevs-$version" || fail "the tree cannot be copied to $work"
tarball=tevs_$version.orig.tar.xz
tar "${reproducible[@]}" -C "$work" -cJf "$work/$tarball" "tevs-$version" || fail "the source tarball cannot be written"
cp -r debian "$work/tevs-$version/"

# package <architecture>: its packages; with those of amd64 the source package, and what serves all architectures.
package() {
    local log=$work/$1.log options=(--build=full)
    # The build dependencies of i386 would be packages of a foreign architecture: the compiler's multilib packages stand in for them.
    [[ $1 != i386 ]] || options=(--build=any --host-arch=i386 --no-check-builddeps)
    echo "== $1"
    if ! (cd "$work/tevs-$version" && dpkg-buildpackage --no-sign "${options[@]}") > "$log" 2>&1 < /dev/null; then
        grep -E -A 5 'error|Error|FAILED' "$log" | head -n 40
        fail "the packages of $1 cannot be built: $log"
    fi
    # The first upload to Debian would close a bug.
    if ! lintian --fail-on error --suppress-tags initial-upload-closes-no-bugs "$work/tevs_${revision}_$1.changes" 2> /dev/null; then
        fail "lintian finds errors in the packages of $1"
    fi
}

# prove <architecture>: a caller's build and run of what the packages hold, in a root of their own.
prove() {
    local root=$work/root-$1 log=$work/root-$1.log flags=() deb libdir
    mkdir "$root" || fail "cannot write to $work"
    for deb in "$work"/*_"$1".deb; do
        dpkg -x "$deb" "$root" || fail "$deb cannot be unpacked"
    done
    libdir=$(dirname "$root"/usr/lib/*/libtevsq7.so.5)
    [[ $1 == amd64 ]] || flags=(-m32)
    if ! {
        export LD_LIBRARY_PATH=$libdir
        cmake -S tests/package -B "$root/build" -G Ninja "-DCMAKE_PREFIX_PATH=$root/usr" "-DCMAKE_LIBRARY_ARCHITECTURE=$(basename "$libdir")" \
              "-DCMAKE_C_FLAGS=${flags[*]}" "-DCMAKE_CXX_FLAGS=${flags[*]}" &&
            cmake --build "$root/build" && ctest --test-dir "$root/build" --output-on-failure &&
            cmake "-DPREFIX=$root/usr" "-DLIBDIR=$libdir" -DCC=cc "-DFLAGS=${flags[*]}" "-DSOURCE=$PWD" "-DWORK=$root/by_hand" -P tests/package/by_hand.cmake
    } > "$log" 2>&1 < /dev/null; then
        tail -n 30 "$log"
        fail "the package test fails with the packages of $1: $log"
    fi
    if [[ $1 == amd64 ]]; then
        [[ $("$root/usr/bin/tevs" dial "555 0123" - | "$root/usr/bin/tevs" detect - | tee "$log" | awk '!/^#/ { printf "%s", $1 }') == 5550123 ]] || fail "the packaged tool does not detect what it dials: $log"
        PYTHONPATH=$root/usr/lib/python3/dist-packages "$kPython" -c 'import numpy as np, tevs; assert (tevs.add(np.int16([32767]), np.int16([1])) == 32767).all()' ||
            fail "the packaged Python module does not work"
        apt-get -qq --simulate install "$work"/*_amd64.deb "$work"/*_all.deb > "$log" 2>&1 < /dev/null || fail "the packages cannot be installed here: $(grep '^ \|^E:' "$log" | head -n 1)"
    fi
    unset LD_LIBRARY_PATH
}

for architecture in "${architectures[@]}"; do
    package "$architecture"
    prove "$architecture"
done
rm -f "$out"/*
mv "$work"/*.deb "$work"/*.tar.* "$work"/*.dsc "$work"/*.changes "$work"/*.buildinfo "$out"/ 2> /dev/null
ls -l "$out"
