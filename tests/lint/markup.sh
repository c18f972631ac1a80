#!/bin/bash
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# markup.sh [FILE…]: refuses labels, boxes and tool tips that would take a text for markup. The names of accounts,
# devices and mount points come from files and mounts that others wrote: one that looks like markup would be drawn, and
# the files that it names would be opened. Without files all forms and sources of the product are looked at.
set -eu -o pipefail
if [ "$#" -eq 0 ]; then
    cd "$(dirname "$0")/../.."
    . tests/lint/files.sh
    mapfile -t files < <(project_files '*.ui' '*.cpp' '*.h' | grep --invert-match --extended-regexp '^(tests|bench|demo)/')
    set -- "${files[@]}"
fi

# A form's labels say in the form that their text is plain. A label has no widgets in it, so its end is the next one.
form()
{
    awk '
        /<widget class="QLabel"/ { label = FILENAME ":" FNR; isPlain = 0 }
        /<enum>Qt::PlainText<\/enum>/ { isPlain = 1 }
        /<\/widget>/ { if (label && !isPlain) { print label ": this label takes its text for markup (textFormat)" } label = "" }
    ' "$1"
}

# Sources make as many labels and boxes as they make plain; the functions that show a box at once cannot be made so.
source_file()
{
    awk '
        { sub(/^[ \t]*\/\/.*/, "") }
        /new (QLabel|QMessageBox)[^A-Za-z]|QMessageBox [a-z_]+\(|: QLabel\(/ { ++made; if (!first) { first = FNR } }
        /setTextFormat\(Qt::PlainText\)/ { ++plain }
        /QMessageBox::(about|aboutQt|critical|information|question|warning)\(/ {
            print FILENAME ":" FNR ": this box takes its text for markup; make one with Qt::PlainText"
        }
        /setTextFormat\(Qt::(Rich|Auto|Markdown)Text\)|QErrorMessage/ {
            print FILENAME ":" FNR ": texts are plain here"
        }
        /(setToolTip|setWhatsThis|QToolTip::showText)\(/ && !/(plainToolTip|[^a-zA-Z]tr)\(|QString\(\)/ {
            statement = $0
            at = FNR
            while (statement !~ /;/ && (getline line) > 0) { statement = statement line }
            if (statement !~ /(plainToolTip|[^a-zA-Z]tr)\(/) {
                print FILENAME ":" at ": a tool tip that is no fixed text goes through plainToolTip()"
            }
        }
        END {
            if (made > plain) {
                print FILENAME ":" first ": " made " labels or boxes, of which " plain + 0 " are set to Qt::PlainText"
            }
        }
    ' "$1"
}

found=$(
    for file in "$@"; do
        case $file in
        *.ui) form "$file" ;;
        *) source_file "$file" ;;
        esac
    done
)
[ -z "$found" ] || printf '%s\n' "$found"
[ -z "$found" ]
