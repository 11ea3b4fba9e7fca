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
# What the command-line tool needs besides.
kToolPackages=(pkg-config libsndfile1-dev libcairo2-dev libcli11-dev)
kAbis=(x86_64 i386)
[[ $(uname -m) == x86_64 ]] || fail "needs an x86_64 machine"
