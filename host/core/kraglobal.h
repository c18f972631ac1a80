// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

/// Marks what the shared library kra-common offers to plug-ins and consoles.
#if defined(KRA_BUILDING_LIBRARY)
#define KRA_EXPORT Q_DECL_EXPORT
#else
#define KRA_EXPORT Q_DECL_IMPORT
#endif
