#!/usr/bin/env bash
# Runs clang-tidy on one source file, given from the root, unless nothing that it might depend on has changed since it
# was last found clean.
set -euo pipefail

source=$1
clean=build/lint/$source.clean

# True when the file, a header, or the rules changed after `clean`.
is_stale() {
    [[ ! -f $clean || $source -nt $clean || .clang-tidy -nt $clean ]] ||
        [[ -n $(find include src ports apps tests bench -name '*.h' -newer "$clean" -print -quit) ]]
}

# What em++ would tell its compiler; clang-tidy cannot ask it.
web_options() {
    local option
    for option in $(em++ --cflags); do
        printf -- '--extra-arg-before=%s\n' "$option"
    done
}

is_stale || exit 0
case $source in
ports/web/* | apps/viewer/* | bench/browser/*)
    mapfile -t options < <(web_options)
    options+=(-p build/web)
    ;;
*)
    options=(-p build/release)
    ;;
esac
printf '%s\n' "$source"
clang-tidy --quiet "${options[@]}" "$source"
mkdir -p "$(dirname "$clean")"
touch "$clean"
