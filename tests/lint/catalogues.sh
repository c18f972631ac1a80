#!/bin/bash
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Refuses catalogues that lack a text of the sources, that have one no longer there, or that leave one untranslated.
set -eu -o pipefail
cd "$(dirname "$0")/../.."

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp translations/*.ts "$work"
translations/renew.sh "$work"
failed=0
for catalogue in translations/*.ts; do
    if ! diff --unified=2 "$catalogue" "$work/${catalogue##*/}"; then
        echo "$catalogue: run translations/renew.sh, and translate what it marks as unfinished"
        failed=1
    fi
    if grep --with-filename --before-context=3 --regexp='type="unfinished"' --regexp='<translation></translation>' \
        --regexp='<numerusform></numerusform>' "$catalogue"; then
        echo "$catalogue: not all texts are translated"
        failed=1
    fi
done
exit "$failed"
