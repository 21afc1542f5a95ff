#!/usr/bin/env bash
# Installs the Debian packages Quillmark needs, when some are missing.
set -euo pipefail

packages=(
    build-essential cmake pkg-config
    qtbase5-dev libqt5serialport5-dev libqt5svg5-dev libqt5charts5-dev qttools5-dev qttools5-dev-tools
    libbenchmark-dev fonts-wqy-microhei
)
if [[ "${QM_WITH_FUZZ:-0}" == 1 ]]; then
    packages+=(clang libclang-rt-14-dev)
fi

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing: ${missing[*]}"
sudo_cmd=()
[[ $(id -u) -ne 0 ]] && sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq || true
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
