# shellcheck shell=bash
# Building the presets of CMakePresets.json; each has its folder build/PRESET. The variable PELTA_WARNINGS_AS_ERRORS=ON
# lets warnings stop a build.

in_root() {
    (cd "$root" && "$@")
}

# Where ccache is installed, native builds of all clones share their objects. The web preset leaves it out: in front of
# em++ it runs g++.
if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER-ccache}
    export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=yes CCACHE_SLOPPINESS=pch_defines,time_macros
fi

configure() {
    if ! is_configured "$1"; then
        step "Configuring build/$1" in_root cmake --preset "$1"
    fi
}

is_configured() {
    local made=$root/build/$1/build.ninja
    [[ -f $made && ! $root/CMakePresets.json -nt $made ]] &&
        grep -q "^CMAKE_COMPILE_WARNING_AS_ERROR:[A-Z]*=${PELTA_WARNINGS_AS_ERRORS:-}$" "$root/build/$1/CMakeCache.txt"
}

# build PRESET [TARGET…]: all that the preset builds by itself, or the targets.
build() {
    local preset=$1
    shift
    configure "$preset"
    step "Building build/$preset" in_root cmake --build --preset "$preset" ${1:+--target "$@"}
}

build_native() {
    need_packages "${NATIVE_PACKAGES[@]}"
    need_node_modules
    build "$@"
}

build_web() {
    need_packages "${WEB_PACKAGES[@]}"
    need_node_modules
    build web "$@"
}
