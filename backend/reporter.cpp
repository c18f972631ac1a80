// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reporter.h"

Reporter::Once::Once(Reporter &reporter, QStringList &said)
    : _reporter(reporter)
    , _before(reporter._said)
{
    reporter._said = &said;
}

Reporter::Once::~Once()
{
    _reporter._said = _before;
}

void Reporter::error(const QString &message)
{
    if (_said) {
        if (_said->contains(message))
            return;
        _said->append(message);
    }
    passError(message);
}
