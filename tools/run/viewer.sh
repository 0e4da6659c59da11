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
    local tool=$root/apps/viewer/tools/$1.mjs site=$root/build/web/site
    shift
    if [[ " $* " == *" --help "* || " $* " == *" -h "* ]]; then
        usage
        return
    fi
    if [[ ! -f $site/index.html ]]; then
        refuse_wrong_use "$tool" "$site" "$@"
    fi
    need_packages "${WEB_PACKAGES[@]}" "${BROWSER_PACKAGES[@]}"
    build_web
    exec node "$tool" --site "$site" "$@"
}

# Tells wrong arguments before a long build, where node is there to read them: without a built page the program gets no
# further than its arguments.
refuse_wrong_use() {
    local tool=$1 site=$2 told status=0
    shift 2
    told=$(node "$tool" --site "$site" "$@" 2>&1 >/dev/null) || status=$?
    if ((status == 2)); then
        say "$told"
        exit 2
    fi
}
