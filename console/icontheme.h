// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// Makes the console's own icons answer for every name that the machine's icon theme does not have.
/// Icons that were looked up before do not change.
void installIconTheme();
