#!/bin/bash
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# binaries.sh FILE…: refuses programs and libraries that lack a protection which the compiler and the linker can give,
# or that look for their libraries in a folder which is not named in full or beside them.
set -eu -o pipefail

found=0

# complain FILE TEXT
complain()
{
    echo "$1: $2"
    found=1
}

# What the dynamic linker is to search, one folder a line; an empty line is the current folder of the process.
search_folders()
{
    readelf --wide --dynamic "$1" | sed -n 's/.*(\(RPATH\|RUNPATH\)).*\[\(.*\)\]$/\2:/p' | tr ':' '\n' | sed '$d'
}

check()
{
    local file=$1 folder header dynamic segments
    header=$(readelf --file-header "$file")
    dynamic=$(readelf --wide --dynamic "$file")
    segments=$(readelf --wide --program-headers "$file")

    while IFS= read -r folder; do
        case $folder in
        "\$ORIGIN" | "\$ORIGIN/"*) ;;
        *) complain "$file" "its library folder \"$folder\" is not one beside it" ;;
        esac
    done < <(search_folders "$file")

    grep --quiet 'Type: *DYN' <<<"$header" || complain "$file" "its code stands at a fixed address"
    grep --quiet GNU_RELRO <<<"$segments" || complain "$file" "its tables stay writable (no relro)"
    grep --quiet --extended-regexp 'BIND_NOW|FLAGS_1.* NOW' <<<"$dynamic" ||
        complain "$file" "its functions are looked up late (no -z now)"
    grep --quiet --extended-regexp 'GNU_STACK .* RW +0x' <<<"$segments" || complain "$file" "its stack can be executed"
}

for file in "$@"; do
    check "$file"
done
exit "$found"
