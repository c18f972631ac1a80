// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class QSpinBox;

namespace PluralSuffix
{
/// Keeps the spin box's suffix in the plural of its value. Both texts are kept, not copied: the context and the source
/// text of the translation.
void keepFor(QSpinBox *spinBox, const char *context, const char *suffix);
} // namespace PluralSuffix
