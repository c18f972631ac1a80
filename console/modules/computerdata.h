// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <elementdata.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QStringList>

/// What the computer's page tells of it.
class ComputerData : public ElementData
{
    Q_DECLARE_TR_FUNCTIONS(ComputerData)

public:
    QString hostName;
    QString system;
    QString kernel;
    QString architecture;
    QString processor;
    int processors = 0;
    QDateTime startedAt;        ///< local time; invalid when not known
    qint64 memory = 0;          ///< bytes; 0 when not known
    qint64 availableMemory = 0; ///< bytes
    QString user;               ///< that the console runs as
    bool administrator = false;

    /// Any thread.
    static ComputerData read(bool administrator);

    static QStringList labels();
    /// A text for each of the labels.
    QStringList values() const;
};
