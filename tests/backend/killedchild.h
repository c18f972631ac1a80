// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <vector>

/// Does the work in a copy of this process, which is stopped at its n-th stop: before and after each of its system
/// calls there is one. Returns whether it was stopped; not so when it had ended before. There must be no second thread.
///
/// It is killed there:
bool killAtStop(int n, const std::function<void()> &work);
/// It goes on, to its end, after something else was done here:
bool interruptAtStop(int n, const std::function<void()> &work, const std::function<void()> &interruption);

/// Does all works at the same time, each in a copy of this process, and waits for their ends.
void doAtOnce(const std::vector<std::function<void()>> &works);
