#!/bin/bash
# Measures the program on this machine; nothing here passes or fails.
#
#   ./bench.sh [pieces|start|rehearsal|chain|all]
#
#   pieces      the statistics, a draw, a row, the paint of each stimulus, the patient list
#   start       from the start to the main window, and the memory that it then takes
#   rehearsal   one rehearsed attention test of 96 valid trials: wall time and instructions
#   chain       one attention test in real time on a virtual screen: how late its intervals are,
#               beside a process that only waits, and what a link of the chain costs
#   all         all four (the default)
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

what=${1:-all}
case $what in
pieces | start | rehearsal | chain | all) ;;
-h | --help)
    sed -n '2,11s/^# \{0,1\}//p' "$0"
    exit 0
    ;;
*) die "unknown part $what (pieces, start, rehearsal, chain, all)" ;;
esac

build=$project_dir/build/bench
scratch=$(mktemp -d)
screen_pids=()

cleanup()
{
    [ ${#screen_pids[@]} -eq 0 ] || kill "${screen_pids[@]}" 2>/dev/null || true
    rm -rf "$scratch"
}
trap cleanup EXIT

wanted()
{
    [ "$what" = all ] || [ "$what" = "$1" ]
}

# A screen of 1280 by 1024 with a window manager, for the parts that need one.
open_screen()
{
    [ ${#screen_pids[@]} -eq 0 ] || return 0
    mkfifo "$scratch/display"
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$scratch/display" 2>/dev/null &
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
    for patients in 0 10000; do
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
    say "a rehearsed attention test of 96 valid trials"
    for run in 1 2 3 4 5; do
        began=$(milliseconds)
        "$rehearse" --root "$scratch/rehearsal-$run" --task test2 --seed "$run" >/dev/null
        printf 'run %d: %d ms\n' "$run" $(($(milliseconds) - began))
    done
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$rehearse" \
        --root "$scratch/counted" --task test2 --seed 1 2>&1 >/dev/null \
        | awk '/Collected/ { print "instructions: " $NF }'
}

measure_chain()
{
    say "an attention test of 60 trials in real time (two minutes), beside a process that only waits"
    open_screen
    "$build/tools/bench/kelmoran-bare-timer" 1000 100 >"$scratch/bare" &
    local bare=$!
    "$build/tools/bench/kelmoran-chain" 60
    wait "$bare"
    sort -g "$scratch/bare" | awk '{ v[NR] = $1 } END {
        printf "%-34s n %4d  median %7.3f  95%% %7.3f  99%% %7.3f  worst %7.3f ms\n",
            "the bare timer, 100 ms, late by", NR, v[int(NR * .5)], v[int(NR * .95)],
            v[int(NR * .99)], v[NR] }'
}

install_packages "${packages_build[@]}" "${packages_run[@]}" "${packages_screen[@]}" \
    "${packages_bench[@]}"
say "building"
mkdir -p "$build"
build_project "$build" "$build/build.log" -DCMAKE_BUILD_TYPE=Release -DKELMORAN_BENCH=ON \
    -DBUILD_TESTING=OFF -- \
    kelmoran kelmoran-rehearse kelmoran-bench kelmoran-chain kelmoran-bare-timer \
    || die "the build failed, see $build/build.log"

! wanted pieces || measure_pieces
! wanted start || measure_start
! wanted rehearsal || measure_rehearsal
! wanted chain || measure_chain
