# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# The demo computer as its commands start and end it. To be sourced after scripts/shell.sh, from the project's folder.

machine=tests/rig/machine/machine
children=()
# Files that pass between here and the demo computer, readable by nobody else. Gone at the end, with all that was started.
folder=$(mktemp -d "${TMPDIR:-/tmp}/kra-demo.XXXXXX")

clean_up()
{
    local child
    for child in "${children[@]}"; do
        kill "$child" 2>/dev/null || true
    done
    for child in "${children[@]}"; do
        wait "$child" 2>/dev/null || true
    done
    rm -rf "$folder"
}
trap clean_up EXIT
trap 'echo; exit 130' INT TERM HUP

# start_computer SECONDS OPTION… -- PROGRAM…: in the background, for so long at most. It is the first of the children.
start_computer()
{
    local seconds=$1
    shift
    "$machine" run --demo --timeout "$seconds" --results "$folder" "$@" &
    children+=($!)
}
