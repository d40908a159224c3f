# common.sh: what the scripts share. A script sets `purpose` and `options` for --help, then reads this file.
# They must work where /proc is not mounted: no <(...), which needs /dev/fd.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=$(nproc 2>/dev/null || echo 2)
arguments=()
started=$SECONDS
log=$root/build/logs/$(basename "$0").log

# read_options "$@": takes --help and -j N; what is left stands in `arguments`.
read_options() {
    while [ $# -gt 0 ]; do
        case $1 in
            -h | --help)
                printf 'usage: scripts/%s %s\n%s\n' "$(basename "$0")" "$options" "$purpose"
                exit 0
                ;;
            -j)
                [[ ${2:-} =~ ^[1-9][0-9]*$ ]] || die 2 "-j wants a number"
                jobs=$2
                shift
                ;;
            -j*) jobs=${1#-j} ;;
            *) arguments+=("$1") ;;
        esac
        shift
    done
    cd "$root"
    mkdir -p "$(dirname "$log")"
    : >"$log"
}

# die CODE TEXT: ends the script with a line on standard error.
die() {
    printf '%s: %s\n' "$(basename "$0")" "$2" >&2
    exit "$1"
}

# duration SECONDS: "42 s" or "2 min 10 s".
duration() {
    if [ "$1" -ge 60 ]; then printf '%d min %d s' $(($1 / 60)) $(($1 % 60)); else printf '%d s' "$1"; fi
}

# step TITLE COMMAND...: runs the command with its noise in the log; on failure shows the end of it and stops.
step() {
    local title=$1 began=$SECONDS first
    shift
    first=$(($(wc -l <"$log") + 1))
    printf '%s ... ' "$title"
    if "$@" >>"$log" 2>&1; then
        duration $((SECONDS - began))
        printf '\n'
        return
    fi
    printf 'failed\n\n'
    tail -n "+$first" "$log" | tail -n 40
    printf '\nThe whole log: %s\n' "$log" >&2
    exit 1
}

# build PRESET [TARGET...]: configures and builds a preset in two steps.
build() {
    local preset=$1
    shift
    step "Configuring $preset" cmake --preset "$preset"
    step "Building $preset" cmake --build "build/$preset" -j "$jobs" ${1:+--target "$@"}
}

# thousands NUMBER: 1204 -> 1,204.
thousands() {
    local number=$1
    while [[ $number =~ ^([0-9]+)([0-9]{3}.*)$ ]]; do number=${BASH_REMATCH[1]},${BASH_REMATCH[2]}; done
    printf '%s' "$number"
}
