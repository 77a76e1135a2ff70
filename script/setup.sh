# shellcheck shell=bash
# Sourced by the scripts beside it: where the tree is, what their arguments are, and how missing
# packages come in.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck disable=SC2034 # used by those who source this
here=$root/script jobs=$(nproc 2>/dev/null || echo 2)
build_root=$root/build # where everything is built

say() { printf '== %s\n' "$*"; }
refuse() { # <what is wrong with the call>
    echo "$(basename "$0"): $*; --help tells more" >&2
    exit 2
}

# The comment that a script begins with is its help.
help() { sed -n '2,/^[^#]/s/^#\( \|$\)//p' "$0"; }

# options <how many arguments> "$@": understands --help and --build DIR, refuses any other option, too
# many arguments and a build root that is not ours; leaves the rest in `arguments`. A script with options
# of its own defines own_option: it looks at the first of what is left and sets `taken`, how many words
# the option has.
arguments=()
own_option() { :; }
options() {
    local most=$1 taken
    shift
    while [[ $# -gt 0 ]]; do
        taken=0
        own_option "$@"
        case $taken:$1 in
            [1-9]*) ;;
            *:-h | *:--help) help && exit ;;
            *:--build=?*) build_root=$(realpath -m -- "${1#*=}") ;;
            *:--build)
                [[ -n ${2:-} ]] || refuse "--build wants a folder"
                build_root=$(realpath -m -- "$2") taken=2
                ;;
            *:-*) refuse "there is no option $1" ;;
            *) arguments+=("$1") ;;
        esac
        shift $((taken > 0 ? taken : 1))
    done
    [[ ${#arguments[@]} -le $most ]] || refuse "too many arguments: ${arguments[*]}"
    need_build_root
}

# Says in a sentence that nothing can be built where it should be: in the whole build root, or in a
# folder of it, where everything has to be ours to change (not left by root, for instance).
# shellcheck disable=SC2120 # the folder may be left out
need_build_root() { # [folder]
    local used=$build_root depth=(-maxdepth 0) stranger=
    [[ -z ${1:-} ]] || used+=/$1 depth=()
    { mkdir -p "$used" && stranger=$(find "$used" "${depth[@]}" ! -writable ! -type l -print -quit) &&
        [[ -z $stranger ]]; } 2>/dev/null || {
        echo "$(basename "$0"): ${stranger:-$used} cannot be written; --build DIR builds elsewhere" >&2
        exit 2
    }
}

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

# What the package manager says goes into a file that is shown when it fails.
apt() {
    local log status=0
    log=$(mktemp -t halvtypes-packages.XXXXXX) || return 1
    as_root env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 apt-get -q \
        -o DPkg::Lock::Timeout=300 "$@" >"$log" 2>&1 </dev/null || status=$?
    [[ $status -eq 0 ]] || cat "$log" >&2
    rm -f "$log"
    return $status
}

apt_updated=false
update_package_lists() {
    [[ $apt_updated == true ]] || apt update || return 1
    apt_updated=true
}

# What installing these packages would take: how many with all that they need, and how much room.
cost() {
    as_root env LC_ALL=C apt-get --assume-no --no-install-recommends -o DPkg::Lock::Timeout=300 \
        install "$@" </dev/null 2>/dev/null |
        sed -n -e 's/.* \([0-9]*\) newly installed.*/\1 new packages/p' \
            -e 's/^Need to get \(.*\) of archives.*/\1 to fetch/p' \
            -e 's/^After this operation, \(.*\) of additional disk space.*/\1 of disk/p' |
        paste -sd , | sed 's/,/, /g'
}

# need <command or file>:<Debian package> ...
# Installs the packages whose command or file is not there. Does nothing, and asks nobody, when all
# of them are.
need() {
    local item cost missing=()
    for item in "$@"; do
        have "${item%%:*}" || missing+=("${item#*:}")
    done
    [[ ${#missing[@]} -gt 0 ]] || return 0
    if ! have apt-get; then
        echo "please install what these Debian packages hold: ${missing[*]}" >&2
        return 1
    fi
    say "missing: ${missing[*]}"
    update_package_lists || return 1
    cost=$(cost "${missing[@]}") || true
    say "installing them${cost:+ and what they need: $cost}"
    apt -y --no-install-recommends install "${missing[@]}"
}

# unpack <folder> <package>...: what Debian's packages hold, without installing them
unpack() {
    local folder=$1
    shift
    rm -rf "$folder"
    mkdir -p "$folder"
    say "fetching $*"
    (
        cd "$folder" || exit 1
        fetch() { apt-get -qq -o APT::Sandbox::User="$(id -un)" download "$@"; }
        fetch "$@" 2>/dev/null || { update_package_lists && fetch "$@"; } || exit 1
        for package in ./*.deb; do
            dpkg -x "$package" . && rm "$package" || exit 1
        done
    )
}

# unpack_foreign <architecture> <folder> <package>...: the same for another machine, of which the package
# manager here need not know
unpack_foreign() {
    local folder=$2 state=$2.apt
    mkdir -p "$state/lists/partial" "$state/cache/archives/partial"
    printf '%s "%s";\n' APT::Architecture "$1" APT::Architectures "$1" \
        Dir::State::Lists "$state/lists" Dir::State::status /dev/null Dir::Cache "$state/cache" \
        APT::Sandbox::User "$(id -un)" >"$state/apt.conf"
    shift 2
    # A source that lacks the machine does no harm as long as the others have the packages.
    apt-get -qq -c "$state/apt.conf" update 2>/dev/null || true
    APT_CONFIG=$state/apt.conf unpack "$folder" "$@"
}

# What some tests read, compare with or run. They are skipped where it cannot be had.
want_for_tests() { # <preset>
    local gdb=gdb
    [[ -z ${cross[$1]:-} ]] || gdb="gdb-multiarch"
    need /usr/share/ieee-data/oui.csv:ieee-data gettext:gettext-base \
        /usr/share/iso-codes/json/iso_3166-1.json:iso-codes "$gdb:$gdb" ||
        say "some tests will be skipped"
}

# Ninja for these scripts, make for whoever builds by hand.
need_build_tools() { need g++:g++ cmake:cmake ninja:ninja-build make:make; }
need_googletest() { need /usr/src/googletest/CMakeLists.txt:googletest; }
need_python() { # for the module
    need /usr/include/pybind11/pybind11.h:pybind11-dev "/usr/include/python3.*/Python.h:python3-dev"
}

need_clang() {
    need clang++-14:clang-14 \
        "/usr/lib/llvm-14/lib/clang/*/lib/linux/libclang_rt.asan-*.a:libclang-rt-14-dev" \
        llvm-symbolizer-14:llvm-14
}

# The presets that build for another machine: Debian's name of it, and what runs its programs.
declare -A cross=(
    [arm]="arm-linux-gnueabihf qemu-arm:qemu-user"
    [arm-neon]="arm-linux-gnueabihf qemu-arm:qemu-user"
    [arm64]="aarch64-linux-gnu qemu-aarch64:qemu-user"
    [riscv64]="riscv64-linux-gnu qemu-riscv64:qemu-user"
    [i386]="i686-linux-gnu /usr/lib32/libstdc++.so.6:lib32stdc++6"
    [armel]="arm-linux-gnueabi qemu-arm:qemu-user"
)
need_cross() { # <preset>
    local triplet runner
    read -r triplet runner <<<"${cross[$1]}"
    need "$triplet-g++:g++-$triplet" "$runner"
}

# Installs the compilers and libraries of a preset; sets the options that tell it where they are.
preset_options=()
need_preset() { # <preset>
    need_build_tools || return 1
    preset_options=()
    case $1 in
        clang-libcxx)
            need_clang && need /usr/lib/llvm-14/include/c++/v1/string:libc++-14-dev \
                /usr/lib/llvm-14/lib/libc++abi.so:libc++abi-14-dev
            ;;
        clang19-libcxx)
            need clang++-19:clang-19 && "$root/script/libcxx-19" --build "$build_root" || return 1
            local libcxx=$build_root/libcxx-19 link
            link="-stdlib=libc++ -L$libcxx/lib -Wl,-rpath,$libcxx/lib"
            libcxx19="-nostdinc++ -isystem $libcxx/include/c++/v1"
            # shellcheck disable=SC2034
            preset_options=(-DCMAKE_CXX_FLAGS="$libcxx19" -DCMAKE_EXE_LINKER_FLAGS="$link"
                -DCMAKE_SHARED_LINKER_FLAGS="$link")
            ;;
        sanitize-clang | fuzz) need_clang ;;
        windows)
            need x86_64-w64-mingw32-g++-posix:g++-mingw-w64-x86-64-posix /usr/lib/wine/wine64:wine64
            ;;
        *) [[ -z ${cross[$1]:-} ]] || need_cross "$1" ;;
    esac
}
