#!/bin/bash
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# tst_binaries.sh: the check of programs accepts one with every protection, and refuses one that lacks any of them.
set -eu -o pipefail
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cat >"$work/program.cpp" <<'TEXT'
#include <cstdio>
int main(int, char **arguments)
{
    char text[64];
    std::snprintf(text, sizeof text, "%s", arguments[0]);
    return text[0];
}
TEXT
good=(-O2 -fPIE -pie -fstack-protector-strong -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack
    '-Wl,-rpath,$ORIGIN/../lib')
failed=0

# expect TEXT FLAG…: what the check says of the program built with these flags on top; nothing where TEXT is empty.
expect()
{
    local text=$1 said
    shift
    g++ "${good[@]}" "$@" -o "$work/program" "$work/program.cpp"
    said=$("$here/binaries.sh" "$work/program" || true)
    if { [ -z "$text" ] && [ -n "$said" ]; } || [[ $said != *"$text"* ]]; then
        echo "with ${*:-nothing else} the check should have said \"$text\" and said \"$said\""
        failed=1
    fi
}

expect ''
expect 'is not one beside it' -Wl,-rpath,/opt/lib
expect 'its library folder "" is not one beside it' '-Wl,-rpath,$ORIGIN:'
expect 'its library folder "" is not one beside it' '-Wl,-rpath,:$ORIGIN'
expect 'its library folder "lib" is not one beside it' -Wl,-rpath,lib
expect 'its library folder "$ORIGINAL/lib" is not one beside it' '-Wl,-rpath,$ORIGINAL/lib'
expect 'fixed address' -fno-PIE -no-pie
expect 'no relro' -Wl,-z,norelro
expect 'no -z now' -Wl,-z,lazy
expect 'its stack can be executed' -Wl,-z,execstack

all='-D_FORTIFY_SOURCE=2 -D_GLIBCXX_ASSERTIONS -fstack-protector-strong'
all+=' -fstack-clash-protection -fcf-protection -Werror=format-security'

# commands FLAGS: the check of what files are compiled with, for two files of which the second has these flags.
commands()
{
    printf '{\n  "command": "c++ %s -c %s",\n  "file": "%s"\n},\n' "$all" a.cpp a.cpp "$1" b.cpp b.cpp \
        >"$work/compile_commands.json"
    "$here/flags.sh" "$work" >"$work/said"
}

if ! commands "-O2 $all"; then
    echo "the check refuses what is compiled with all flags:"
    cat "$work/said"
    failed=1
fi
for flag in $all; do
    if commands "${all/$flag/}" || ! grep --quiet --fixed-strings -- "b.cpp: it is compiled without $flag" "$work/said"; then
        echo "the check does not see that $flag is missing"
        failed=1
    fi
done
exit "$failed"
