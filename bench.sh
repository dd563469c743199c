#!/bin/bash
# Measures the program on this machine; nothing here passes or fails.
#
#   ./bench.sh [pieces|start|rehearsal|drift|observers|refreshes|years|all]
#   ./bench.sh timing [idle|one-core|both-cores|disk] [--short]
#
#   pieces      the statistics, a draw, a row, the paint of each stimulus
#   start       from the start to the main window, and the memory that it then takes
#   rehearsal   one rehearsed attention test of 96 valid trials, wall time and instructions, and one
#               visual recognition and one memory test, wall time
#   drift       a minute of the movement detection task's field, on a screen of 1280 by 1024 and on
#               one of 3840 by 2160: from paint to paint, and what of a core it takes
#   observers   the staircase of the visual perception task against simulated observers: a table and
#               its picture in build/observers
#   refreshes   what becomes of an exposure on a simulated screen of 60 or 120 Hz
#   years       what each step costs with up to 100,000 patients and 1,000,000 rows: wall time and
#               instructions (six minutes)
#   all         all seven (the default)
#   timing      whole tests in real time on a virtual screen, stamped from outside by a witness that
#               also gives the answers, beside a process that only waits; renews docs/timing.md. Ten
#               minutes a condition, all four of them if none is named; --short shows in a minute
#               whether all works
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

what=${1:-all}
case $what in
pieces | start | rehearsal | drift | observers | refreshes | years | all) ;;
timing) shift ;;
-h | --help)
    sed -n '2,22s/^# \{0,1\}//p' "$0"
    exit 0
    ;;
*) die "unknown part $what (pieces, start, rehearsal, drift, observers, refreshes, years, timing, all)" ;;
esac

build=$project_dir/build/bench
scratch=$(mktemp -d)
screen_pids=()

