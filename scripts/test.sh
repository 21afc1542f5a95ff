#!/usr/bin/env bash
# Builds Quillmark (installing what is missing) and runs every test.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${QM_BUILD_DIR:-$root/build}

bash "$root/scripts/build.sh"
cd "$build"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$(nproc)" "$@"
