// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotactlmessages.h"

#include "reporter.h"

#include <QCoreApplication>

#include <array>
#include <cerrno>

namespace
{

using Messages = std::array<const char *, ENOSYS + 1>;

constexpr const char *Unknown = QT_TRANSLATE_NOOP("QuotaCtl", "Unknown error while executing quotactl");

constexpr Messages buildMessages()
{
    Messages texts = {};
    for (const char *&text : texts)
        text = Unknown;
    texts[EPERM] = QT_TRANSLATE_NOOP("QuotaCtl", "The caller does not have the necessary rights (CAP_SYS_ADMIN) to "
                                                 "perform the specified operation");
    texts[ENOENT] = QT_TRANSLATE_NOOP("QuotaCtl", "File specified in special or addr not exist");
    texts[ESRCH] =
        QT_TRANSLATE_NOOP("QuotaCtl", "No disk map was found for the specified user. Quota turned off in file system");
    texts[EACCES] = QT_TRANSLATE_NOOP(
        "QuotaCtl", "Quota file specified in addr exist but is not a perpetual file or quota file specified in addr "
                    "exist but is not on the file system of the specified in special");
    texts[EFAULT] = QT_TRANSLATE_NOOP("QuotaCtl", "Wrong value addr or special");
    texts[ENOTBLK] = QT_TRANSLATE_NOOP("QuotaCtl", "Value special does not indicate on block device");
    texts[EBUSY] =
        QT_TRANSLATE_NOOP("QuotaCtl", "Attemp to execut Q_QUOTAON but another start is already in progress Q_QUOTAON");
    texts[EINVAL] = QT_TRANSLATE_NOOP("QuotaCtl", "Wrong value cmd or type");
    texts[ENOSYS] = QT_TRANSLATE_NOOP("QuotaCtl", "Core assembled with parameter turned off CONFIG_QUOTA");
    return texts;
}

constexpr Messages Texts = buildMessages();

} // namespace

QString quotaCtlMessage(int errorNumber)
{
    const bool listed = errorNumber >= 0 && errorNumber < static_cast<int>(Texts.size());
    return QCoreApplication::translate("QuotaCtl", listed ? Texts[static_cast<std::size_t>(errorNumber)] : Unknown);
}

QStringList quotaCtlMessages(const QString &device, int errorNumber)
{
    return {quotaCtlMessage(errorNumber), QStringLiteral("%1: %2").arg(device, qt_error_string(errorNumber))};
}

void reportQuotaCtlFailure(Reporter &reporter, const QString &device, int errorNumber)
{
    const QStringList lines = quotaCtlMessages(device, errorNumber);
    for (const QString &line : lines)
        reporter.error(line);
}
