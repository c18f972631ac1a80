// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugin.h"

Plugin::Plugin(QObject *parent)
    : QObject(parent)
{}

Plugin::~Plugin() = default;

bool Plugin::isValid()
{
    return true;
}
