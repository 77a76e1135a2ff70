# shellcheck shell=bash
# Sourced by the scripts beside it: describes the library's binary interface, one file a target.

# shellcheck source=script/suite.sh
. "$(dirname "${BASH_SOURCE[0]}")/suite.sh"

# shellcheck disable=SC2034 # used by those who source this
abi_presets=(release arm arm64 riscv64 i386 armel)

need_abi() { need abidw:abigail-tools; }

# describe_abi <preset> <build folder> <file to write>
# Only what programs can use: the exported names and the classes of the installed headers. The
# standard library's own classes are left out; its versions would show up as changes of ours.
describe_abi() {
    local preset=$1 build=$2 description=$3
    build_alone "$preset" "$build" || return 1
    rm -rf "$build/installed"
    cmake --install "$build" --prefix "$build/installed" >/dev/null || return 1
    abidw --headers-dir "$build/installed/include" --drop-private-types \
        --suppressions "$root/abi/standard-library.suppr" --exported-interfaces-only \
        --no-corpus-path --no-comp-dir-path --no-show-locs --no-parameter-names \
        --type-id-style hash --out-file "$description" "$build/libHalvTypes.so.3.0"
}

# Every difference counts, additions too.
compare_abi() { # <accepted description> <description>
    abidiff --harmless "$1" "$2"
}
