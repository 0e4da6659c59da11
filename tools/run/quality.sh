# shellcheck shell=bash
# Layout, lint and reference of the C++ sources.

# Our own C++ files, from the root, ended by NUL.
own_sources() {
    in_root find include src ports apps tests bench examples \( -name '*.h' -o -name '*.cpp' \) -print0 | sort -z
}

run_format() {
    local options=(-i) text="Laying out the C++ sources"
    case "$*" in
    '') ;;
    --check)
        options=(--dry-run --Werror)
        text="Checking the layout of the C++ sources"
        ;;
    *) misuse "format takes --check or nothing" ;;
    esac
    need_packages "${FORMAT_PACKAGES[@]}"
    step "$text" format_sources "${options[@]}"
}

format_sources() {
    own_sources | in_root xargs -0 clang-format "$@"
}

run_lint() {
    local files=("$@") file
    for file in "${files[@]}"; do
        [[ $file == *.cpp && -f $file ]] || misuse "lint: '$file' is not a C++ source file"
    done
    need_packages "${NATIVE_PACKAGES[@]}" "${BENCH_PACKAGES[@]}" "${WEB_PACKAGES[@]}" "${LINT_PACKAGES[@]}"
    need_node_modules
    configure release
    configure web
    step "Writing the headers that the build makes" write_headers
    if ((${#files[@]} == 0)); then
        # The tests are left out: a quarter of an hour for code that runs every time anyway. Name one to lint it.
        mapfile -d '' -t files < <(own_sources | grep -z '\.cpp$' | grep -zv '^tests/')
    else
        mapfile -t files < <(realpath --relative-to="$root" -- "${files[@]}")
    fi
    step "Linting ${#files[@]} C++ sources" lint_sources "${files[@]}"
}

write_headers() {
    in_root cmake --build --preset release --target viewer_map_cities &&
        in_root cmake --build --preset web --target pelta_web_layer_spec
}

lint_sources() {
    printf '%s\0' "$@" | in_root xargs -0 -n 1 -P "$(nproc)" tools/run/lint-one.sh
}

run_docs() {
    (($# == 0)) || misuse "docs takes no arguments"
    need_packages "${DOCS_PACKAGES[@]}"
    mkdir -p "$root/build/docs"
    step "Writing the reference of the public headers" in_root doxygen docs/Doxyfile
    printf '%s\n' "$root/build/docs/html/index.html"
}
