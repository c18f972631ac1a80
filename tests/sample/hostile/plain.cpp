// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A library like any other: no plug-in at all.
extern "C" __attribute__((visibility("default"))) int kraSamplePlain()
{
    return 1;
}
