# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# What the project's own commands have in common. To be sourced first, from the project's folder:
#
#   . scripts/shell.sh
#
# The first failure ends a command that sourced this.
set -euo pipefail

# say TEXT…: what is being done now.
say()
{
    echo "==> $* ($(date +%H:%M:%S))"
}

# fail TEXT…: why the command ends here, with 1.
fail()
{
    echo "${0##*/}: $*" >&2
    exit 1
}

# build PRESET [TARGET…]: configures, and builds what changed since the last time.
build()
{
    local preset=$1
    shift
    cmake --preset "$preset" >/dev/null
    cmake --build "build-$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}
