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
    if ((${#files[@]} == 0)); then
        # The tests are left out: they take as long as all else, and run every time anyway. Name one to lint it.
        mapfile -d '' -t files < <(own_sources | grep -z '\.cpp$' | grep -zv '^tests/')
    else
        mapfile -t files < <(realpath --relative-to="$root" -- "${files[@]}")
    fi
    configure release
    configure web
    if [[ " ${files[*]}" == *" tests/"* ]]; then
        configure sanitize
    fi
    step "Writing the headers that the build makes" write_headers
    step "Linting ${#files[@]} C++ sources" in_root node tools/run/lint.mjs "${files[@]}"
}

write_headers() {
    local preset
    for preset in release web; do
        in_root cmake --build --preset "$preset" --target pelta_generated_headers || return
    done
}

run_docs() {
    (($# == 0)) || misuse "docs takes no arguments"
    need_packages "${DOCS_PACKAGES[@]}"
    mkdir -p "$root/build/docs"
    step "Writing the reference of the public headers" in_root doxygen docs/Doxyfile
    printf '%s\n' "$root/build/docs/html/index.html"
}
