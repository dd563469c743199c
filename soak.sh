#!/bin/bash
# Tries for long what ./test.sh tries in seconds: that nothing is lost when things go wrong.
#
#   ./soak.sh [fuzz|years|locale|disk|kill|keys|all] [--inputs N] [--seed S]
#
#   fuzz        inputs that nobody thought of, for everything that reads a file, under the address
#               and undefined-behaviour sanitizers: 10,000,000 in all, or N, in a quarter of an hour on
#               two free cores. What is found is kept in build/fuzz/findings
#   years       days of tests in one run of the program, and what it holds behind them: 56 tests without
#               reports and 56 with them in virtual time, and 54 by a robot in real time; four minutes
#   locale      whole tests and reports in 19 kinds of session; the stimuli measured on desktops
#               of 125, 150 and 200 %; screens too small, two of them, one unplugged; a quarter of an hour
#   disk        every call of the program that concerns its files fails once, in up to eight ways; real
#               disks without room, and files of somebody else; ten minutes
#   kill        the program is killed at 500 random moments and at every call that changes a file, its
#               rehearsal at 2000 and at every call; what is left is looked at, and the next start
#               too. Half an hour on two free cores
#   keys        a random assessor and a random patient press, click and type anything at any moment,
#               under the sanitizers: 1,000,000 events in virtual time, in a quarter of an hour
#   all         all of it (the default)
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

what=all
inputs=10000000
seed=1
while [ $# -gt 0 ]; do
    case $1 in
    fuzz | years | locale | disk | kill | keys | all) what=$1 ;;
    --inputs | --seed)
        [[ ${2:-} =~ ^[1-9][0-9]{0,11}$ ]] || die "$1 needs a number"
        [ "$1" = --seed ] && seed=$2 || inputs=$2
        shift
        ;;
    -h | --help)
        sed -n '2,20s/^# \{0,1\}//p' "$0"
        exit 0
        ;;
    *) die "unknown part $1 (fuzz, years, locale, disk, kill, keys, all)" ;;
    esac
    shift
done

build=$project_dir/build/fuzz
findings=$build/findings
tests=$project_dir/build/test
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
    local entry reader failed=0 targets=()
    for entry in "${readers[@]}"; do
        targets+=("fuzz_${entry%:*}")
    done
    say "building the fuzzers"
    mkdir -p "$build"
    build_project "$build" "$build/build.log" -DCMAKE_BUILD_TYPE=Release -DKELMORAN_FUZZ=ON \
        -DCMAKE_CXX_COMPILER=clang++ -DBUILD_TESTING=OFF -- "${targets[@]}" \
        || die "the build failed, see $build/build.log"
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

# The program as it ships, with its tests, in the folder of ./test.sh: build_tests [TARGETS]
build_tests()
{
    say "building"
    mkdir -p "$tests"
    build_project "$tests" "$tests/build.log" -DCMAKE_BUILD_TYPE=Release -- "$@" \
        || die "the build failed, see $tests/build.log"
}

years()
{
    build_tests kelmoran kelmoran_words tst_Day
    export KELMORAN_DAY_ROUNDS=8 KELMORAN_DAY_CYCLES=9 LC_ALL=C.UTF-8
    say "days in virtual time"
    QT_QPA_PLATFORM=offscreen "$tests/tests/rehearse/tst_Day" 2>&1 \
        | sed -n '/ tests: \|^FAIL\|^   Actual\|^Totals/p'
    say "a day on a virtual screen"
    (cd "$project_dir/tests/system" && KELMORAN_BUILD=$tests /usr/bin/python3 -B -m unittest -v day)
}

locales()
{
    local language
    build_tests kelmoran kelmoran-rehearse kelmoran_words tst_locales
    say "languages of the session"
    for language in C en_GB fr_FR de_DE it_IT es_ES nl_NL de_CH sv_SE tr_TR fa_IR ar_EG; do
        printf '%s: ' "$language"
        LC_ALL=$language.UTF-8 QT_QPA_PLATFORM=offscreen "$tests/tests/app/tst_locales" 2>&1 \
            | sed -n '/^FAIL\|^   Actual\|^Totals/p'
    done
    say "whole tests and reports, scalings and screens"
    (cd "$project_dir/tests/system" && KELMORAN_BUILD=$tests LC_ALL=C.UTF-8 \
        /usr/bin/python3 -B -m unittest -v soak_locale soak_scaling soak_screens)
}

# Runs a command that mounts disks of its own; fails where that isn't allowed.
with_mounts()
{
    local user=()
    [ "$(id -u)" -eq 0 ] || user=(--map-root-user)
    unshare --mount "${user[@]}" "$@"
}

