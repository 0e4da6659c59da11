# shellcheck shell=bash
# The viewer page: served, pictured, and drawing a file. The arguments are checked before anything is built.

run_demo() {
    need_packages "${WEB_PACKAGES[@]}" "${BROWSER_PACKAGES[@]}"
    build_web
    exec node "$root/apps/viewer/tools/demo.mjs" --site "$root/build/web/site" "$@"
}

run_snapshot() {
    need_packages "${WEB_PACKAGES[@]}" "${BROWSER_PACKAGES[@]}"
    build_web
    exec node "$root/apps/viewer/tools/snapshot.mjs" --site "$root/build/web/site" "$@"
}
