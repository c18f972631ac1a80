// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notificationsdata.h"

NotificationsData::~NotificationsData() = default;
