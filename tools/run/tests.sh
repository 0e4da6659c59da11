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
    ((${#kinds[@]} > 0)) || kinds=(native browser)
    for kind in "${kinds[@]}"; do
        case $kind in
        native | sanitize) needed+=("${NATIVE_PACKAGES[@]}") ;;
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
    local kinds=("$@") kind
    ((${#kinds[@]} > 0)) || kinds=(native browser)
    for kind in "${kinds[@]}"; do
        [[ $kind =~ ^(native|browser)$ ]] || misuse "bench: there is no kind '$kind'"
    done
    for kind in "${kinds[@]}"; do
        "bench_$kind"
    done
}

bench_native() {
    need_packages "${BENCH_PACKAGES[@]}"
    build_native release
    say "==> Measuring overlays on the headless port"
    in_root build/release/bench/pelta_bench
    in_root build/release/bench/pelta_cluster_bench
    in_root build/release/bench/pelta_cluster_manager_bench
    in_root build/release/bench/pelta_grid_bench
    in_root build/release/bench/pelta_convert_bench
}

# The pages of the benchmarks are left out of the everyday build.
bench_browser() {
    need_packages "${WEB_PACKAGES[@]}" "${BROWSER_PACKAGES[@]}"
    need_node_modules
    step "Configuring build/web with the pages of the benchmarks" in_root cmake --preset web -DPELTA_BUILD_BENCH=ON
    build web
    say "==> Measuring shapes in the browser"
    in_root node bench/browser/run.mjs --site build/web/bench-site
    say "==> Measuring clusters in the browser"
    in_root node bench/browser/clusters.mjs --site build/web/bench-clusters
}
