// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class QComboBox;
class QString;
class QStringList;

namespace DevicesBox
{
/// Fills a box with devices and chooses one of them: the wanted one, else the first. Without any signal: who fills a
/// box shows what is chosen whether or not it is another one.
void fill(QComboBox *box, const QStringList &devices, const QString &wanted);
} // namespace DevicesBox
