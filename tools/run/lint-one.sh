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

is_stale || exit 0
before=()
after=()
case $source in
ports/web/* | apps/viewer/src/page/* | tests/browser/* | bench/browser/*)
    before=(-p build/web)
    for option in $(em++ --cflags); do # what em++ tells its compiler, which clang-tidy does not know
        before+=("--extra-arg-before=$option")
    done
    ;;
examples/*)
    after=(-- -std=c++20 -Iinclude -Iports/headless/include)
    ;;
*)
    before=(-p build/release)
    ;;
esac
printf '%s\n' "$source"
clang-tidy --quiet "${before[@]}" "$source" "${after[@]}" 2>&1 | sed "/ warnings* generated\.$/d"
mkdir -p "$(dirname "$clean")"
touch "$clean"
