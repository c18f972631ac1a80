// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

class QStatusBar;
class QUrl;

/// While it lives, root's console starts no browser for a link, "About Qt" among them: it shows the address.
class BrowserGuard : public QObject
{
    Q_OBJECT

public:
    explicit BrowserGuard(QStatusBar *shownIn);
    ~BrowserGuard() override;

public Q_SLOTS:
    void showAddress(const QUrl &address);

private:
    QStatusBar *_shownIn;
};
