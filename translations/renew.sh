#!/bin/bash
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# renew.sh [FOLDER]: brings the catalogues of a folder, this one by default, up to the texts of the sources. Texts that
# came to it are marked as unfinished, texts that have gone are dropped.
set -eu -o pipefail
folder=$(realpath "${1:-"$(dirname "$0")"}")
cd "$(dirname "$0")/.."

# renew CATALOGUE FOLDER… [OPTION…]
renew()
{
    local catalogue=$folder/$1
    shift
    lupdate -silent -locations none -no-obsolete "$@" -ts "$catalogue"
}

plugin=(backend data elements notifications plugin units widgets)
renew kra-common_de.ts host
renew kra-console_de.ts console
renew kra-quota-plugin_de.ts "${plugin[@]}"
renew kra-quota-plugin_en.ts "${plugin[@]}" -pluralonly
