#!/bin/bash
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Refuses texts that lupdate cannot find a context for: no catalogue would have them.
set -eu -o pipefail
cd "$(dirname "$0")/../.."
. tests/lint/files.sh

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
project_files '*.cpp' '*.h' '*.ui' | grep -v -e '^tests/' -e '^bench/' >"$work/files"
lupdate -silent "@$work/files" -ts "$work/texts.ts" >"$work/said" 2>&1
if [ -s "$work/said" ]; then
    cat "$work/said"
    exit 1
fi
