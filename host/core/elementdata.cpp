// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "elementdata.h"

ElementData::~ElementData() = default;

void ElementData::configureParams() {}

ChangeDisplayElementData::ChangeDisplayElementData(int displayType)
    : _displayType(displayType)
{}
