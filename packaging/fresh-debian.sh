# shellcheck shell=bash
# For scripts that work in a fresh Debian; they source it as their first step, with all their arguments. Such a script
# goes on with processes and mounts of its own, and $work is a folder of its own: when it ends, or after three hours,
# nothing of it stays. No package and no service of this machine is touched. Only root may do this.
suite=bookworm

if [ -z "${FRESH_DEBIAN:-}" ]; then
    if [ "$(id -u)" != 0 ]; then
        echo "$(basename "$0"): only root may install packages in a fresh Debian" >&2
        exit 1
    fi
    work=$(mktemp -d --suffix=.debian)
    trap 'rm -rf "$work"' EXIT
    FRESH_DEBIAN=$work timeout --kill-after=60 3h unshare --mount --uts --pid --fork --kill-child "$0" "$@"
    exit
fi
work=$FRESH_DEBIAN

# fresh_debian FOLDER: makes a Debian there, and goes on to work in it. The first one of all is kept in build/, so that
# the next ones take less.
fresh_debian() {
    local kept=build/debian-$suite.tar mirror
    if [ ! -e "$kept" ]; then
        mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' | grep -m 1 '/debian$' || :)
        mkdir -p build
        debootstrap --variant=minbase --include=ca-certificates "$suite" "$work/first" "${mirror:-http://deb.debian.org/debian}"
        # What is thrown away need not reach the disk.
        echo force-unsafe-io >"$work/first/etc/dpkg/dpkg.cfg.d/unsafe-io"
        # Nothing is started in there, as there is no service manager.
        printf '#!/bin/sh\nexit 101\n' >"$work/first/usr/sbin/policy-rc.d"
        chmod +x "$work/first/usr/sbin/policy-rc.d"
        tar -C "$work/first" --one-file-system -cf "$kept.part" .
        mv "$kept.part" "$kept"
        rm -rf "$work/first"
    fi
    root=$1
    mkdir "$root"
    tar -C "$root" -xpf "$kept"
    mount -t proc proc "$root/proc"
}

# inside COMMAND...: runs it in the Debian, without this machine's environment.
inside() {
    chroot "$root" env -i DEBIAN_FRONTEND=noninteractive HOME=/root LC_ALL=C.UTF-8 PATH=/usr/sbin:/usr/bin:/sbin:/bin "$@"
}

# says WHAT COMMAND...: runs it, and shows its errors and the end of what it says when it fails.
says() {
    printf '%s ... ' "$1"
    if ! "${@:2}" >"$work/log" 2>&1; then
        echo failed
        # A build says much behind its first error.
        grep -n -m 5 -A 8 -E '^CMake Error|: (fatal )?error: ' "$work/log" >&2 || :
        tail -n 60 "$work/log" >&2
        exit 1
    fi
    echo 'done'
}