disk()
{
    local program=$tests/tests/disk/faulty_disk cores part job failed=0
    cores=$(nproc)
    build_tests kelmoran kelmoran-rehearse kelmoran_words faulty_disk
    say "every call on a disk that fails"
    for ((part = 1; part <= cores; part++)); do
        TMPDIR=$scratch "$program" --part "$part/$cores" >"$tests/disk-$part.log" 2>&1 &
        running+=($!)
    done
    for job in "${running[@]}"; do
        wait "$job" || failed=1
    done
    running=()
    for ((part = 1; part <= cores; part++)); do
        cat "$tests/disk-$part.log"
    done
    say "a real disk without room"
    if with_mounts true 2>/dev/null; then
        with_mounts "$project_dir/tests/disk/small_disk.sh" "$tests" || failed=1
    else
        echo "not tried: no disk can be mounted here"
    fi
    say "files and folders of somebody else"
    if [ "$(id -u)" -eq 0 ]; then
        "$program" --owners || failed=1
    else
        echo "not tried: only root can be somebody else"
    fi
    [ "$failed" -eq 0 ] || die "what was found stands above"
}

# The real program several times side by side: it waits more than it computes.
kill_all()
{
    # A screen on which the robot came to a standstill is kept.
    local failed=0 driver=(env "KELMORAN_BUILD=$tests" "KELMORAN_KEEP=$tests" "TMPDIR=$scratch"
        LC_ALL=C.UTF-8 /usr/bin/python3 -B "$project_dir/tests/kill/kill.py")
    build_tests kelmoran kelmoran-rehearse kelmoran_words kelmoran_tripwire
    say "the program, killed at random moments"
    "${driver[@]}" screen --moments 1-500 --seed "$seed" --jobs 4 || failed=1
    say "the program, killed at every call that changes a file"
    "${driver[@]}" screen --calls --moments 1-9999 --jobs 4 || failed=1
    say "rehearsals, killed at random moments"
    "${driver[@]}" rehearsal --moments 1-2000 --seed "$seed" || failed=1
    say "rehearsals, killed at every call that changes a file"
    "${driver[@]}" rehearsal --calls --moments 1-9999 || failed=1
    [ "$failed" -eq 0 ] || die "a promise was broken"
}

# Fifty runs of 20,000 events, each of a seed of its own, two side by side. A run that has found
# something ends with its seed and its last events.
keys()
{
    local keys=$project_dir/build/keys number failed=0
    say "building"
    mkdir -p "$keys/runs"
    rm -f "$keys/runs"/*
    build_project "$keys" "$keys/build.log" -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -g1" \
        -DKELMORAN_SANITIZE=ON -DCMAKE_CXX_COMPILER=clang++ -- random_assessor \
        || die "the build failed, see $keys/build.log"
    say "1,000,000 events, from seed $seed"
    for number in $(seq "$seed" $((seed + 49))); do
        while [ "$(jobs -rp | wc -l)" -ge "$(nproc)" ]; do
            wait -n || failed=1
        done
        LC_ALL=C.UTF-8 TZ=UTC QT_LOGGING_RULES='' TMPDIR=$scratch \
            ASAN_OPTIONS=detect_leaks=0:new_delete_type_mismatch=0 \
            "$keys/tests/random/random_assessor" --seed "$number" --events 20000 \
            >"$keys/runs/$number.log" 2>&1 &
        running+=($!)
    done
    for number in "${running[@]}"; do
        wait "$number" || failed=1
    done
    running=()
    # The figures of all runs, added up.
    sed -nE 's/^([0-9]+) events$/events \1/; /^(seed|data roots) /!p' "$keys/runs"/*.log \
        | awk '/^[a-z][a-z0-9 ]* +[0-9]+$/ { n = $NF; sub(/ +[0-9]+$/, ""); sum[$0] += n }
               END { for (name in sum) printf "%-20s %10d\n", name, sum[name]
                     for (task = 1; task <= 7; ++task)
                         if (!sum["finished task " task]) print "no test of task " task " has ended" }' \
        | sort | tee "$keys/figures.txt"
    ! grep -q '^no test' "$keys/figures.txt" || failed=1
    [ "$failed" -eq 0 ] || die "what was found stands at the end of a log in $keys/runs"
}

install_packages "${packages_build[@]}" "${packages_run[@]}" "${packages_screen[@]}" \
    "${packages_test[@]}"
! wanted fuzz || fuzz
! wanted years || years
! wanted locale || locales
! wanted disk || disk
! wanted kill || kill_all
! wanted keys || keys
