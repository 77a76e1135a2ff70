# shellcheck shell=bash
# Sourced by the scripts beside it: configure, build, run the tests, count what came of them.

# shellcheck source=script/setup.sh
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

test_wrapper=()   # a command that the tests run under
configure_with=() # options of cmake itself

# suite <preset> <build folder> [cmake options...]
# Leaves the counts in tests_passed, tests_failed and tests_skipped. Fails when a test did, or when
# none ran.
suite() {
    local preset=$1 build=$2 status=0
    shift 2
    tests_passed=0 tests_failed=0 tests_skipped=0
    { need_googletest && want_for_tests "$preset"; } || return 1
    build_preset "$preset" "$build" -DBUILD_TESTING=ON "$@" || return 1

    local results=$build/tests.xml
    rm -f "$results"
    "${test_wrapper[@]}" ctest --test-dir "$build" --output-on-failure --no-tests=error \
        --parallel "$jobs" --output-junit "$results" || status=1
    count_results "$results"
    why_skipped "$results"
    [[ $status -eq 0 && $tests_failed -eq 0 && $tests_passed -gt 0 ]]
}

# Installs what the preset takes, too.
configure() { # <preset> <build folder> [cmake options...]
    local preset=$1 build=$2
    shift 2
    need_preset "$preset" || return 1
    (cd "$root" && cmake "${configure_with[@]}" --preset "$preset" -B "$build" \
        "${preset_options[@]}" "$@")
}

build_preset() { # the same
    configure "$@" && cmake --build "$2" --parallel "$jobs"
}

build_alone() { # the same, without tests, examples and tools
    build_preset "$1" "$2" -DBUILD_TESTING=OFF -DHALVTYPES_BUILD_EXAMPLES=OFF \
        -DHALVTYPES_BUILD_TOOLS=OFF "${@:3}"
}

# A copy of what a clone would hold.
copy_tree() { # <folder>
    mkdir -p "$1"
    tar -C "$root" -c --exclude=./build --exclude=./.git . | tar -C "$1" -x
}

# Reads what ctest itself wrote. A test that could not be started counts as failed; skipped is only
# what asked for it.
count_results() {
    [[ -e $1 ]] || return 0
    count() { grep -cE "$1" "$2" || true; }
    local all
    all=$(count '^\s*<testcase ' "$1")
    tests_passed=$(count '^\s*<testcase .*status="run"' "$1")
    tests_skipped=$(count '^\s*(<skipped message="SKIP_|<testcase .*status="disabled")' "$1")
    tests_failed=$((all - tests_passed - tests_skipped))
}

# A line for each test that was skipped, with its reason.
why_skipped() { # <what ctest wrote>
    [[ $tests_skipped -gt 0 ]] || return 0
    sed -nE -e '/^\s*<testcase /{s/.* name="([^"]*)".*/\1/;h}' \
        -e '/SKIPPED: /{s/.*SKIPPED: //;G;s/(.*)\n(.*)/skipped \2: \1/p}' "$1"
}
