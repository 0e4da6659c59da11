# shellcheck shell=bash
# Telling what is going on. Everything here goes to standard error: standard output belongs to what a step yields.

say() {
    printf '%s\n' "$*" >&2
}

fail() {
    say "run: $*"
    exit 1
}

# A wrong call: the reason, how to call it right, exit code 2.
misuse() {
    say "run: $*"
    usage >&2
    exit 2
}

# step TEXT COMMAND…
#
# Runs a quiet command under a line that says what it does. Every few seconds it tells how far the command is, in the
# command's own last words; when the command fails, its output is shown and the script ends with exit code 1.
step() {
    local text=$1 log ticker status=0 started=$SECONDS
    shift
    say "==> $text"
    log=$(mktemp --tmpdir pelta-run.XXXXXX)
    tell_progress "$log" "$started" &
    ticker=$!
    "$@" </dev/null >"$log" 2>&1 || status=$?
    kill "$ticker" 2>/dev/null || true
    wait "$ticker" 2>/dev/null || true
    if ((status != 0)); then
        tail -n 400 "$log" >&2
    fi
    rm -f "$log"
    ((status == 0)) || fail "failed (exit code $status): $text"
    ((SECONDS - started < 2)) || say "    done in $((SECONDS - started)) s"
}

# Speaks until it is killed or the script is gone. Its waiting must not hold the script's output open.
tell_progress() {
    local log=$1 started=$2
    while sleep 5 >/dev/null 2>&1 && kill -0 $$ 2>/dev/null; do
        say "    $((SECONDS - started)) s: $(last_words "$log")"
    done
}

last_words() {
    tail -c 2000 "$1" | tr '\r' '\n' | grep -v '^[[:space:]]*$' | tail -n 1 | cut -c 1-100
}
