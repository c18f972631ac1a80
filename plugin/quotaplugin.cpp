// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotaplugin.h"

#include "localquotamodules.h"
#include "quotageneralmodule.h"

#include <appexception.h>
#include <process.h>

QuotaPlugin::QuotaPlugin(QObject *parent)
    : Plugin(parent)
{
    setTitle(tr("LocalQuotaPlugin"));
    setDescription(tr("Support quota for users and groups"));
    appendModule(new QuotaGeneralModule(this));
    appendModule(new LocalUserQuotaModule(this));
    appendModule(new LocalGroupQuotaModule(this));
}

bool QuotaPlugin::isValid()
{
    try {
        Process::simpleStart(QStringLiteral("modinfo"), {QStringLiteral("quota_v2")}, true);
    } catch (const AppException &exception) {
        setWhyInvalid(tr("the kernel has no module quota_v2, or it could not be asked for it (%1).")
                          .arg(QString::fromUtf8(exception.what())));
        return false;
    }
    return true;
}
