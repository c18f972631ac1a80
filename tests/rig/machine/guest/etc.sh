# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# The guest's own /etc, written at its first boot: what programs need of the host's, Debian's basic accounts, and
# nothing that belongs to the host's people and services. To be sourced by `init` while the root stands under /root.
etc=/root/etc
hosts=/root/run/machine/host/etc
$bb mkdir -p $etc
for file in bash.bashrc debian_version ld.so.cache ld.so.conf localtime login.defs mke2fs.conf os-release profile \
    protocols services timezone xattr.conf; do
    [ -e "$hosts/$file" ] && $bb cp -dp "$hosts/$file" "$etc/$file"
done
# Folders of many files that are only read stay where they are.
for folder in X11 alternatives fonts ld.so.conf.d pam.d security ssl; do
    [ -e "$hosts/$folder" ] && $bb ln -s "/run/machine/host/etc/$folder" "$etc/$folder"
done

$bb cp /root/usr/share/base-passwd/passwd.master $etc/passwd
$bb cp /root/usr/share/base-passwd/group.master $etc/group
$bb sed -i 's/^\(root\):[^:]*:/\1:x:/' $etc/passwd
$bb sed 's/^\([^:]*\):.*/\1:*:19000:0:99999:7:::/' $etc/passwd >$etc/shadow
$bb sed 's/^\([^:]*\):.*/\1:*::/' $etc/group >$etc/gshadow
$bb chmod 640 $etc/shadow $etc/gshadow
$bb ln -s ../proc/self/mounts $etc/mtab
: >$etc/fstab
echo machine >$etc/hostname
printf '127.0.0.1 localhost machine\n::1 localhost\n' >$etc/hosts
printf 'passwd: files\ngroup: files\nshadow: files\nhosts: files\n' >$etc/nsswitch.conf
$bb mkdir -p $etc/cron.d $etc/default $etc/systemd/system
# An id of its own, so that Debian's init takes this for a machine that was set up already.
echo 6b72616b72616b72616b72616b72616b >$etc/machine-id
# Emptying /tmp at boot would take a checkout that lies there away from its own tests.
$bb mkdir -p $etc/tmpfiles.d
$bb ln -s /dev/null $etc/tmpfiles.d/tmp.conf
# Nothing here runs programs of other systems, and the kernel's module for it is not there.
$bb ln -s /dev/null $etc/systemd/system/systemd-binfmt.service
$bb ln -s /dev/null $etc/systemd/system/proc-sys-fs-binfmt_misc.automount
printf '[Journal]\nStorage=volatile\n' >$etc/systemd/journald.conf
