// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "privatemounts.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr int noSandboxCode = 3;

void writeFile(const char *path, const std::string &text)
{
    const int file = open(path, O_WRONLY | O_CLOEXEC);
    if (file < 0 || write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        PrivateMounts::fail(std::string("write ") + path, errno);
    }
    close(file);
}

// In a user namespace a process has all rights over what is in it, and the namespace's root is the user outside.
void enterUserNamespace()
{
    const std::string user = std::to_string(geteuid());
    const std::string group = std::to_string(getegid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
        PrivateMounts::fail("enter a user namespace (run as root, or allow users their own namespaces with the sysctl "
                            "settings user.max_user_namespaces and kernel.unprivileged_userns_clone)",
                            errno);
    }
    writeFile("/proc/self/setgroups", "deny");
    writeFile("/proc/self/uid_map", "0 " + user + " 1");
    writeFile("/proc/self/gid_map", "0 " + group + " 1");
}

} // namespace

void PrivateMounts::fail(const std::string &what, int error)
{
    std::fprintf(stderr, "The sandbox cannot %s: %s\n", what.c_str(), std::strerror(error));
    std::exit(noSandboxCode);
}

void PrivateMounts::enterNamespace()
{
    if (unshare(CLONE_NEWNS) != 0) {
        enterUserNamespace();
    }
    // Otherwise what is mounted here would show up in the namespace this one was copied from.
    if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
        fail("make its mounts private", errno);
    }
}

void PrivateMounts::mountMemory(const std::string &folder)
{
    if (mount("sandbox", folder.c_str(), "tmpfs", MS_NOSUID | MS_NODEV, "mode=0755") != 0) {
        fail("mount " + folder, errno);
    }
}

void PrivateMounts::replaceFolder(const std::string &shown, const std::string &place)
{
    if (mount(shown.c_str(), place.c_str(), nullptr, MS_BIND, nullptr) != 0) {
        fail("show " + shown + " as " + place, errno);
    }
    struct stat wanted = {};
    struct stat found = {};
    if (stat(shown.c_str(), &wanted) != 0 || stat(place.c_str(), &found) != 0) {
        fail("look at " + place, errno);
    }
    if (wanted.st_dev != found.st_dev || wanted.st_ino != found.st_ino) {
        fail("go on: " + place + " is not its own", EXDEV);
    }
}
