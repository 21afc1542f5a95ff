#!/usr/bin/env bash
# The installed program: installs the build into a temporary prefix, checks
# that the programs, their data, the menu entry and the icon are where they
# belong, then starts the installed quillmark offscreen against the virtual
# unit and waits for the unit to see the identification (0xFF) and the model
# page's upload start (0xE5). The program must find its data under
# share/quillmark on its own: no QUILLMARK_APP_DIR here.
#
#   install_smoke.sh BUILD_DIR
set -euo pipefail
build=$1
work=$(mktemp -d "${TMPDIR:-/tmp}/quillmark-install.XXXXXX")
pids=()
cleanup() {
    for p in "${pids[@]}"; do kill -TERM "$p" 2>/dev/null || true; done
    for p in "${pids[@]}"; do wait "$p" 2>/dev/null || true; done
    rm -rf "$work"
}
trap cleanup EXIT
fail() {
    echo "install_smoke: $*" >&2
    for f in "$work"/*.log; do [[ -f $f ]] && { echo "--- $f" >&2; tail -20 "$f" >&2; }; done
    exit 1
}

prefix=$work/prefix
cmake --install "$build" --prefix "$prefix" >"$work/install.log" 2>&1 || fail "cmake --install failed"
data=$prefix/share/quillmark
for f in bin/quillmark bin/quillmark-vunit share/quillmark/config/StyleSheets.qss \
    share/quillmark/config/RowanConfig.xml share/quillmark/translations/english.qm \
    share/quillmark/image/yes.png share/quillmark/channelInterface_english.ini \
    share/applications/quillmark.desktop share/icons/hicolor/scalable/apps/quillmark.svg \
    share/icons/hicolor/256x256/apps/quillmark.png share/icons/hicolor/48x48/apps/quillmark.png \
    share/icons/hicolor/32x32/apps/quillmark.png share/icons/hicolor/16x16/apps/quillmark.png \
    share/doc/quillmark/copyright; do
    [[ -e $prefix/$f ]] || fail "missing $f"
done
[[ ! -e $prefix/bin/config ]] || fail "data installed beside the program in bin/"

unset QUILLMARK_APP_DIR
# Asking for help or the version opens no window and needs no display.
env -u DISPLAY -u QT_QPA_PLATFORM "$prefix/bin/quillmark" --version | grep -qx 'quillmark [0-9.]*' \
    || fail "quillmark --version did not print its version"
env -u DISPLAY -u QT_QPA_PLATFORM "$prefix/bin/quillmark" --help | grep -q -- '--no-reconnect' \
    || fail "quillmark --help did not print its options"
export XDG_DATA_HOME=$work/home/data XDG_CONFIG_HOME=$work/home/config
export QT_QPA_PLATFORM=offscreen QUILLMARK_INSTANCE=install-smoke-$$

"$prefix/bin/quillmark-vunit" --model ROWAN --link "$work/unit" --record "$work/record.txt" \
    >"$work/vunit.log" 2>&1 &
pids+=($!)
for _ in $(seq 100); do [[ -e $work/unit ]] && break; sleep 0.1; done
[[ -e $work/unit ]] || fail "the virtual unit did not start"
printf '<?xml version="1.0"?>\n<config><port>%s</port></config>\n' "$work/unit" >"$data/config/port.xml"

"$prefix/bin/quillmark" >"$work/quillmark.log" 2>&1 &
app=$!
pids+=($app)
for _ in $(seq 600); do
    grep -q ' E5 ' "$work/record.txt" 2>/dev/null && break
    kill -0 "$app" 2>/dev/null || fail "the installed program exited"
    sleep 0.1
done
grep -q ' FF ' "$work/record.txt" || fail "no identification request reached the unit"
grep -q ' E5 ' "$work/record.txt" || fail "the model page did not start the upload"
echo "install_smoke: the installed program identified the unit and started the model page"
