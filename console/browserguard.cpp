// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "browserguard.h"

#include <QDesktopServices>
#include <QStatusBar>
#include <QUrl>

#include <unistd.h>

namespace
{
constexpr const char *schemes[] = {"http", "https", "ftp", "mailto", "file"};
}

BrowserGuard::BrowserGuard(QStatusBar *shownIn)
    : QObject(shownIn)
    , _shownIn(shownIn)
{
    if (geteuid() != 0)
        return;
    for (const char *scheme : schemes)
        QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "showAddress");
}

BrowserGuard::~BrowserGuard()
{
    for (const char *scheme : schemes)
        QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
}

void BrowserGuard::showAddress(const QUrl &address)
{
    _shownIn->showMessage(
        tr("No browser is started with administrator rights. The address is %1").arg(address.toDisplayString()));
}
