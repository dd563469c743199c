#!/bin/bash
# Installs what the tests need, builds, and tests.
#
#   ./test.sh [unit|rehearsal|system|lint|asan|all]
#
#   unit       tests of classes, dialogs and whole tasks in virtual time
#   rehearsal  dozens of whole tests with a simulated patient, their scores computed once more, and
#              the tests that draw many samples or pictures
#   system     the real program on a virtual screen, by keyboard and mouse
#   lint       layout, words and clang-tidy, with warnings as errors
#   asan       built by clang with clazy's checks, warnings as errors; then the unit tests once
#              more, under the address and undefined-behaviour sanitizers, and a share of ./soak.sh
#   all        all five (the default)
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

what=${1:-all}
case $what in
unit | rehearsal | system | lint | asan | all) ;;
-h | --help)
    sed -n '2,13s/^# \{0,1\}//p' "$0"
    exit 0
    ;;
*) die "unknown part $what (unit, rehearsal, system, lint, asan, all)" ;;
esac

build=$project_dir/build/test
asan=$project_dir/build/asan
logs=$project_dir/build/logs
passed=0
failed=0
reasons=()
scratch=

wanted()
{
    [ "$what" = all ] || [ "$what" = "$1" ]
}

count()
{
    passed=$((passed + $1))
    failed=$((failed + $2))
    [ "$2" -eq 0 ] || reasons+=("$3")
}

