// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What pages ask of the desktop's window manager, on a system whose desktop has no such command. The one thing they ask
// is a reboot, which is the session manager's to do: "systemctl reboot" asks it, as whoever calls and with the
// questions that the system's policy wants asked.

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <unistd.h>

namespace
{

constexpr int failedCode = 1;
constexpr int notUnderstoodCode = 2;

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2 || std::strcmp(argv[1], "ZELWM_REBOOT") != 0) {
        std::fprintf(stderr,
                     "zel-wmfunc: cannot do \"%s\". The one thing it does is ZELWM_REBOOT: it restarts the "
                     "computer.\n",
                     argc > 1 ? argv[argc - 1] : "");
        return notUnderstoodCode;
    }
    execlp("systemctl", "systemctl", "reboot", static_cast<char *>(nullptr));
    std::fprintf(stderr, "zel-wmfunc: cannot run systemctl, which restarts the computer: %s\n", std::strerror(errno));
    return failedCode;
}
