// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCoreApplication>
#include <QString>

/// What an administrator can edit of one account on one device, in words, as part of a sentence.
class LimitName
{
    Q_DECLARE_TR_FUNCTIONS(LimitName)

public:
    static QString softSpace() { return tr("soft limit on space"); }
    static QString hardSpace() { return tr("hard limit on space"); }
    static QString softFiles() { return tr("soft limit on files"); }
    static QString hardFiles() { return tr("hard limit on files"); }
    static QString spaceTime() { return tr("time to force of space"); }
    static QString filesTime() { return tr("time to force of files"); }
};
