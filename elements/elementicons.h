// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QIcon>

/// The theme icons of the elements. Made once, when the application object and this code are both there, and shared by
/// all elements; null before. User-interface thread only.
struct ElementIcons
{
    QIcon quota;
    QIcon notifications;
    QIcon users;
    QIcon groups;
    QIcon user;
    QIcon group;

    static const ElementIcons &instance();
};
