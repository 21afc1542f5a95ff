#!/usr/bin/env bash
# Runs Quillmark against the virtual unit, so the whole program can be seen
# working without a transmitter:
#
#   bash scripts/run.sh [MODEL] [--module 0|1|2] [more quillmark-vunit options]
#
# MODEL is ALDER (default), BIRCH, CEDAR, LARCH, MAPLE, ROWAN or WILLO. Other
# options go to the virtual unit (see build/bin/quillmark-vunit --help), for
# example --noise, --split, --delay 30, --refuse 0xA3. With --module 1 a
# simulated radio module (build/bin/quillmark-modulesim) runs beside the unit on
# 127.0.0.1 and QUILLMARK_MODULE_ADDRESS points the module windows at it.
#
# Builds what is missing (scripts/build.sh), starts the unit on a
# pseudo-terminal and runs build/bin/quillmark with QUILLMARK_APP_DIR pointing
# at a temporary application directory: everything of build/bin linked in,
# plus its own config/port.xml naming the unit. Nothing in build/bin is
# changed. The unit is stopped and the folder removed when the program exits.
set -euo pipefail
shopt -s nullglob
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=appdir.sh
source "$root/scripts/appdir.sh"
build=${QM_BUILD_DIR:-$root/build}
bin=$build/bin

model=ALDER
unit_args=()
with_module=0
prev=
for arg in "$@"; do
    # --module 1 also starts the simulated module; the unit gets it as well.
    if [[ "$prev" == --module && "$arg" == 1 ]] || [[ "$arg" == --module=1 ]]; then
        with_module=1
    fi
    prev=$arg
    case ${arg^^} in
    ALDER | BIRCH | CEDAR | LARCH | MAPLE | ROWAN | WILLO | WILLOW) model=${arg^^} ;;
    -H | --HELP)
        sed -n '2,17p' "${BASH_SOURCE[0]}" | sed 's/^# \{0,1\}//'
        exit 0
        ;;
    *) unit_args+=("$arg") ;;
    esac
done

# An up-to-date build costs a few seconds; a stale one would show old code.
QM_BUILD_DIR=$build bash "$root/scripts/build.sh"

work=$(mktemp -d "${TMPDIR:-/tmp}/quillmark-run.XXXXXX")
unit_pid=
sim_pid=
cleanup() {
    for pid in "$unit_pid" "$sim_pid"; do
        if [[ -n "$pid" ]] && kill -0 "$pid" 2>/dev/null; then
            kill -TERM "$pid" 2>/dev/null || true
            wait "$pid" 2>/dev/null || true
        fi
    done
    rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

"$bin/quillmark-vunit" --model "$model" "${unit_args[@]}" --print-path --link "$work/unit" >"$work/pty" &
unit_pid=$!
for _ in $(seq 100); do
    [[ -s "$work/pty" ]] && break
    if ! kill -0 "$unit_pid" 2>/dev/null; then
        echo "run.sh: the virtual unit did not start" >&2
        exit 1
    fi
    sleep 0.1
done
pty=$(head -n 1 "$work/pty")
[[ -n "$pty" ]] || { echo "run.sh: the virtual unit printed no pty" >&2; exit 1; }

app=$work/app
make_app_dir "$bin" "$app" "$pty"

echo "run.sh: virtual $model on $pty" >&2

if [[ $with_module == 1 ]]; then
    "$bin/quillmark-modulesim" --listen 127.0.0.1:0 >"$work/module" &
    sim_pid=$!
    for _ in $(seq 100); do
        grep -q '^listening on ' "$work/module" 2>/dev/null && break
        if ! kill -0 "$sim_pid" 2>/dev/null; then
            echo "run.sh: the simulated module did not start" >&2
            exit 1
        fi
        sleep 0.1
    done
    port=$(sed -n 's/^listening on 127\.0\.0\.1:\([0-9]*\)$/\1/p' "$work/module" | head -n 1)
    [[ -n "$port" ]] || { echo "run.sh: the simulated module printed no port" >&2; exit 1; }
    export QUILLMARK_MODULE_ADDRESS=127.0.0.1:$port
    echo "run.sh: simulated radio module on $QUILLMARK_MODULE_ADDRESS" >&2
fi
set +e
QUILLMARK_APP_DIR=$app "$bin/quillmark"
status=$?
set -e
exit $status
