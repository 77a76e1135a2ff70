# shellcheck shell=bash
# Sourced by the scripts beside it: where the tree is, and how missing packages come in.

# shellcheck disable=SC2034 # used by those who source this
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck disable=SC2034
jobs=$(nproc 2>/dev/null || echo 2)

say() { printf '== %s\n' "$*"; }

have() { # a command, or a file (a pattern with a leading slash)
    case $1 in
        /*) compgen -G "$1" >/dev/null ;;
        *) command -v "$1" >/dev/null ;;
    esac
}

as_root() {
    if [[ $(id -u) -eq 0 ]]; then
        "$@"
    elif have sudo; then
        sudo "$@"
    else
        echo "this needs root, and there is no sudo: $*" >&2
        return 1
    fi
}

apt_updated=false
update_package_lists() {
    if [[ $apt_updated == false ]]; then
        as_root apt-get -qq -o DPkg::Lock::Timeout=300 update </dev/null || return 1
        apt_updated=true
    fi
}

# need <command or file>:<Debian package> ...
# Installs the packages whose command or file is not there. Does nothing, and asks nobody, when all
# of them are.
need() {
    local item missing=()
    for item in "$@"; do
        have "${item%%:*}" || missing+=("${item#*:}")
    done
    [[ ${#missing[@]} -gt 0 ]] || return 0
    if ! have apt-get; then
        echo "please install what these Debian packages hold: ${missing[*]}" >&2
        return 1
    fi
    say "installing ${missing[*]}"
    update_package_lists || return 1
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -y --no-install-recommends \
        -o DPkg::Lock::Timeout=300 install "${missing[@]}" </dev/null
}

# What some tests read or compare with. They are skipped where it cannot be had.
want_test_data() {
    need /usr/share/ieee-data/oui.csv:ieee-data gettext:gettext-base \
        /usr/share/iso-codes/json/iso_3166-1.json:iso-codes ||
        say "some tests will be skipped"
}

need_build_tools() { need g++:g++ cmake:cmake ninja:ninja-build; }
need_googletest() { need /usr/src/googletest/CMakeLists.txt:googletest; }

need_clang() {
    need clang++-14:clang-14 \
        "/usr/lib/llvm-14/lib/clang/*/lib/linux/libclang_rt.asan-*.a:libclang-rt-14-dev" \
        llvm-symbolizer-14:llvm-14
}

need_libcxx() {
    need_clang || return 1
    need /usr/lib/llvm-14/include/c++/v1/string:libc++-14-dev \
        /usr/lib/llvm-14/lib/libc++abi.so:libc++abi-14-dev
}

need_arm() { need arm-linux-gnueabihf-g++:g++-arm-linux-gnueabihf qemu-arm:qemu-user; }
