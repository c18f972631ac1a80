#!/bin/bash
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# flags.sh BUILD_FOLDER: refuses sources that a release is compiled from without the compiler's protections. Of some of
# them nothing can be seen in the program that comes out.
set -eu -o pipefail
flags='-D_FORTIFY_SOURCE=2 -D_GLIBCXX_ASSERTIONS -fstack-protector-strong -fstack-clash-protection'
flags+=' -fcf-protection -Werror=format-security'
awk -v flags="$flags" '
    BEGIN { count = split(flags, wanted, / +/) }
    /^ *"command":/ { command = $0 " " }
    /^ *"file":/ {
        file = $2
        gsub(/[",]/, "", file)
        for (i = 1; i <= count; ++i) {
            if (!index(command, " " wanted[i] " ")) {
                print file ": it is compiled without " wanted[i]
                found = 1
            }
        }
    }
    END { exit found }
' "$1/compile_commands.json"
