// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class QString;
class QWidget;

enum class ChangesAnswer
{
    Apply,
    Discard,
    Stay
};

/// Asks, over the window of `page`, what becomes of the changes on the page with that title. Returns when the
/// administrator has answered.
ChangesAnswer askAboutChanges(QWidget *page, const QString &title);
