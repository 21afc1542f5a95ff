# Sourced by scripts that run the program against the virtual unit.
#
# make_app_dir BIN APP PORT: builds the application directory APP from BIN's
# delivered data (linked in, except what the program makes for itself: temp/,
# log/, and the executables) with its own config/port.xml naming PORT.
make_app_dir() {
    local bin=$1 app=$2 port=$3 entry name
    mkdir -p "$app/config"
    for entry in "$bin"/*; do
        name=$(basename "$entry")
        case $name in config | temp | log) continue ;; esac
        [[ -f "$entry" && -x "$entry" ]] && continue
        ln -s "$entry" "$app/$name"
    done
    if [[ -d "$bin/config" ]]; then
        for entry in "$bin/config"/*; do
            [[ -e "$entry" && $(basename "$entry") != port.xml ]] && ln -s "$entry" "$app/config/"
        done
    fi
    printf '<?xml version="1.0"?>\n<config><port>%s</port></config>\n' "$port" >"$app/config/port.xml"
}
