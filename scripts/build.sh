#!/usr/bin/env bash
# Configures (once) and builds Quillmark into build/ (or $QM_BUILD_DIR).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${QM_BUILD_DIR:-$root/build}

bash "$root/scripts/deps.sh"
if [[ ! -f "$build/CMakeCache.txt" ]]; then
    cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo ${QM_CMAKE_ARGS:-}
fi
cmake --build "$build" -j "$(nproc)"
