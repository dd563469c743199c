#!/bin/bash
# Tries for long what ./test.sh tries in seconds: that nothing is lost when things go wrong.
#
#   ./soak.sh [fuzz|all] [--inputs N] [--seed S]
#
#   fuzz        inputs that nobody thought of, for everything that reads a file, under the address
#               and undefined-behaviour sanitizers: 10,000,000 in all, or N, in a quarter of an hour on
#               two free cores. What is found is kept in build/fuzz/findings
#   all         all of it (the default)
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

what=all
inputs=10000000
seed=1
while [ $# -gt 0 ]; do
    case $1 in
    fuzz | all) what=$1 ;;
    --inputs | --seed)
        [[ ${2:-} =~ ^[1-9][0-9]{0,11}$ ]] || die "$1 needs a number"
        [ "$1" = --seed ] && seed=$2 || inputs=$2
        shift
        ;;
    -h | --help)
        sed -n '2,9s/^# \{0,1\}//p' "$0"
        exit 0
        ;;
    *) die "unknown part $1 (fuzz, all)" ;;
    esac
    shift
done

build=$project_dir/build/fuzz
findings=$build/findings
# In memory, where there is such a place: the fuzzers keep their data roots there.
scratch=$(mktemp -d -p "$([ -w /dev/shm ] && echo /dev/shm || echo "${TMPDIR:-/tmp}")")
running=()

cleanup()
{
    [ ${#running[@]} -eq 0 ] || kill "${running[@]}" 2>/dev/null || true
    wait
    rm -rf "$scratch"
}
trap cleanup EXIT

wanted()
{
    [ "$what" = all ] || [ "$what" = "$1" ]
}

# Each reader, with its share of the inputs in hundredths: fewer for those that go through files.
readers=(patientsList:6 assessorRecord:4 screenFile:4 dataFolders:4 catalogue:12 reportText:20
    observer:25 keyScript:25)

# One fuzzer: READER INPUTS
fuzz_reader()
{
    local seeds
    seeds=$(printf '%s,' "$project_dir/tests/fuzz/seeds/$1"/*)
    LC_ALL=C.UTF-8 TZ=UTC QT_LOGGING_RULES='' TMPDIR=$scratch \
        ASAN_OPTIONS=detect_leaks=0:malloc_context_size=4:quarantine_size_mb=16 \
        exec "$build/tests/fuzz/fuzz_$1" "-seed=$seed" "-runs=$2" -max_len=1024 -timeout=10 \
        -rss_limit_mb=2048 "-seed_inputs=${seeds%,}" "-artifact_prefix=$findings/$1-" \
        -print_final_stats=1 >"$build/$1.log" 2>&1
}

# A line of the table from a fuzzer's log; fails if it has found something: READER
tell_reader()
{
    local tried seconds speed found
    tried=$(sed -n 's/^stat::number_of_executed_units: *//p' "$build/$1.log")
    seconds=$(sed -n 's/^Done .* in \([0-9]*\) second.*/\1/p' "$build/$1.log")
    speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$build/$1.log")
    found=$(find "$findings" -name "$1-*" | wc -l)
    # One that ended early, for whatever reason, has found something.
    [ -n "$seconds" ] || [ "$found" -gt 0 ] || found=1
    printf '%-16s %10s %8s %10s %9s\n' "$1" "${tried:-?}" "${seconds:--}" "${speed:--}" "$found"
    [ "$found" -eq 0 ]
}

fuzz()
{
    local entry reader failed=0
    say "fuzzing, $inputs inputs from seed $seed"
    rm -rf "$findings" && mkdir -p "$findings"
    for entry in "${readers[@]}"; do
        while [ "$(jobs -rp | wc -l)" -ge "$(nproc)" ]; do
            wait -n || true
        done
        fuzz_reader "${entry%:*}" $((inputs * ${entry#*:} / 100)) &
        running+=($!)
    done
    wait "${running[@]}" || true
    running=()
    printf '%-16s %10s %8s %10s %9s\n' reader inputs seconds "a second" findings
    for entry in "${readers[@]}"; do
        reader=${entry%:*}
        tell_reader "$reader" || failed=1
    done
    [ "$failed" -eq 0 ] || die "what was found lies in $findings, the traces in $build"
}

install_packages "${packages_build[@]}" "${packages_run[@]}" "${packages_test[@]}"
say "building"
mkdir -p "$build"
targets=()
for entry in "${readers[@]}"; do
    targets+=("fuzz_${entry%:*}")
done
build_project "$build" "$build/build.log" -DCMAKE_BUILD_TYPE=Release -DKELMORAN_FUZZ=ON \
    -DCMAKE_CXX_COMPILER=clang++ -DBUILD_TESTING=OFF -- "${targets[@]}" \
    || die "the build failed, see $build/build.log"

! wanted fuzz || fuzz
