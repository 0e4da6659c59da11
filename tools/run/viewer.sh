# shellcheck shell=bash
# The viewer page: served, pictured, and drawing a file. Their programs say how they are used themselves.

run_demo() {
    run_viewer_tool demo "$@"
}

run_snapshot() {
    (($# > 0)) || misuse "snapshot: which file?"
    run_viewer_tool snapshot "$@"
}

run_viewer_tool() {
    local tool=$root/apps/viewer/tools/$1.mjs
    shift
    if [[ " $* " == *" --help "* || " $* " == *" -h "* ]]; then
        usage
        return
    fi
    need_packages "${WEB_PACKAGES[@]}" "${BROWSER_PACKAGES[@]}"
    build_web
    exec node "$tool" --site "$root/build/web/site" "$@"
}
