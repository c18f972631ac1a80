// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// The file that the note is kept in, in the data folder of the account that the console runs as.
QString noteFileName();
