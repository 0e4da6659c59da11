# shellcheck shell=bash
# Building the presets of CMakePresets.json; each has its folder build/PRESET.

in_root() {
    (cd "$root" && "$@")
}

configure() {
    local made=$root/build/$1/build.ninja
    if [[ ! -f $made || $root/CMakePresets.json -nt $made ]]; then
        step "Configuring build/$1" in_root cmake --preset "$1"
    fi
}

build() {
    configure "$1"
    step "Building build/$1" in_root cmake --build --preset "$1"
}

build_native() {
    need_packages "${NATIVE_PACKAGES[@]}"
    need_node_modules
    build "$1"
}

build_web() {
    need_packages "${WEB_PACKAGES[@]}"
    need_node_modules
    build web
}
