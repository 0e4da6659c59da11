# shellcheck shell=bash
# The viewer page: served, pictured, and drawing a file. Their programs say how they are used themselves.

run_demo() {
    run_viewer_tool demo "$@"
}

run_snapshot() {
    (($# > 0)) || misuse "snapshot: which file?"
    run_viewer_tool snapshot "$@"
}

# Wrong arguments are told before anything is built: the program checks them without the page.
run_viewer_tool() {
    local tool=$root/apps/viewer/tools/$1.mjs site=$root/build/web/site
    shift
    if [[ " $* " == *" --help "* || " $* " == *" -h "* ]]; then
        viewer_tool_help "$tool"
        return
    fi
    command -v node >/dev/null || need_packages "${WEB_PACKAGES[@]}" "${BROWSER_PACKAGES[@]}"
    node "$tool" --check "$@" || exit
    need_packages "${WEB_PACKAGES[@]}" "${BROWSER_PACKAGES[@]}"
    build_web viewer_page
    exec node "$tool" --site "$site" "$@"
}

# The program's own words; where node is missing, these of ./run name the options, too.
viewer_tool_help() {
    if command -v node >/dev/null; then
        node "$1" --help
    else
        usage
    fi
}
