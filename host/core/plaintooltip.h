// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"

#include <QString>

/// A text as a tool tip that shows it letter for letter. Tool tips take what looks like markup for markup, and much of
/// what is shown here is written by others: users choose their full names, programs print what they like.
KRA_EXPORT QString plainToolTip(const QString &text);
