#!/usr/bin/env bash
# Fuzzes the readers of everything the program takes from outside.
#
#   scripts/fuzz.sh [MINUTES] [TARGET...]
#
# Builds the libFuzzer targets with clang, AddressSanitizer and
# UndefinedBehaviorSanitizer into build-fuzz/, then runs each target (all of
# them unless named) for MINUTES (default 10, fractions allowed) on one core.
# Each target keeps its corpus in build-fuzz/corpus/<target> between runs and
# starts from the repository's seeds; inputs that crash, leak or hang are kept
# in build-fuzz/findings/<target>/. Prints one line per target and appends it
# to build-fuzz/fuzz-record.txt; exits non-zero when a target found anything.
#
# Environment: QM_FUZZ_RUNS=N stops a target after N runs (before its time),
# QM_FUZZ_JOBS sets the build's parallel jobs (default: all cores),
# QM_FUZZ_BUILD_DIR replaces build-fuzz/, QM_FUZZ_NO_BUILD=1 skips the build.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${QM_FUZZ_BUILD_DIR:-$root/build-fuzz}
fuzz=$root/tests/fuzz

all=(fuzz_link fuzz_paramfile fuzz_modulereplies fuzz_linkreport fuzz_modeldefaults fuzz_configfiles)
minutes=${1:-10}
[[ $# -gt 0 ]] && shift
targets=("$@")
[[ ${#targets[@]} -eq 0 ]] && targets=("${all[@]}")
for t in "${targets[@]}"; do
    [[ " ${all[*]} " == *" $t "* ]] || { echo "unknown target $t (known: ${all[*]})" >&2; exit 2; }
done
seconds=$(awk -v m="$minutes" 'BEGIN { s = int(m * 60); if (s < 1) s = 1; print s }')

if [[ -z ${QM_FUZZ_NO_BUILD:-} ]]; then
    launcher=()
    command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    CC=clang CXX=clang++ cmake -S "$root" -B "$build" -DQM_FUZZ=ON -DQM_SANITIZE=ON -DQM_BENCH=OFF \
        -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}" >/dev/null
    cmake --build "$build" --target "${targets[@]}" -j "${QM_FUZZ_JOBS:-$(nproc)}"
fi

export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-halt_on_error=1:print_stacktrace=1}
export LSAN_OPTIONS=${LSAN_OPTIONS:-suppressions=$root/tests/lsan.supp:print_suppressions=0}

# The seeds of a target, as a folder libFuzzer reads (written afresh from the
# repository each time, so that they follow the shipped files).
seeds_of() {
    local seeds=$build/seeds/$1
    rm -rf "$seeds"
    mkdir -p "$seeds"
    case $1 in
    fuzz_paramfile) cp "$fuzz"/paramfile_seeds/* "$seeds"/ ;;
    fuzz_modeldefaults) cp "$root"/config/*Config.xml "$seeds"/ ;;
    fuzz_configfiles)
        # The first byte picks the file: 0 port.xml, 1 + 3 * model
        # PyxModule.xml for that model, 2 lastAddr.tmp.
        { printf '\x00'; cat "$root/config/port.xml"; } >"$seeds/port"
        for model in 0 1 2 3 4 5 6; do
            { printf '%b' "\\x$(printf %02x $((1 + 3 * model)))"; cat "$root/config/PyxModule.xml"; } \
                >"$seeds/pyx$model"
        done
        printf '\x02/home/user/quillmark/alder.cfg' >"$seeds/lastaddr"
        ;;
    esac
    echo "$seeds"
}

# libFuzzer options of a target: the longest input and the dictionary.
options_of() {
    case $1 in
    fuzz_paramfile) echo "-max_len=65536 -dict=$fuzz/paramfile.dict" ;;
    fuzz_modulereplies) echo "-max_len=8192" ;;
    fuzz_linkreport) echo "-max_len=8192 -dict=$fuzz/linkreport.dict" ;;
    fuzz_modeldefaults) echo "-max_len=16384 -dict=$fuzz/modeldefaults.dict" ;;
    fuzz_configfiles) echo "-max_len=4096 -dict=$fuzz/configfiles.dict" ;;
    *) echo "" ;;
    esac
}

stat_of() { sed -n "s/^stat::$1: *//p" "$2" | tail -1; }

mkdir -p "$build/logs"
status=0
lines=()
for t in "${targets[@]}"; do
    corpus=$build/corpus/$t
    findings=$build/findings/$t
    log=$build/logs/$t.log
    mkdir -p "$corpus" "$findings"
    seeds=$(seeds_of "$t")
    limit=()
    [[ -n ${QM_FUZZ_RUNS:-} ]] && limit=(-runs="$QM_FUZZ_RUNS")
    marker=$(mktemp)
    start=$(date +%s)
    rc=0
    # shellcheck disable=SC2046 # the options are separate words
    "$build/tests/$t" -max_total_time="$seconds" -timeout=25 -print_final_stats=1 "${limit[@]}" \
        -artifact_prefix="$findings/" $(options_of "$t") "$corpus" "$seeds" >"$log" 2>&1 || rc=$?
    elapsed=$(( $(date +%s) - start ))
    found=$(find "$findings" -type f -newer "$marker" | wc -l)
    rm -f "$marker"
    runs=$(stat_of number_of_executed_units "$log")
    rate=$(stat_of average_exec_per_sec "$log")
    # Coverage of the last status line: edges (cov) and features (ft).
    cov=$(grep -o 'cov: [0-9]*' "$log" | tail -1 | cut -d' ' -f2)
    ft=$(grep -o 'ft: [0-9]*' "$log" | tail -1 | cut -d' ' -f2)
    if [[ $rc -ne 0 && $found -eq 0 ]]; then
        found=1 # stopped by something that left no input behind: see the log
    fi
    line=$(printf '%-20s runs %10s  %7s/s  %5ss  cov %5s  ft %6s  corpus %5s  findings %s' "$t" \
        "${runs:-?}" "${rate:-?}" "$elapsed" "${cov:-?}" "${ft:-?}" "$(find "$corpus" -type f | wc -l)" "$found")
    echo "$line"
    lines+=("$line")
    if [[ $found -ne 0 ]]; then
        status=1
        echo "    see $log and $findings/" >&2
    fi
done

{
    echo "# $(date -u '+%Y-%m-%d %H:%M UTC') $(git -C "$root" rev-parse --short HEAD 2>/dev/null || echo '?')," \
        "$minutes min per target${QM_FUZZ_RUNS:+, at most $QM_FUZZ_RUNS runs}"
    printf '%s\n' "${lines[@]}"
} >>"$build/fuzz-record.txt"
exit $status
