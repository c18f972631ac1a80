// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notefile.h"

#include <QDir>
#include <QStandardPaths>

QString noteFileName()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    return folder.filePath(QStringLiteral("kra-sample-note.txt"));
}