# The last lines of every run: why it failed, and the counts alone on a line.
finish()
{
    local code=$?
    trap - EXIT
    rm -rf "$scratch"
    if [ "$code" -ne 0 ] && [ "$failed" -eq 0 ]; then
        failed=1
    fi
    if [ "$failed" -gt 0 ]; then
        code=1
        [ ${#reasons[@]} -eq 0 ] || printf '%s: %s\n' "$command_name" "$(IFS=,; echo "${reasons[*]}")" >&2
    elif [ "$passed" -eq 0 ]; then
        code=1
        printf '%s: nothing was tested\n' "$command_name" >&2
    fi
    printf '%d passed, %d failed\n' "$passed" "$failed"
    exit "$code"
}

# One check: its name, then the command. Its output goes to a log and is shown only if it fails.
check()
{
    local name=$1 log=$logs/$1.log began=$SECONDS
    shift
    if "$@" >"$log" 2>&1; then
        count 1 0
        printf '   %s: fine (%d s)\n' "$name" $((SECONDS - began))
    else
        tail -n 60 "$log"
        count 0 1 "$name failed"
    fi
}

# Data roots in memory, where there is such a place with room: files are flushed to the disk, again
# and again.
make_scratch()
{
    local place=${TMPDIR:-/tmp} room=1000000 # kB
    if [ -w /dev/shm ] && [ "$(df --output=avail /dev/shm | tail -n 1)" -gt "$room" ]; then
        place=/dev/shm
    fi
    scratch=$(mktemp -d -p "$place") || die "can't make a folder in $place"
}

# Runs ctest in a build folder and counts its tests: name, folder, options.
run_ctest()
{
    local name=$1 dir=$2 log=$logs/$1.log place=$scratch line total bad
    shift 2
    [ "$name" != system ] || place=${TMPDIR:-/tmp} # users of their own have to get in
    say "$name"
    TMPDIR=$place ctest --test-dir "$dir" --output-on-failure --no-tests=error "$@" </dev/null 2>&1 | tee "$log" || true
    line=$(grep -E 'tests passed, [0-9]+ tests failed out of [0-9]+' "$log" | tail -n 1 || true)
    if [ -z "$line" ]; then
        count 0 1 "$name: ctest ran nothing"
        return
    fi
    total=$(sed -E 's/.*out of ([0-9]+).*/\1/' <<<"$line")
    bad=$(sed -E 's/.*passed, ([0-9]+) tests failed.*/\1/' <<<"$line")
    count $((total - bad)) "$bad" "$name: $bad of $total failed"
}

sources()
{
    project_files | grep -E "$1"
}

check_layout()
{
    sources '^(src|tests|tools)/.*\.(h|cpp)$' | xargs -d '\n' clang-format --dry-run --Werror
}

check_scripts()
{
    local file
    while IFS= read -r file; do
        bash -n "$file" || return 1
    done < <(sources '(^\.ci/run|\.sh)$')
    while IFS= read -r file; do
        /usr/bin/python3 -c 'import ast, sys; ast.parse(open(sys.argv[1], encoding="utf-8").read())' \
            "$file" || return 1
    done < <(sources '\.py$')
}

# Whether the catalogues hold the texts of the sources, and no others.
check_catalogues()
{
    local file language fresh=$logs/catalogues
    rm -rf "$fresh" && mkdir -p "$fresh" || return 1
    for language in "${all_languages[@]}"; do
        file=kelmoran_$language.ts
        cp "languages/$file" "$fresh/$file" && renew_catalogue "$language" "$fresh/$file" || return 1
        diff -u "languages/$file" "$fresh/$file" || return 1
    done
}

# The sources that the build compiles, without what it made itself.
compiled_sources()
{
    sed -nE 's/^ *"file": "(.*)",?$/\1/p' "$build/compile_commands.json" \
        | sed "s|^$project_dir/||" | grep -E '^(src|tests|tools)/' | sort -u
}

# For what ships: it takes longer than all the rest, and the tests are checked by two compilers and
# clazy.
check_tidy()
{
    compiled_sources | grep -v '^tests/' | xargs -d '\n' -P "$(nproc)" -n 2 \
        nice -n 19 clang-tidy -p "$build" --quiet
}

install_packages "${packages_build[@]}" "${packages_package[@]}" "${packages_run[@]}" \
    "${packages_screen[@]}" \
    "${packages_witness[@]}" "${packages_test[@]}"
mkdir -p "$logs" || die "can't make $logs"
trap finish EXIT
make_scratch
cd "$project_dir"

if wanted lint; then
    say "lint"
    check layout check_layout
    check words "$project_dir/scripts/check-words.sh"
    check scripts check_scripts
    check catalogues check_catalogues
fi

if [ "$what" != asan ]; then
    say "building"
    build_project "$build" "$logs/build.log" -DCMAKE_BUILD_TYPE=Release \
        || { reasons+=("the build failed, see $logs/build.log"); exit 1; }
fi
wanted unit && run_ctest unit "$build" -j3 -LE "system|rehearsal|long"
wanted rehearsal && run_ctest rehearsal "$build" -j3 -L "rehearsal|long"

# The system tests wait most of the time, for a trial to come: clang-tidy takes what they leave.
tidy_pid=
if wanted lint; then
    check_tidy >"$logs/tidy-output.log" 2>&1 </dev/null &
    tidy_pid=$!
fi
wanted system && run_ctest system "$build" -L system

tidy_result()
{
    local code=0
    wait "$tidy_pid" || code=$?
    cat "$logs/tidy-output.log"
    return "$code"
}

if wanted lint; then
    say "clang-tidy"
    check tidy tidy_result
fi

if wanted asan; then
    say "building with clazy and the sanitizers"
    export CLAZY_CHECKS=level0,level1 CLAZY_IGNORE_DIRS='(/usr/.*|.*_autogen.*)'
    build_project "$asan" "$logs/asan-build.log" -DCMAKE_BUILD_TYPE=Debug -DKELMORAN_SANITIZE=ON \
        -DKELMORAN_FUZZ=ON -DCMAKE_CXX_COMPILER=clazy \
        || { reasons+=("the build with the sanitizers failed, see $logs/asan-build.log"); exit 1; }
    # The web engine doesn't run under them; whole rehearsals are played by one test of their own.
    run_ctest asan "$asan" -j3 -LE "system|report|rehearsal"
    run_ctest asan-rehearsal "$asan" -R '^tst_Rehearse$'
fi
