// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

/// Does the work in a copy of this process, which is killed at its n-th stop: before and after each of its system calls
/// there is one. Returns whether it was killed; not so when it had ended before. There must be no second thread.
bool killAtStop(int n, const std::function<void()> &work);
