#!/usr/bin/env bash
# Runs one fuzzer from the root of the tree: fuzz-one.sh NAME SECONDS. Inputs that reach new code are kept in
# build/fuzz/runs/NAME/corpus for the next time; one that fails is named, with the command that runs it again.
set -euo pipefail

name=$1
seconds=$2
readonly program=build/fuzz/tests/fuzz/fuzz_$name
readonly folder=build/fuzz/runs/$name
options=("-max_total_time=$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=4096 "-artifact_prefix=$folder/found/")
case $name in
geojson | style | cluster) options+=(-dict=tests/fuzz/json.dict) ;;
esac

# The fuzzer's last line of figures: "#1234 NEW cov: 567 …".
figures() {
    grep '^#[0-9]' "$folder/log" | tail -n 1 | cut -c 1-100
}

tell_progress() {
    local started=$SECONDS
    while sleep 10 >/dev/null 2>&1; do
        printf '    %s, %s s: %s\n' "$name" $((SECONDS - started)) "$(figures)" >&2
    done
}

rm -rf "$folder/found"
mkdir -p "$folder/corpus" "$folder/found"
tell_progress &
ticker=$!
trap 'kill "$ticker" 2>/dev/null || true' EXIT

if "$program" "${options[@]}" "$folder/corpus" "tests/fuzz/seeds/$name" >"$folder/log" 2>&1; then
    printf '    %s: no fault; %s\n' "$name" "$(figures)" >&2
    exit 0
fi
grep -v '^#[0-9]' "$folder/log" | tail -n 60 >&2
for input in "$folder/found"/*; do
    if [[ -f $input ]]; then
        printf '    %s fails on %s; again: %s %s\n' "$name" "$input" "$program" "$input" >&2
    fi
done
exit 1
