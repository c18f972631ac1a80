# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# shellcheck shell=bash disable=SC2154
#
# What the disposable machine boots from, kept between runs: the kernel and its modules, the first file system, and the
# packages that only the guest needs. All of it is downloaded and unpacked into the user's cache folder, nothing is
# installed. To be sourced by `machine`, which has set `rig` and `cache`.

# Where the Debian packages of the project are listed.
# shellcheck source=scripts/packages.sh
. "$rig/../../../scripts/packages.sh"

# shellcheck disable=SC2034 # both are read by name
# Modules the guest needs before it sees its root, and those it needs to reach the root of a machine that is kept.
first_modules=(virtio_pci virtio_console virtio_blk 9pnet_virtio 9p overlay)
# shellcheck disable=SC2034
first_modules_of_kept_root=(ext4 crc32c_generic)
# What is unpacked of the kernel package's modules; the guest loads from these what it mounts and uses.
module_folders=(arch/x86/crypto crypto drivers/block drivers/char/hw_random drivers/char/virtio_console.ko
                drivers/net/net_failover.ko drivers/net/virtio_net.ko drivers/virtio fs/9p fs/autofs fs/btrfs fs/ext4
                fs/fscache fs/fuse fs/jbd2 fs/mbcache.ko fs/netfs fs/overlayfs fs/quota fs/xfs lib net/9p net/core)

# Downloads packages into a folder without installing anything, and without the rights it would take.
download_packages()
{
    local folder=$1
    shift
    mkdir -p "$folder/partial"
    apt-get -qq -y -o Debug::NoLocking=true -o APT::Sandbox::User="$(id -un)" -o Dir::Cache::archives="$folder/" \
        --no-install-recommends --download-only install "$@" >"$folder/log" 2>&1 ||
        { cat "$folder/log" >&2; return 1; }
}

# Unpacks packages over each other, with the merged /usr of the system they come to lie on.
unpack_packages()
{
    local target=$1 package top
    shift
    for top in bin lib lib64 sbin; do
        mkdir -p "$target/usr/$top"
        ln -sfn "usr/$top" "$target/$top"
    done
    for package in "$@"; do
        dpkg-deb --fsys-tarfile "$package" |
            tar --extract --directory "$target" --keep-directory-symlink --no-same-owner --no-same-permissions
    done
}

# The kernel in the form that boots fastest: its compressed image unpacked once, here.
unpack_kernel_image()
{
    local image=$1 target=$2 setup_sectors payload_offset payload_length
    setup_sectors=$(od -An -tu1 -j497 -N1 "$image")
    payload_offset=$(od -An -tu4 -j584 -N4 "$image")
    payload_length=$(od -An -tu4 -j588 -N4 "$image")
    # head ends the pipe early on purpose, so tail's complaint about it says nothing.
    { tail -c "+$(((setup_sectors + 1) * 512 + payload_offset + 1))" "$image" 2>/dev/null || true; } |
        head -c "$payload_length" | xz --decompress --stdout --single-stream >"$target"
}

