# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# To be sourced by the checks of this folder, with the project's folder as the current one.

# project_files PATTERN…: the project's own files that match, those that are yet to be added among them.
project_files()
{
    # A checkout may belong to another user than the one who tests it.
    git -c safe.directory="$PWD" ls-files --cached --others --exclude-standard -- "$@" | sort -u |
        while read -r file; do
            if [ -f "$file" ]; then
                printf '%s\n' "$file"
            fi
        done
}
