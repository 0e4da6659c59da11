# shellcheck shell=bash
# Tests and benchmarks.

run_test() {
    local kinds=() kind needed=() fuzz_seconds=60
    while (($# > 0)); do
        kinds+=("$1")
        if [[ $1 == fuzz && ${2:-} =~ ^[1-9][0-9]*$ ]]; then
            fuzz_seconds=$2
            shift
        fi
        shift
    done
    ((${#kinds[@]} > 0)) || kinds=(sanitize browser)
    for kind in "${kinds[@]}"; do
        case $kind in
        native | sanitize) needed+=("${NATIVE_PACKAGES[@]}") ;;
        installed) needed+=("${NATIVE_PACKAGES[@]}" "${BENCH_PACKAGES[@]}") ;;
        fuzz) needed+=("${NATIVE_PACKAGES[@]}" "${FUZZ_PACKAGES[@]}") ;;
        browser) needed+=("${WEB_PACKAGES[@]}" "${BROWSER_PACKAGES[@]}") ;;
        *) misuse "test: there is no kind '$kind'" ;;
        esac
    done
    need_packages "${needed[@]}"
    for kind in "${kinds[@]}"; do
        "test_$kind"
    done
}

test_native() {
    build_native debug
    say "==> Running the native tests"
    in_root ctest --preset debug -j "$(nproc)" || fail "native tests failed"
}

test_sanitize() {
    build_native sanitize
    say "==> Running the native tests with sanitizers"
    in_root ctest --preset sanitize -j "$(nproc)" || fail "native tests with sanitizers failed"
}

# The release build holds no tests of its own: they are about what is installed from it.
test_installed() {
    build_native release
    say "==> Installing the release build, running what is installed, building the examples against it"
    in_root ctest --preset release -j "$(nproc)" || fail "tests of the installed tree failed"
}

# Each fuzzer for fuzz_seconds, as many at once as there are processors.
test_fuzz() {
    build fuzz
    say "==> Running the fuzzers, $fuzz_seconds s each"
    in_root find tests/fuzz/seeds -mindepth 1 -maxdepth 1 -printf '%f\0' |
        (cd "$root" && xargs -0 -I '{}' -P "$(nproc)" tools/run/fuzz-one.sh '{}' "$fuzz_seconds") ||
        fail "a fuzzer has found a fault"
}

test_browser() {
    build_web
    say "==> Running the browser tests"
    in_root node --test "$root"/tests/browser/*.test.mjs || fail "browser tests failed"
}

run_bench() {
    local kinds=() kind short=()
    for kind in "$@"; do
        case $kind in
        --short) short=(--short) ;;
        native | browser) kinds+=("$kind") ;;
        *) misuse "bench: there is no kind '$kind'" ;;
        esac
    done
    ((${#kinds[@]} > 0)) || kinds=(native browser)
    for kind in "${kinds[@]}"; do
        "bench_$kind" "${short[@]}"
    done
}

bench_native() {
    need_packages "${BENCH_PACKAGES[@]}"
    build_native release
    say "==> Measuring on the headless port and the command line"
    local program
    in_root build/release/bench/pelta_bench ${1:+--benchmark_min_time=0}
    for program in cluster cluster_manager grid convert; do
        in_root "build/release/bench/pelta_${program}_bench" "$@"
    done
}

bench_browser() {
    need_packages "${WEB_PACKAGES[@]}" "${BROWSER_PACKAGES[@]}"
    build_web bench/all
    say "==> Measuring shapes in the browser"
    in_root node bench/browser/run.mjs --site build/web/bench-site "$@"
    say "==> Measuring clusters in the browser"
    in_root node bench/browser/clusters.mjs --site build/web/bench-clusters "$@"
}
