# shellcheck shell=bash
# What each command needs from Debian, and getting it.

readonly BUILD_PACKAGES=(cmake ninja-build g++ nodejs npm ca-certificates librsvg2-bin nlohmann-json3-dev libstb-dev)
readonly NATIVE_PACKAGES=("${BUILD_PACKAGES[@]}" pkg-config libcairo2-dev libpango1.0-dev fonts-noto-core fonts-noto-cjk
    libgmock-dev libsimdjson-dev libproj-dev)
readonly WEB_PACKAGES=("${BUILD_PACKAGES[@]}" emscripten node-acorn)
readonly BROWSER_PACKAGES=(chromium fonts-noto-core fonts-noto-cjk)
readonly BENCH_PACKAGES=(libbenchmark-dev proj-bin)
readonly FUZZ_PACKAGES=(clang libclang-rt-14-dev)
readonly FORMAT_PACKAGES=(clang-format)
readonly LINT_PACKAGES=(clang-tidy)
readonly DOCS_PACKAGES=(doxygen)

# Packages that may just as well come from elsewhere: having the program is enough.
declare -rA PROGRAM_OF=([cmake]=cmake [ninja-build]=ninja [g++]=g++ [pkg-config]=pkg-config [nodejs]=node [npm]=npm
    [librsvg2-bin]=rsvg-convert [emscripten]=em++ [chromium]=chromium [clang-format]=clang-format [clang]=clang++
    [clang-tidy]=clang-tidy [doxygen]=doxygen)

is_installed() {
    local program=${PROGRAM_OF[$1]:-}
    if [[ -n $program ]] && command -v "$program" >/dev/null; then
        return 0
    fi
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# need_packages PACKAGE…: installs those that are missing; whoever may not install is told the command to type.
need_packages() {
    local package missing=()
    for package in "$@"; do
        if ! is_installed "$package" && [[ " ${missing[*]} " != *" $package "* ]]; then
            missing+=("$package")
        fi
    done
    if ((${#missing[@]} == 0)); then
        return 0
    fi
    local install="apt-get install -y --no-install-recommends ${missing[*]}"
    if ((EUID != 0)); then
        say "Debian packages are missing. Type this, then run the command again:"
        say "    sudo sh -c 'apt-get update && $install'"
        exit 1
    fi
    export DEBIAN_FRONTEND=noninteractive
    if [[ -z ${package_lists_are_fresh:-} ]]; then
        step "Reading Debian's package lists" apt-get update
        package_lists_are_fresh=yes
    fi
    # shellcheck disable=SC2086 # words of one command
    step "Installing Debian packages: ${missing[*]}" $install
}

# Installs the npm packages of the lock file. The mark inside node_modules goes whenever npm lays the folder anew.
need_node_modules() {
    local mark=$root/node_modules/.pelta-lock wanted
    wanted=$(sha256sum <"$root/package-lock.json")
    if [[ $(cat "$mark" 2>/dev/null) != "$wanted" ]]; then
        step "Installing npm packages of package-lock.json" npm --prefix "$root" ci --no-audit --no-fund
        printf '%s\n' "$wanted" >"$mark"
    fi
}
