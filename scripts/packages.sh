# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# The Debian packages the project needs, in one place, and the one function that installs what is missing of them.
# To be sourced, not run:
#
#   . scripts/packages.sh
#   install_packages "${KRA_BUILD_PACKAGES[@]}" "${KRA_MACHINE_PACKAGES[@]}"

# To configure and compile.
KRA_BUILD_PACKAGES=(
    ca-certificates
    ccache
    cmake
    g++
    git
    libcap-dev
    ninja-build
    qtbase5-dev
    qttools5-dev
    qttools5-dev-tools
)

# To show a window, and to have letters and icons in it.
KRA_DESKTOP_PACKAGES=(
    fonts-dejavu-core
    libqt5svg5
    qttranslations5-l10n
)

# To show it where the desktop has no X server.
KRA_WAYLAND_PACKAGES=(
    qtwayland5
)

# What the console administers this computer with.
KRA_LOCAL_PACKAGES=(
    kmod
    quota
    util-linux
)

# To boot the disposable machine: the emulator, its firmware, what its initramfs and disks are made with, and the
# programs that are administered in it.
KRA_MACHINE_PACKAGES=(
    busybox-static
    cpio
    e2fsprogs
    kmod
    qemu-system-x86
    quota
    seabios
    xz-utils
)

# What only the guest of the disposable machine needs. These are downloaded and unpacked for it, never installed here.
KRA_GUEST_PACKAGES=(
    cron
    dma
    matchbox-window-manager
    systemd
    systemd-sysv
    tigervnc-standalone-server
    tigervnc-tools
    udev
    xfsprogs
)

# Of these the guest's side needs only the files, not what they depend on elsewhere.
KRA_BARE_PACKAGES=(
    novnc
)

# To show the disposable machine's screen here: in a window, or in a web browser.
KRA_WINDOW_PACKAGES=(
    tigervnc-viewer
)
KRA_BROWSER_PACKAGES=(
    websockify
)

# To run the tests and the checks of the sources besides what is built.
KRA_TEST_PACKAGES=(
    clang-format
    clang-tidy
    util-linux
    xauth
    xvfb
)

# as_root command…: runs a command with administrator rights, asking for them only where they are not there yet.
as_root()
{
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

# install_packages package…: installs those of the named packages that are missing. The package lists are fetched only
# when something is missing, and once.
install_packages()
{
    local package missing=()
    for package in "$@"; do
        if [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
            missing+=("$package")
        fi
    done
    if [ "${#missing[@]}" -eq 0 ]; then
        return 0
    fi
    echo "Installing the missing packages: ${missing[*]}"
    as_root env DEBIAN_FRONTEND=noninteractive apt-get update -q
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}
