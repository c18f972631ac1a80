#!/bin/bash
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Refuses sources that clang-format would write differently.
set -eu -o pipefail
cd "$(dirname "$0")/../.."
. tests/lint/files.sh

project_files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
