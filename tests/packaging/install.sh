#!/bin/bash
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# install.sh BUILD_FOLDER: an installation is complete, works from any prefix, and is not begun where it cannot be
# completed.
set -eu -o pipefail
build=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

complain()
{
    echo "$*"
    failed=1
}

# expect_equal WHAT GOT WANTED
expect_equal()
{
    [ "$2" = "$3" ] || complain "$1: \"$2\" instead of \"$3\""
}

# install_into ROOT PREFIX
install_into()
{
    DESTDIR="$work/$1" cmake --install "$build" --prefix "$2" >"$work/said"
}

search_path()
{
    readelf --dynamic "$1" | sed -n 's/.*(RUNPATH).*\[\(.*\)\]$/\1/p'
}

library=$(basename "$(find "$build" -name 'libkra-common.so' -printf '%h\n' -quit)")

# With a prefix of its own everything is below that but the two folders with a fixed place.
install_into private /opt/kra
(cd "$work/private" && find . ! -type d | sort) >"$work/files"
cat >"$work/wanted" <<TEXT
./opt/kra/bin/kra-console
./opt/kra/$library/kra/plugins/libkra-quota-plugin.so
./opt/kra/$library/libkra-common.so
./opt/kra/$library/libkra-common.so.0
./opt/kra/$library/libkra-common.so.0.1.0
./opt/kra/share/applications/kra-console.desktop
./opt/kra/share/icons/hicolor/scalable/apps/kra-console.svg
./opt/kra/share/kra/translations/kra-common_de.qm
./opt/kra/share/kra/translations/kra-console_de.qm
./opt/kra/share/metainfo/org.kra.console.metainfo.xml
./opt/kra/share/polkit-1/actions/org.kra.console.policy
./usr/bin/zel-wmfunc
./usr/share/zel/translations/zel-admin-tev/kra-quota-plugin_de.qm
./usr/share/zel/translations/zel-admin-tev/kra-quota-plugin_en.qm
TEXT
diff "$work/wanted" "$work/files" || complain "these files are not those that belong to an installation"
program=$work/private/opt/kra/bin/kra-console
expect_equal "where the program looks for its library" "$(search_path "$program")" "\$ORIGIN/../$library"
grep --quiet "$work/private/opt/kra/bin/../$library/libkra-common.so.0" <(ldd "$program") ||
    complain "the installed program does not find the library that was installed with it"
env -i LANGUAGE=de "$program" --help | grep --quiet 'Verwaltung dieses Rechners' ||
    complain "the installed program does not find the catalogues that were installed with it"
grep --quiet '>/opt/kra/bin/kra-console<' "$work/private/opt/kra/share/polkit-1/actions/org.kra.console.policy" ||
    complain "the policy does not name the installed program"

# In the system's own folders nothing needs a search path.
install_into system /usr
for file in bin/kra-console "$library/kra/plugins/libkra-quota-plugin.so" "$library/libkra-common.so.0"; do
    expect_equal "where $file looks for libraries" "$(search_path "$work/system/usr/$file")" ""
done
expect_equal "where the build's program looks for its library" "$(search_path "$build/bin/kra-console")" \
    "\$ORIGIN/../$library"

# What has not been built, and what cannot be written, is noticed before anything is there.
sed "s|\"[^\"]*/kra-console\"|\"$work/never-built\"|" "$build/complete.cmake" >"$work/unbuilt.cmake"
if DESTDIR="$work/none" cmake -DCMAKE_INSTALL_PREFIX=/usr -P "$work/unbuilt.cmake" 2>"$work/said"; then
    complain "an installation of what was not built has begun"
fi
grep --quiet 'never-built has not been built' "$work/said" || complain "nothing is said of what was not built"
sed "s|^foreach(file .*|foreach(file IN ITEMS /usr/bin/cmake)|" "$build/complete.cmake" >"$work/unwritable.cmake"
chmod 755 "$work"
nobody=()
[ "$(id -u)" -ne 0 ] || nobody=(setpriv --reuid 65534 --clear-groups)
if "${nobody[@]}" cmake -DCMAKE_INSTALL_PREFIX=/usr -P "$work/unwritable.cmake" 2>"$work/said"; then
    complain "an installation into folders that cannot be written has begun"
fi
grep --quiet '/usr/bin cannot be written' "$work/said" || complain "nothing is said of folders that cannot be written"
exit "$failed"
