// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <sys/types.h>

/// What the process settles of its surroundings at the top of main(), before the application object reads them and
/// before there is a second thread. The caller's environment must decide neither which programs are run with
/// administrator rights nor how the bytes of a file are read.
namespace Startup
{
/// All of the below but keepSettingsPrivate(), in order; what concerns the administrator only where the process is
/// root's.
void prepareProcess();

/// One heap for all threads, which grows by megabytes (mallopt(3)): the worker's thread makes records by the hundred
/// thousand and the window's deletes them. A heap of its own would grow by a page and a system call at a time, and
/// where the kernel has large pages for a program they are used.
void useOneLargeHeap();

/// Who writes to an X server that has just ended, or to a program, is told by an error (signal(7), SIGPIPE): the signal
/// would end the process at once, in the middle of a change of the machine. Programs that are run here have it as
/// usual.
void ignoreBrokenPipes();

/// Programs that are run here get none of the descriptors that the caller left open.
void keepDescriptors();

/// Where only a Wayland display is named, that is the one to use: without a word on the session's type Qt takes X11.
void choosePlatform();

/// What root's console remembers is for root to read: folder 0700, file 0600. Before the settings are first used.
void keepSettingsPrivate();

/// Root speaks to no user's session bus, and starts none: the address is that of root's own, or one that leads nowhere.
void useOwnSessionBus();

/// PATH becomes the system's own folders, those of the administrator's programs among them.
void useSystemPath();

/// Files that are made here are readable by all and writable by their owner, whatever the caller's umask.
void useCommonFileMask();

/// The character type becomes UTF-8 where it is not. The caller's language stays, and so do the other categories,
/// except where the machine does not have the named locale: one such category would take all others to "C".
void useUtf8();

/// TZ names the machine's own zone where it is not set, which changes no time that is shown. It saves the C library a
/// look at /etc/localtime for every single time it converts; for that, the console has to be started anew to follow the
/// machine into another zone. Summer time comes and goes as ever.
void nameTimeZone();

/// HOME and the XDG folders become those of an account. The way to the caller's display stays open: the X authority
/// file of the caller's home, and the Wayland socket of the caller's run-time folder.
void useFoldersOf(uid_t account);

/// Drops all variables but those known to say no more than who asks, in which language, on which display and how that
/// is drawn. Of the others too many make some library or program read code from elsewhere, and each release adds some.
void keepKnownEnvironment();

/// Takes the option out by which Qt loads its platform plug-in from a folder of the caller's choice, where the process
/// is root's: whoever is asked for the password sees what is started, not with which options.
void dropForeignArguments(int &argc, char *argv[]);

/// SUDO_UID says who asked for administrator rights, also where that was asked through polkit.
void nameAskingUser();
} // namespace Startup
