// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

class QAbstractSpinBox;
class QCheckBox;
class QComboBox;

/// Reads widgets, and fills them in by their keys.
namespace Form
{
QStringList choices(const QComboBox *box);
/// False where it is not listed or the box cannot be used now.
bool choose(QComboBox *box, const QString &text);
/// False where it stays as it was.
bool check(QCheckBox *box, bool isChecked);
/// Replaces what stands there, and leaves the box. False where the box cannot be used now.
bool type(QAbstractSpinBox *box, const QString &text);
} // namespace Form
