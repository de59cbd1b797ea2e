# What the scripts share; read in by each of them, not run.

set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

# Where a session has not set this folder, every Qt program chooses one by itself and warns about it.
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    export XDG_RUNTIME_DIR=$root/build/runtime
    mkdir -p "$XDG_RUNTIME_DIR"
    chmod 700 "$XDG_RUNTIME_DIR"
fi

# quietly LABEL COMMAND...
#
# Runs a step that speaks only when it takes long or fails: then its log's end is shown and the script ends with it.
quietly() {
    local label=$1 log=$root/build/log/${1//[^A-Za-z0-9]/-}.log announcer status=0
    shift
    mkdir -p "$root/build/log"
    (
        sleep 3 &
        trap 'kill $!' TERM
        wait $! && echo "$label ..."
    ) 2>/dev/null &
    announcer=$!
    "$@" >"$log" 2>&1 </dev/null || status=$?
    kill "$announcer" 2>/dev/null || true
    wait "$announcer" 2>/dev/null || true
    if [ "$status" -ne 0 ]; then
        echo "$label failed; the end of $log:" >&2
        tail -n 60 "$log" >&2
        exit "$status"
    fi
}

# configure_and_build PRESET TARGET...
configure_and_build() {
    local preset=$1
    shift
    quietly "Configuring ($preset)" cmake --preset "$preset"
    quietly "Building ($preset)" cmake --build --preset "$preset" --target "$@"
}
