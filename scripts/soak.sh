#!/usr/bin/env bash
# An hour (or MINUTES) of the program's main window against the virtual unit
# on a poor line (noise, split frames, 50 reports a second), in an X server
# without a screen (Xvfb):
#
#   bash scripts/soak.sh [MINUTES] [more quillmark-soak options]
#
# Builds build/bin/quillmark-soak, runs it with --out soak-out (override with
# --out DIR) and prints its verdict line last. soak-out/ gets soak.csv (one
# line a minute: memory, CPU share, frames cut and refused, reconnects,
# operations), soak.png, soak.log and unit.log. A soak process that dies is
# reported as a crash, concluded from the CSV written so far. Only the
# processes this script started are stopped, by their ids.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${QM_BUILD_DIR:-$root/build}
minutes=60
if [[ ${1:-} =~ ^[0-9]+(\.[0-9]+)?$ ]]; then
    minutes=$1
    shift
fi
out=$root/soak-out
out_arg=(--out "$out")
args=("$@")
for ((i = 0; i < ${#args[@]}; i++)); do
    if [[ ${args[i]} == --out ]]; then
        out=${args[i + 1]}
        out_arg=()
    fi
done

cmake --build "$build" --target quillmark-soak -j2 >/dev/null
command -v Xvfb >/dev/null || { echo "soak.sh: Xvfb is missing (apt-get install xvfb)" >&2; exit 2; }
mkdir -p "$out"

xvfb_pid=
cleanup() {
    [[ -n $xvfb_pid ]] && kill -TERM "$xvfb_pid" 2>/dev/null || true
}
trap cleanup EXIT
display=
for n in $(seq 90 120); do
    [[ -e /tmp/.X$n-lock ]] && continue
    Xvfb ":$n" -screen 0 1600x1000x24 -nolisten tcp >"$out/xvfb.log" 2>&1 &
    xvfb_pid=$!
    sleep 1
    if kill -0 "$xvfb_pid" 2>/dev/null; then display=":$n"; break; fi
    xvfb_pid=
done
[[ -n $display ]] || { echo "soak.sh: could not start Xvfb" >&2; exit 2; }

set +e
DISPLAY=$display QT_QPA_PLATFORM=xcb QT_MESSAGE_PATTERN='%{time process} %{category}: %{message}' \
    "$build/bin/quillmark-soak" --minutes "$minutes" "${out_arg[@]}" "$@" >"$out/soak.log" 2>&1
rc=$?
set -e
if ((rc > 128)); then
    echo "soak.sh: quillmark-soak died (signal $((rc - 128))); see $out/soak.log" >&2
    QT_QPA_PLATFORM=offscreen "$build/bin/quillmark-soak" --crashed "${out_arg[@]}" "$@" 2>/dev/null | tail -n 1
    exit 1
fi
grep -E '^soak ' "$out/soak.log" | grep -vE 'sample:|verdict:' | tail -n 20 || true
tail -n 1 "$out/soak.log"
exit "$rc"