# Fills `kernel/` with vmlinux, initramfs and the modules under layer/.
build_kernel()
{
    local work=$1 package=$2 version folder patterns=() module
    echo "machine: downloading the kernel package $package" >&2
    (cd "$work" && apt-get -qq -o APT::Sandbox::User="$(id -un)" download "$package")
    echo "machine: unpacking it" >&2
    for folder in "${module_folders[@]}"; do
        patterns+=("./lib/modules/*/kernel/$folder")
    done
    mkdir "$work/unpacked"
    dpkg-deb --fsys-tarfile "$work"/linux-image-*.deb |
        tar --extract --directory "$work/unpacked" --no-same-owner --wildcards './boot/vmlinuz-*' \
            './lib/modules/*/modules.builtin*' './lib/modules/*/modules.order' "${patterns[@]}"
    version=$(basename "$work"/unpacked/lib/modules/*)
    depmod --basedir "$work/unpacked" "$version"
    mkdir -p "$work/kernel/usr/lib"
    unpack_kernel_image "$work/unpacked/boot/vmlinuz-$version" "$work/kernel/vmlinux"

    mkdir -p "$work/first/modules" "$work/first/bin"
    cp "$(command -v busybox)" "$work/first/bin/busybox"
    cp "$rig/guest/init" "$rig/guest/etc.sh" "$work/first/"
    chmod 755 "$work/first/init"
    for module in first_modules first_modules_of_kept_root; do
        local -n names=$module
        modprobe --dirname "$work/unpacked" --set-version "$version" --show-depends --all "${names[@]}" |
            awk '$1 == "insmod" && !seen[$2]++ { print $2 }' >"$work/paths"
        xargs -a "$work/paths" cp -t "$work/first/modules"
        xargs -a "$work/paths" -n 1 basename >"$work/first/$module"
    done
    (cd "$work/first" && find . -print0 | cpio --null --create --quiet --format=newc --owner=0:0) >"$work/kernel/initramfs"
    mv "$work/unpacked/lib/modules" "$work/kernel/usr/lib/modules"
    ln -s usr/lib "$work/kernel/lib"
}

# Fills `packages/` with what the guest needs of Debian and this system lacks.
build_packages()
{
    local work=$1
    echo "machine: downloading what only the machine needs: ${KRA_GUEST_PACKAGES[*]}" >&2
    download_packages "$work/archives" "${KRA_GUEST_PACKAGES[@]}"
    (cd "$work/archives" && apt-get -qq -o APT::Sandbox::User="$(id -un)" download "${KRA_BARE_PACKAGES[@]}")
    mkdir "$work/packages"
    unpack_packages "$work/packages" "$work"/archives/*.deb
}

# refresh part builder key [argument]: builds a part of the cache anew unless it was built for the same key.
refresh()
{
    local part=$1 builder=$2 key=$3 work
    shift 3
    if [ -e "$cache/$part/.key" ] && [ "$(cat "$cache/$part/.key")" = "$key" ]; then
        return 0
    fi
    rm -rf "$cache"/work.*
    work=$(mktemp -d "$cache/work.XXXXXX")
    "$builder" "$work" "$@"
    echo "$key" >"$work/$part/.key"
    rm -rf "${cache:?}/$part"
    mv "$work/$part" "$cache/$part"
    rm -rf "$work"
}

# Makes sure that the cache holds what this checkout's machine boots from. One process at a time does it.
prepare_cache()
{
    local kernel_package kernel_version scripts
    mkdir -p "$cache"
    exec {lock}>"$cache/lock"
    flock "$lock"
    # Old package lists name kernels that are no longer there. Nobody is asked for a password in the middle of this.
    if [ ! -e "$cache/kernel" ] && [ "$(id -u)" -eq 0 ]; then
        echo "machine: fetching the package lists" >&2
        apt-get -qq update
    fi
    kernel_package=$(apt-cache depends --important linux-image-amd64 | awk '$1 == "Depends:" { print $2; exit }')
    if [ -z "$kernel_package" ]; then
        echo "machine: apt knows no kernel package; \`apt-get update\` as root fetches the lists" >&2
        return 1
    fi
    kernel_version=$(apt-cache show --no-all-versions "$kernel_package" | awk '$1 == "Version:" { print $2; exit }')
    scripts=$(cat "$rig/cache.sh" "$rig/guest/init" "$rig/guest/etc.sh" | sha256sum | cut -c1-16)
    refresh kernel build_kernel "$kernel_package $kernel_version $scripts" "$kernel_package"
    refresh packages build_packages \
        "${KRA_GUEST_PACKAGES[*]} ${KRA_BARE_PACKAGES[*]} $(cat "$rig/cache.sh" /var/lib/dpkg/status | sha256sum | cut -c1-16)"
    flock --unlock "$lock"
    exec {lock}>&-
}
