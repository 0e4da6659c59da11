#!/usr/bin/env bash
# Proves that the two commands of the README and .ci/run work on a Debian 12 machine on which nothing is installed: lays
# down a minimal system with debootstrap, clones the committed tree into it, and runs them inside. As root; takes an hour
# and 8 GB. The package mirror and the npm settings are those of this machine.
#
# usage: tests/bare-machine.sh FOLDER      the folder is made, and kept for a look afterwards
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
if (($# != 1)) || [[ -e $1 ]] || ((EUID != 0)); then
    echo "usage (as root): ${BASH_SOURCE[0]} FOLDER, which must not exist yet" >&2
    exit 2
fi
mkdir -p "$1"
machine=$(realpath "$1")

lay_down_system() {
    debootstrap --variant=minbase bookworm "$machine" "$(mirror)"
    rm -f "$machine/etc/apt/sources.list"
    cp /etc/resolv.conf /etc/hosts "$machine/etc/"
    # Sources of Debian itself; others of this machine would bring in what a bare one has not.
    local source
    for source in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
        if [[ -f $source ]] && grep -q bookworm-updates "$source"; then
            cp "$source" "$machine/etc/apt/sources.list.d/"
        fi
    done
    { grep -lri proxy /etc/apt/apt.conf.d || true; } | xargs -r cp -t "$machine/etc/apt/apt.conf.d"
}

mirror() {
    # shellcheck disable=SC2016 # apt's own placeholder
    apt-get indextargets --format '$(SITE)' "Codename: bookworm" "Created-By: Packages" | sort -u | head -n 1
}

# What this machine knows of the way to the npm registry: settings, and the certificates to trust.
lay_down_npm_settings() {
    local certificates=${NODE_EXTRA_CA_CERTS:-}
    if [[ -f ~/.npmrc ]]; then
        cp ~/.npmrc "$machine/home/.npmrc"
    fi
    if [[ -n $certificates ]]; then
        cp "$certificates" "$machine/home/trusted-certificates.pem"
    fi
    { npm config get registry 2>/dev/null || true; } | sed 's/^/registry=/' >>"$machine/home/.npmrc"
}

# inside COMMAND…: runs it in the clone, with processes and mounts of its own that end with it.
inside() {
    # shellcheck disable=SC2016 # expanded by the inner shell
    unshare --mount --pid --fork bash -euc '
        machine=$1
        shift
        mount -t proc proc "$machine/proc"
        mount --rbind /dev "$machine/dev"
        exec chroot "$machine" /usr/bin/env -i HOME=/home LANG=C.UTF-8 \
            PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
            ${NODE_EXTRA_CA_CERTS:+NODE_EXTRA_CA_CERTS=/home/trusted-certificates.pem} "$@"' \
        bare-machine "$machine" "$@"
}

lay_down_system
lay_down_npm_settings
git clone --quiet --no-hardlinks "$root" "$machine/pelta"

for program in g++ node chromium cmake; do
    if inside bash -c "command -v $program"; then
        echo "the machine is not bare: it has $program" >&2
        exit 1
    fi
done
time inside /pelta/run test
time inside /pelta/.ci/run
time inside /pelta/run demo --screenshot /pelta/demo.png
echo "picture of the demo: $machine/pelta/demo.png"
