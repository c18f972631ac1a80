// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "warnquotacommand.h"

#include "crontabreader.h"
#include "wholefile.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>
#include <optional>

namespace
{
const QLatin1String program("warnquota");

/// An option that names a file, in both its spellings, and what it is where it is not given.
struct FileOption
{
    QString WarnquotaJob::*path;
    QLatin1String shortName;
    QLatin1String longName; ///< with the equals sign
    QString (*byDefault)();
};

const FileOption quotaTabOption = {&WarnquotaJob::quotaTab, QLatin1String("-q"), QLatin1String("--quota-tab="),
                                   &WarnquotaCommand::defaultQuotaTab};
const FileOption configOption = {&WarnquotaJob::config, QLatin1String("-c"), QLatin1String("--config="),
                                 &WarnquotaCommand::defaultConfig};
const FileOption adminsFileOption = {&WarnquotaJob::adminsFile, QLatin1String("-a"), QLatin1String("--admins-file="),
                                     &WarnquotaCommand::defaultAdminsFile};
const FileOption *const readOptions[] = {&quotaTabOption, &configOption, &adminsFileOption};
const FileOption *const writtenOptions[] = {&adminsFileOption, &quotaTabOption, &configOption};

QStringList tokensOf(const QString &command)
{
    return command.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

bool takeFileOption(WarnquotaJob &job, const QString &token, const QStringList &tokens)
{
    for (const FileOption *option : readOptions) {
        if (token == option->shortName) {
            job.*option->path = tokens.value(tokens.indexOf(token) + 1);
            return true;
        }
        if (token.contains(option->longName)) {
            job.*option->path = QString(token).remove(option->longName);
            return true;
        }
    }
    return false;
}

/// Whether cron and the shell hand a word on as it stands, and no program takes it for an option.
bool isPlainWord(const QString &word)
{
    static const QRegularExpression pattern(QStringLiteral(R"(^(?!-)[\w./:@+,=-]+\z)"),
                                            QRegularExpression::UseUnicodePropertiesOption);
    return pattern.match(word).hasMatch();
}

/// Takes the options as the program itself does. None where they say something that a WarnquotaJob cannot hold.
std::optional<WarnquotaJob> strictlyParsed(QStringList options)
{
    static const QRegularExpression flags(QStringLiteral("^-[ug]+$"));
    WarnquotaJob run;
    while (!options.isEmpty()) {
        const QString token = options.takeFirst();
        if (flags.match(token).hasMatch()) {
            run.users = run.users || token.contains(QLatin1Char('u'));
            run.groups = run.groups || token.contains(QLatin1Char('g'));
            continue;
        }
        const auto *const found =
            std::find_if(std::begin(readOptions), std::end(readOptions), [&token](const FileOption *option) {
                return token == option->shortName || token.startsWith(option->longName);
            });
        if (found == std::end(readOptions) || !(run.*(*found)->path).isEmpty())
            return std::nullopt;
        QString &path = run.*(*found)->path;
        if (token != (*found)->shortName)
            path = token.mid((*found)->longName.size());
        else if (!options.isEmpty())
            path = options.takeFirst();
        if (!isPlainWord(path))
            return std::nullopt;
    }
    return run;
}

WarnquotaJob withDefaults(WarnquotaJob run)
{
    run.users = run.users || !run.groups;
    for (const FileOption *option : readOptions)
        if ((run.*option->path).isEmpty())
            run.*option->path = option->byDefault();
    return run;
}

/// Whether a "#" belongs to a word of the line, where the shell takes it for what it is, and not for a comment.
bool hasSignInAWord(const QString &line)
{
    static const QRegularExpression word(QStringLiteral(R"(^[^#]*[^\s#]#)"));
    return word.match(line).hasMatch();
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
    WarnquotaJob run;
    run.job = job;
    const QStringList tokens = tokensOf(job.command);
    for (const QString &token : tokens) {
        if (takeFileOption(run, token, tokens) || !token.startsWith(QLatin1Char('-')))
            continue;
        // Letters of long options count too: "--group" warns both.
        run.users = run.users || token.contains(QLatin1Char('u'));
        run.groups = run.groups || token.contains(QLatin1Char('g'));
    }
    return withDefaults(run);
}

CronJob WarnquotaCommand::build(const WarnquotaJob &run)
{
    QStringList tokens(program);
    if (run.users)
        tokens.append(QStringLiteral("-u"));
    if (run.groups)
        tokens.append(QStringLiteral("-g"));
    for (const FileOption *option : writtenOptions) {
        const QString &path = run.*option->path;
        if (!path.isEmpty() && path != option->byDefault())
            tokens.append(option->longName + path);
    }
    return {run.job.schedule, run.job.user, tokens.join(QLatin1Char(' ')), run.job.comment};
}

bool WarnquotaCommand::isAsRead(const WarnquotaJob &run)
{
    return !run.job.asRead.isEmpty() && parse(CrontabReader::parseJob(WholeFile::text(run.job.asRead))) == run;
}

QByteArray WarnquotaCommand::line(const WarnquotaJob &run)
{
    return isAsRead(run) ? run.job.asRead : CrontabReader::formatJob(build(run)).toUtf8();
}

WarnquotaCommand::Loss WarnquotaCommand::lossOf(const CronJob &job)
{
    static const QRegularExpression anyWarnquota(QStringLiteral(R"(^(\S*/)?warnquota$)"));
    QStringList tokens = tokensOf(job.command);
    const QString called = tokens.isEmpty() ? QString() : tokens.takeFirst();
    if (!anyWarnquota.match(called).hasMatch())
        return Loss::Program;
    const QString line = WholeFile::text(job.asRead);
    if (called != program || hasSignInAWord(line) || line.toUtf8() != job.asRead)
        return Loss::Detail;
    std::optional<WarnquotaJob> meant = strictlyParsed(tokens);
    if (meant)
        meant->job = job;
    return meant && withDefaults(*meant) == parse(job) ? Loss::None : Loss::Detail;
}

bool WarnquotaCommand::isPlainPath(const QString &path)
{
    return path.startsWith(QLatin1Char('/')) && isPlainWord(path);
}
