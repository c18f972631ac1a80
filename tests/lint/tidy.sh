#!/bin/bash
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# tidy.sh BUILD_FOLDER [FILE…]: refuses sources in which clang-tidy finds something; all that the build compiles,
# unless some are named. What moc and its like wrote is left out. Prints the findings and nothing else.
set -eu -o pipefail
build=$(realpath "$1")
shift
cd "$(dirname "$0")/../.."
. tests/lint/files.sh

# What this build does not compile has no command to analyse it with.
compiled()
{
    project_files '*.cpp' | grep --fixed-strings --line-regexp \
        --file=<(sed -n "s|^ *\"file\": \"$PWD/\(.*\)\",\{0,1\}\$|\1|p" "$build/compile_commands.json")
}

if [ "$#" -gt 0 ]; then
    printf '%s\n' "$@"
else
    compiled
fi | xargs --max-args=1 --max-procs="$(nproc)" clang-tidy -p "$build" --quiet 2>&1 |
    sed '/^[0-9]* warnings\{0,1\} generated\.$/d'
