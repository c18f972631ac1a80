#!/bin/bash
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Refuses what the house rules say of every file and no compiler looks at. That an #include does not go against the
# arrows between the folders needs no check here: a folder's target sees the headers of the folders it uses and no
# others, so that it does not compile.
set -eu -o pipefail
cd "$(dirname "$0")/../.."
. tests/lint/files.sh

longest_file=400
longest_test=800
widest_line=120
found=$(mktemp)
trap 'rm -f "$found"' EXIT

# check RULE PATTERN… reads an awk program that prints the places where the rule is broken.
check()
{
    local rule=$1 program
    program=$(cat)
    shift
    project_files "$@" | xargs --no-run-if-empty awk "$program" | sed "s|\$|: $rule|" >>"$found"
}

check "the file begins with its copyright and licence lines" '*.cpp' '*.h' '*.sh' test run .ci/run <<'EOF_AWK'
    FNR == 1 { line = 1; if (/^#!/) { line = 2 } }
    FNR == line && !/^(\/\/|#) SPDX-FileCopyrightText: 20[0-9][0-9] The kra authors$/ { print FILENAME ":" FNR }
    FNR == line + 1 && !/^(\/\/|#) SPDX-License-Identifier: GPL-3\.0-or-later$/ { print FILENAME ":" FNR }
EOF_AWK

check "a header begins with #pragma once" '*.h' <<'EOF_AWK'
    FNR == 1 { guarded = 0 }
    /^#pragma once$/ { guarded = 1 }
    /^#include/ && !guarded { print FILENAME ":" FNR; nextfile }
EOF_AWK

# grep knows that a letter may be more than one byte; awk need not.
project_files '*.cpp' '*.h' '*.cmake' '*CMakeLists.txt' |
    LC_ALL=C.UTF-8 xargs grep --with-filename --line-number --extended-regexp "^.{$widest_line}." |
    sed "s|^\([^:]*:[0-9]*\):.*|\1: a line has at most $widest_line columns|" >>"$found" || true

# A test is as long as what there is to say of its class.
check "a file has at most $longest_file lines, a test $longest_test" \
    '*.cpp' '*.h' '*.cmake' '*CMakeLists.txt' '*.sh' test run <<EOF_AWK
    FNR == 1 { longest = FILENAME ~ /^tests\// ? $longest_test : $longest_file }
    FNR == longest + 1 { print FILENAME ":" FNR }
EOF_AWK

check "no tabs, carriage returns or blanks at the end of a line" \
    '*.cpp' '*.h' '*.ui' '*.cmake' '*CMakeLists.txt' '*.json' '*.sh' '*.ts' '*.md' test run .ci/run <<'EOF_AWK'
    /\t|\r|[ ]$/ { print FILENAME ":" FNR }
EOF_AWK

check "a signal is connected by pointer to member" '*.cpp' '*.h' <<'EOF_AWK'
    /[^A-Z_](SIGNAL|SLOT)\(/ { print FILENAME ":" FNR }
EOF_AWK

check "a test waits for what it waits for, not for a time" 'tests/*.cpp' 'tests/*.h' <<'EOF_AWK'
    /QTest::q(Wait|Sleep)\(/ { print FILENAME ":" FNR }
EOF_AWK

cat "$found"
[ ! -s "$found" ]
