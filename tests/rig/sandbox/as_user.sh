#!/bin/sh
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# as_user.sh program file…: runs a program as an ordinary user, with the files it needs beside it. They are copied,
# since the folder they were built in may be closed to others.
set -eu

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp "$@" "$folder"
program=$folder/$(basename "$1")
if [ "$(id -u)" -eq 0 ]; then
    chmod -R a+rX "$folder"
    cd /
    setpriv --reuid=65534 --regid=65534 --clear-groups env TMPDIR=/tmp "$program"
else
    "$program"
fi
