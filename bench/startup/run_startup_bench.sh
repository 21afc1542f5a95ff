#!/usr/bin/env bash
# How long Quillmark takes from process start to a running event loop, apart
# from the waits the unit needs (1000 ms after the port opens, 100 ms after
# each request):
#
#   bash bench/startup/run_startup_bench.sh [RUNS] [--unknown-model]
#
# RUNS defaults to 10. Each run starts a virtual unit (quillmark-vunit --link)
# so that the port really opens and the unit is identified inside the start-up
# waits, then runs build/bin/quillmark offscreen with QUILLMARK_STARTUP_TRACE
# set and QUILLMARK_APP_DIR pointing at a temporary application directory
# whose config/port.xml names the unit. The program prints
#   startup: event loop running X ms after main, Y ms of it the unit's waits, Z ms of work
# and exits. The script also times the process from exec to that line, so the
# part before main (dynamic loading, static initialisation) is seen too.
#
# --unknown-model: the unit answers the identify request with an unknown
# identifier, so the port opens but no model page and no hub are built.
#
# The build directory is $QM_BUILD_DIR (default build/).
set -euo pipefail
shopt -s nullglob
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
source "$root/scripts/appdir.sh"
build=${QM_BUILD_DIR:-$root/build}
bin=$build/bin

runs=10
unknown=0
for arg in "$@"; do
    case $arg in
    --unknown-model) unknown=1 ;;
    -h | --help)
        sed -n '2,21p' "${BASH_SOURCE[0]}" | sed 's/^# \{0,1\}//'
        exit 0
        ;;
    *[!0-9]* | '')
        echo "run_startup_bench.sh: unknown argument $arg" >&2
        exit 2
        ;;
    *) runs=$arg ;;
    esac
done
((runs > 0)) || { echo "run_startup_bench.sh: RUNS must be at least 1" >&2; exit 2; }
for program in quillmark quillmark-vunit; do
    [[ -x "$bin/$program" ]] || { echo "run_startup_bench.sh: $bin/$program is not built" >&2; exit 1; }
done

# The waits the unit needs: 1000 ms before the first request, then 100 ms
# after 0xDF and after 0xFF. The identity answer is handled inside the wait
# after 0xFF, and the 100 ms after 0xE5 run inside that wait too, so with or
# without a model the waits add up to 1200 ms (plus the unit's answer time).
# The program counts a wait with everything that ran inside it, so its own
# "work" leaves out building the model page and the hub; the whole process
# time minus 1200 ms includes them.
nominal_waits=1200

work=$(mktemp -d "${TMPDIR:-/tmp}/quillmark-startup.XXXXXX")
unit_pid=
stop_unit() {
    if [[ -n "$unit_pid" ]] && kill -0 "$unit_pid" 2>/dev/null; then
        kill -TERM "$unit_pid" 2>/dev/null || true
        wait "$unit_pid" 2>/dev/null || true
    fi
    unit_pid=
}
cleanup() {
    stop_unit
    rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

app=$work/app
link=$work/unit
make_app_dir "$bin" "$app" "$link"

unit_args=(--model ALDER --link "$link")
((unknown)) && unit_args+=(--identity OAKXX)

usec() { # EPOCHREALTIME ("s.micro") as integer microseconds
    local t=${1/./}
    echo $((10#$t))
}

works=() # the program's own count of its work
net=() # exec to the line, minus the waits the program counted
nominal=() # exec to the line, minus the nominal waits
premain=() # exec to the line, minus the program's time since main
failed=0

for ((run = 1; run <= runs; ++run)); do
    rm -f "$link"
    "$bin/quillmark-vunit" "${unit_args[@]}" 2>"$work/unit.log" &
    unit_pid=$!
    for _ in $(seq 200); do
        [[ -L "$link" ]] && break
        kill -0 "$unit_pid" 2>/dev/null || break
        sleep 0.025
    done
    if [[ ! -L "$link" ]]; then
        echo "run $run: the virtual unit did not start: $(cat "$work/unit.log")" >&2
        stop_unit
        failed=$((failed + 1))
        continue
    fi

    line=
    t1=
    t0=$EPOCHREALTIME
    while IFS= read -r l; do
        if [[ -z "$line" && $l == *"startup: event loop running"* ]]; then
            t1=$EPOCHREALTIME
            line=$l
        fi
    done < <(QT_QPA_PLATFORM=offscreen QUILLMARK_STARTUP_TRACE=1 QUILLMARK_APP_DIR="$app" QUILLMARK_INSTANCE=bench-startup \
        QT_LOGGING_RULES='*.debug=false' timeout 30 "$bin/quillmark" 2>&1 >/dev/null)
    stop_unit

    re='running ([0-9]+) ms after main, ([0-9]+) ms of it the unit.s waits, (-?[0-9]+) ms of work'
    if [[ -z "$line" || ! $line =~ $re ]]; then
        # A modal box (port not opened, another instance running) blocks
        # until the time-out.
        echo "run $run: no start-up line (timed out or failed)" >&2
        failed=$((failed + 1))
        continue
    fi
    since_main=${BASH_REMATCH[1]}
    waits=${BASH_REMATCH[2]}
    own=${BASH_REMATCH[3]}
    wall=$((($(usec "$t1") - $(usec "$t0")) / 1000))
    works+=("$own")
    net+=($((wall - waits)))
    nominal+=($((wall - nominal_waits)))
    premain+=($((wall - since_main)))
    printf 'run %2d: exec->loop %5d ms, main->loop %5d ms, waits %5d ms, work %4d ms, pre-main %3d ms\n' \
        "$run" "$wall" "$since_main" "$waits" "$own" "$((wall - since_main))"
done

stats() { # label values...: min / median / max
    local label=$1
    shift
    printf '%s\n' "$@" | sort -n | awk -v label="$label" '
        { v[NR] = $1 }
        END {
            if (NR == 0) { printf "%-48s no runs\n", label; exit }
            median = (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2
            printf "%-48s min %5d  median %7.1f  max %5d ms\n", label, v[1], median, v[NR]
        }'
}

echo
echo "$((runs - failed)) of $runs runs$( ((unknown)) && echo ", unit identified as an unknown model")"
((${#works[@]} > 0)) || exit 1
stats "work (the program's own count)" "${works[@]}"
stats "whole process minus the counted waits" "${net[@]}"
stats "whole process minus the nominal waits (${nominal_waits} ms)" "${nominal[@]}"
stats "before main (exec to main)" "${premain[@]}"
((failed == 0))
