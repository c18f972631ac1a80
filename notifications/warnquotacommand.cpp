// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "warnquotacommand.h"

#include <QRegularExpression>

namespace
{
const QLatin1String program("warnquota");

/// An option that names a file, in both its spellings.
struct FileOption
{
    QString WarnquotaJob::*path;
    QLatin1String shortName;
    QLatin1String longName; ///< with the equals sign
};

const FileOption fileOptions[] = {
    {&WarnquotaJob::quotaTab, QLatin1String("-q"), QLatin1String("--quota-tab=")},
    {&WarnquotaJob::config, QLatin1String("-c"), QLatin1String("--config=")},
    {&WarnquotaJob::adminsFile, QLatin1String("-a"), QLatin1String("--admins-file=")},
};

QStringList tokensOf(const QString &command)
{
    return command.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

bool takeFileOption(WarnquotaJob &job, const QString &token, const QStringList &tokens)
{
    for (const FileOption &option : fileOptions) {
        if (token == option.shortName) {
            job.*option.path = tokens.value(tokens.indexOf(token) + 1);
            return true;
        }
        if (token.contains(option.longName)) {
            job.*option.path = QString(token).remove(option.longName);
            return true;
        }
    }
    return false;
}

void useDefault(QString &path, const QString &byDefault)
{
    if (path.isEmpty())
        path = byDefault;
}

void addFileOption(QStringList &tokens, QLatin1String option, const QString &path, const QString &byDefault)
{
    if (!path.isEmpty() && path != byDefault)
        tokens.append(option + path);
}
} // namespace

QString WarnquotaCommand::defaultConfig()
{
    return QStringLiteral("/etc/warnquota.conf");
}

QString WarnquotaCommand::defaultQuotaTab()
{
    return QStringLiteral("/etc/quotatab");
}

QString WarnquotaCommand::defaultAdminsFile()
{
    return QStringLiteral("/etc/quotagrpadmins");
}

QStringList WarnquotaCommand::defaultFiles()
{
    return {defaultConfig(), defaultQuotaTab(), defaultAdminsFile()};
}

WarnquotaJob WarnquotaCommand::parse(const CronJob &job)
{
    WarnquotaJob parsed;
    parsed.job = job;
    const QStringList tokens = tokensOf(job.command);
    for (const QString &token : tokens) {
        if (takeFileOption(parsed, token, tokens) || !token.startsWith(QLatin1Char('-')))
            continue;
        // Letters of long options count too: "--group" warns both.
        parsed.users = parsed.users || token.contains(QLatin1Char('u'));
        parsed.groups = parsed.groups || token.contains(QLatin1Char('g'));
    }
    parsed.users = parsed.users || !parsed.groups;
    useDefault(parsed.adminsFile, defaultAdminsFile());
    useDefault(parsed.config, defaultConfig());
    useDefault(parsed.quotaTab, defaultQuotaTab());
    return parsed;
}

CronJob WarnquotaCommand::build(const WarnquotaJob &job)
{
    QStringList tokens(program);
    if (job.users)
        tokens.append(QStringLiteral("-u"));
    if (job.groups)
        tokens.append(QStringLiteral("-g"));
    addFileOption(tokens, QLatin1String("--admins-file="), job.adminsFile, defaultAdminsFile());
    addFileOption(tokens, QLatin1String("--quota-tab="), job.quotaTab, defaultQuotaTab());
    addFileOption(tokens, QLatin1String("--config="), job.config, defaultConfig());
    return {job.job.schedule, job.job.user, tokens.join(QLatin1Char(' ')), job.job.comment};
}

bool WarnquotaCommand::isKept(const QString &command)
{
    // A path in which an option is spelled out is read as that option.
    static const QRegularExpression pattern(
        QStringLiteral(R"(^(\S*/)?warnquota( (-[ug]+|(-[qca] |--(quota-tab|config|admins-file)=))"
                       R"((?!\S*--(quota-tab|config|admins-file)=)\S+))*$)"));
    return pattern.match(tokensOf(command).join(QLatin1Char(' '))).hasMatch();
}