close_screen()
{
    [ ${#screen_pids[@]} -eq 0 ] || kill "${screen_pids[@]}" 2>/dev/null || true
    screen_pids=()
}

cleanup()
{
    close_screen
    rm -rf "$scratch"
}
trap cleanup EXIT

wanted()
{
    [ "$what" = all ] || [ "$what" = "$1" ]
}

# A screen with a window manager, for the parts that need one: open_screen [SIZE]
open_screen()
{
    [ ${#screen_pids[@]} -eq 0 ] || return 0
    rm -f "$scratch/display"
    mkfifo "$scratch/display"
    Xvfb -displayfd 3 -screen 0 "${1:-1280x1024}x24" -nolisten tcp -noreset 3>"$scratch/display" 2>/dev/null &
    screen_pids+=($!)
    local number
    read -r number <"$scratch/display"
    export DISPLAY=:$number
    until xdotool getdisplaygeometry >/dev/null 2>&1; do :; done
    openbox 2>/dev/null &
    screen_pids+=($!)
}

# A root with so many patients and a calibrated screen: make_root FOLDER PATIENTS
make_root()
{
    mkdir -p "$1"/{bin,Parameters}
    seq 1 "$2" | sed 's/.*/Mrs.;Doe&;Jane;01.02.1950;0;0;0;0;0;0;0;0;0;0\r/' \
        >"$1/Parameters/patients_list.txt"
    printf '\0\0\1\16\0\0\1\16\0\0\0\0' >"$1/Parameters/screen.pix"
}

milliseconds()
{
    date +%s%3N
}

measure_pieces()
{
    say "pieces"
    QT_QPA_PLATFORM=offscreen "$build/tools/bench/kelmoran-bench" --benchmark_min_time=0.2
}

measure_start()
{
    local patients run began shown pid root
    say "start to the main window shown, and its memory"
    open_screen
    for patients in 0 10000 100000; do
        root=$scratch/start-$patients
        make_root "$root" "$patients"
        for run in 1 2 3 4 5; do
            began=$(milliseconds)
            (cd "$root/bin" && exec "$build/src/app/kelmoran" 2>/dev/null) &
            pid=$!
            # Asked again and again: --sync looks only twice a second.
            until xdotool search --onlyvisible --name '^Kelmoran$' >/dev/null 2>&1; do :; done
            shown=$(milliseconds)
            printf '%6d patients, start %d: %4d ms, resident %s MB\n' "$patients" "$run" \
                $((shown - began)) "$(awk '/VmRSS/ { printf "%.0f", $2 / 1024 }' "/proc/$pid/status")"
            kill "$pid"
            wait "$pid" 2>/dev/null || true
        done
    done
}

measure_rehearsal()
{
    local rehearse=$build/tools/rehearse/kelmoran-rehearse run began
    say "a rehearsed attention test of 96 valid trials, a visual recognition and a memory test"
    for run in 1 2 3 4 5; do
        began=$(milliseconds)
        "$rehearse" --root "$scratch/rehearsal-$run" --task test2 --seed "$run" >/dev/null
        printf 'run %d: %d ms\n' "$run" $(($(milliseconds) - began))
    done
    for run in 1 2 3 4 5; do
        "$rehearse" --root "$scratch/vision-$run" --task test1 --training --seed "$run" >/dev/null
        began=$(milliseconds)
        "$rehearse" --root "$scratch/vision-$run" --task test1 --seed "$run" >/dev/null
        printf 'visual recognition, run %d: %d ms\n' "$run" $(($(milliseconds) - began))
    done
    for run in 1 2 3 4 5; do
        began=$(milliseconds)
        "$rehearse" --root "$scratch/memory-$run" --task test4 --seed "$run" >/dev/null
        printf 'memory, run %d: %d ms\n' "$run" $(($(milliseconds) - began))
    done
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$rehearse" \
        --root "$scratch/counted" --task test2 --seed 1 2>&1 >/dev/null \
        | awk '/Collected/ { print "instructions: " $NF }'
}

# Runs a command beside a process that waits so many times 100 ms, and tells both.
beside_bare_timer()
{
    local waits=$1 bare
    shift
    open_screen
    "$build/tools/bench/kelmoran-bare-timer" "$waits" 100 >"$scratch/bare" &
    bare=$!
    "$@"
    wait "$bare"
    sort -g "$scratch/bare" | awk '{ v[NR] = $1 } END {
        printf "%-34s n %4d  median %7.3f  95%% %7.3f  99%% %7.3f  worst %7.3f ms\n",
            "the bare timer, 100 ms, late by", NR, v[int(NR * .5)], v[int(NR * .95)],
            v[int(NR * .99)], v[NR] }'
}

measure_drift()
{
    local size
    for size in 1280x1024 3840x2160; do
        say "the drift on a screen of $size, beside a process that only waits"
        close_screen
        open_screen "$size"
        beside_bare_timer 600 "$build/tools/bench/kelmoran-drift" 60
    done
    close_screen
}

measure_observers()
{
    local out=$project_dir/build/observers
    say "the staircase against simulated observers"
    "$build/tools/observers/kelmoran-observers" --out "$out"
    /usr/bin/python3 "$project_dir/tools/observers/plot.py" "$out/observers.csv" "$out/observers.png"
    printf 'the table and its picture: %s\n' "$out"
}

measure_refreshes()
{
    say "exposures on a simulated screen, 100,000 trials a row"
    "$build/tools/bench/kelmoran-refreshes"
}

# The instructions of each step, a line each, from the dumps of callgrind: years_counts DUMP
years_counts()
{
    local dump
    for dump in $(ls -v "$1".*); do
        awk '/^desc: Trigger: Client Request: / { sub(/^desc: Trigger: Client Request: /, ""); name = $0 }
            /^totals:/ && name != "" { print name ";" $2 }' "$dump"
    done
}

measure_years()
{
    local size bench=$build/tools/bench/kelmoran-years counts=$scratch/years
    for size in '100 0' '1000 0' '10000 0' '100000 0' '100 10000' '100 100000' '100 1000000' \
        '100000 1000000'; do
        say "after years: ${size% *} patients, ${size#* } rows"
        QT_QPA_PLATFORM=offscreen "$bench" $size 2>/dev/null >"$scratch/times"
        # The order in a hash table is part of the count.
        QT_QPA_PLATFORM=offscreen QT_HASH_SEED=0 valgrind -q --tool=callgrind \
            --callgrind-out-file="$counts" "$bench" $size 2>/dev/null
        join -t ';' --nocheck-order "$scratch/times" <(years_counts "$counts") \
            | awk -F ';' '{ printf "%-18s %9.2f ms %9.2f million instructions\n", $1, $2, $3 / 1e6 }'
        rm -f "$counts"*
    done
}

measure_timing()
{
    /usr/bin/python3 -B "$project_dir/tools/timing/timing.py" --build "$build" "$@"
}

install_packages "${packages_build[@]}" "${packages_run[@]}" "${packages_screen[@]}" \
    "${packages_witness[@]}" "${packages_bench[@]}"
say "building"
mkdir -p "$build"
build_project "$build" "$build/build.log" -DCMAKE_BUILD_TYPE=Release -DKELMORAN_BENCH=ON \
    -DBUILD_TESTING=OFF -- \
    kelmoran kelmoran-rehearse kelmoran-observers kelmoran-witness kelmoran_words \
    kelmoran-bench kelmoran-drift kelmoran-bare-timer kelmoran-refreshes kelmoran-years \
    || die "the build failed, see $build/build.log"

if [ "$what" = timing ]; then
    measure_timing "$@"
    exit
fi
! wanted pieces || measure_pieces
! wanted start || measure_start
! wanted rehearsal || measure_rehearsal
! wanted drift || measure_drift
! wanted observers || measure_observers
! wanted refreshes || measure_refreshes
! wanted years || measure_years
