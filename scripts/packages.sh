# Sourced by the scripts beside it.

# fail <line>: the one clear line, and the end.
fail() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

# need <package>...: installs the Debian packages that are missing, as root or through sudo; quiet when all are there.
need() {
    local missing=() package root=() log
    command -v dpkg-query > /dev/null || fail "this is no Debian system; install what its packages $* bring, and dpkg"
    for package in "$@"; do
        [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2> /dev/null) == installed ]] || missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    if ((EUID)); then
        command -v sudo > /dev/null || fail "needs root or sudo for: apt-get install ${missing[*]}"
        root=(sudo)
    fi
    echo "installing ${missing[*]}"
    log=$(mktemp)
    # The index may be stale, and an update may fail for a repository that is not needed here: whether the installation works decides.
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 update > "$log" 2>&1 < /dev/null || true
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qy -o DPkg::Lock::Timeout=300 install --no-install-recommends "${missing[@]}" \
        >> "$log" 2>&1 < /dev/null || fail "cannot install ${missing[*]}: $(grep '^E:' "$log" | head -n 1) (log: $log)"
    rm -f "$log"
}

# What every build here needs beside g++ and cmake. The 32-bit side takes the compiler's multilib packages and no foreign architecture.
kBuildPackages=(g++ cmake ninja-build python3)
# The Python package is built and tested with Debian's Python, whose packages these are, whatever python3 is first in the path.
kPython=/usr/bin/python3
kWheelPackages=(python3-dev python3-setuptools python3-wheel python3-build python3-numpy binutils)
kPythonPackages=("${kWheelPackages[@]}" python3-scipy python3-pytest python3-dask python3-distributed)
# python_wheel <directory> <log> <libraries>: a source distribution of the Python package, the wheel made of that, and its files in <directory>/site.
python_wheel() {
    rm -rf "$1"
    TEVS_LIBRARY_DIR=$PWD/$3 "$kPython" -m build --no-isolation --outdir "$1" python > "$2" 2>&1 < /dev/null &&
        "$kPython" -m zipfile -e "$1"/*.whl "$1/site" >> "$2" 2>&1
}
# What the command-line tool needs besides.
kToolPackages=(libsndfile1-dev libcairo2-dev libcli11-dev)
# What the manual is made with.
kManualPackages=(python3 python3-sphinx python3-myst-parser libjs-sphinxdoc mandoc)
kAbis=(x86_64 i386)
[[ $(uname -m) == x86_64 ]] || fail "needs an x86_64 machine"
