// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notificationsmanager.h"

#include "crontabreader.h"
#include "dailyrun.h"
#include "warnquotacommand.h"
#include "wholefile.h"

#include <backupcopy.h>
#include <filereplacement.h>

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace
{
/// Somebody who saves a file that often does so without end.
constexpr int MostAttempts = 20;

FileReplacement notOpened(const QString &reason)
{
    return {FileReplacement::End::NotOpened, reason};
}

QString cronFile()
{
    return QStringLiteral("/etc/cron.d/warnquota");
}

QString reasonText(const QString &path, const QString &reason)
{
    return QStringLiteral("%1: %2").arg(path, reason);
}

/// Where a relative path leads to is for cron to say, not for the folder that this process happens to be in.
std::optional<QByteArray> readAbsolute(const QString &path)
{
    return QDir::isAbsolutePath(path) ? WholeFile::read(path) : std::nullopt;
}

/// Whether a line of a table can go without a trace: it says nothing, or the writer says it too.
bool isHead(const QByteArray &line)
{
    const QString text = WholeFile::text(line);
    return text.trimmed().isEmpty() || CrontabReader::headLines().contains(text);
}

bool isJob(const QByteArray &line)
{
    return !CrontabReader::jobsIn(line).isEmpty();
}

/// The lines that are no job. They are not written again.
QStringList droppedLines(const QByteArray &table)
{
    QStringList dropped;
    const QByteArrayList lines = table.split('\n');
    for (const QByteArray &line : lines)
        if (!isHead(line) && !isJob(line))
            dropped.append(WholeFile::text(line));
    return dropped;
}

/// Whether a table holds a line that is not among the new ones and says more than the page that replaces it could show.
bool losesLines(const QByteArray &table, const QByteArrayList &newLines)
{
    const QByteArrayList lines = table.split('\n');
    const QSet<QByteArray> kept(newLines.cbegin(), newLines.cend());
    return std::any_of(lines.cbegin(), lines.cend(), [&kept](const QByteArray &line) {
        if (isHead(line) || kept.contains(line))
            return false;
        const QList<CronJob> job = CrontabReader::jobsIn(line);
        return job.isEmpty() || job.first().user != QLatin1String("root") ||
               WarnquotaCommand::lossOf(job.first()) != WarnquotaCommand::Loss::None;
    });
}

/// Whether a line that stays runs another program, which a search path finds that the table did not have before.
bool losesPath(const QByteArray &table, const QByteArrayList &newLines)
{
    const QByteArrayList lines = table.split('\n');
    if (lines.contains(CrontabReader::headLines().last().toUtf8()))
        return false;
    return std::any_of(lines.cbegin(), lines.cend(), [&newLines](const QByteArray &line) {
        const QList<CronJob> job = CrontabReader::jobsIn(line);
        return newLines.contains(line) && !job.isEmpty() &&
               WarnquotaCommand::lossOf(job.first()) == WarnquotaCommand::Loss::Program;
    });
}

QByteArrayList linesOf(const QList<WarnquotaJob> &runs)
{
    QByteArrayList lines;
    for (const WarnquotaJob &run : runs)
        lines.append(WarnquotaCommand::line(run));
    return lines;
}

} // namespace

bool NotificationsManager::areRunsEdited(const NotificationsData &data)
{
    if (!data.asRead)
        return true;
    QByteArrayList read;
    const QList<CronJob> jobs = CrontabReader::jobsIn(data.asRead->table);
    for (const CronJob &job : jobs)
        read.append(job.asRead);
    QByteArrayList wanted = linesOf(data.jobs);
    std::sort(read.begin(), read.end());
    std::sort(wanted.begin(), wanted.end());
    return read != wanted;
}

std::unique_ptr<NotificationsData> NotificationsManager::read()
{
    auto data = std::make_unique<NotificationsData>();
    int failures = 0;
    const auto counting = connect(this, &NotificationsManager::error, this, [&failures] { ++failures; });
    CrontabReader reader;
    connect(&reader, &CrontabReader::error, this, &NotificationsManager::error);
    const QByteArray table = reader.readTable(cronFile()).value_or(QByteArray());

    const auto readOnce = [&](const QString &path) {
        if (data->files.contains(path))
            return;
        data->files.insert(path, readFile(path));
        const QFileInfo file(path);
        if (!file.isAbsolute() || file.exists())
            return;
        data->notes.missingFiles.append(path);
        if (!QFileInfo(file.path()).isDir())
            data->notes.filesWithoutFolder.append(path);
    };
    const QList<CronJob> cronJobs = CrontabReader::jobsIn(table);
    for (const CronJob &cronJob : cronJobs) {
        const WarnquotaJob run = WarnquotaCommand::parse(cronJob);
        data->jobs.append(run);
        for (const QString &path : {run.quotaTab, run.config, run.adminsFile})
            readOnce(path);
    }
    const QStringList defaultFiles = WarnquotaCommand::defaultFiles();
    for (const QString &path : defaultFiles)
        readOnce(path);

    data->asRead = {table, data->files};
    const QFileInfo file(cronFile());
    data->notes.isTableMissing = !file.exists();
    data->notes.isCronMissing = !QFileInfo(file.path()).isDir();
    data->notes.droppedLines = droppedLines(table);
    data->notes.hasDailyRun = DailyRun::isOn();
    disconnect(counting);
    data->notes.isNothingBroken = failures == data->notes.missingFiles.size() + (data->notes.isTableMissing ? 1 : 0);
    return data;
}

QStringList NotificationsManager::write(const NotificationsData &data)
{
    QStringList written;
    if (areRunsEdited(data) &&
        writeCronJobs(data.jobs, data.asRead ? std::make_optional(data.asRead->table) : std::nullopt))
        written += cronFile();
    for (auto file = data.files.cbegin(); file != data.files.cend(); ++file) {
        const std::optional<QString> asRead =
            data.asRead ? std::make_optional(data.asRead->files.value(file.key())) : std::nullopt;
        if (file.value() != asRead && writeFile(file.key(), file.value(), asRead))
            written += file.key();
    }
    return written;
}

bool NotificationsManager::writeCronJobs(const QList<WarnquotaJob> &runs, const std::optional<QByteArray> &asRead)
{
    const QByteArrayList lines = linesOf(runs);
    CrontabReader reader;
    connect(&reader, &CrontabReader::error, this, &NotificationsManager::error);
    return replaceLookedAt(
        cronFile(), [&](const QByteArray &table) { return keepTable(table, lines, asRead); },
        [&](const QByteArray &table) { return reader.writeLines(cronFile(), lines, table); });
}

QString NotificationsManager::readFile(const QString &path)
{
    const std::optional<QByteArray> bytes = readAbsolute(path);
    if (!bytes) {
        Q_EMIT error(tr("Can'n open %1 file").arg(path));
        return {};
    }
    return WholeFile::text(*bytes);
}

bool NotificationsManager::writeFile(const QString &path, const QString &text, const std::optional<QString> &asRead)
{
    // What cannot be read was shown as no text, and no text does not take its place.
    if (QFileInfo::exists(path) && WholeFile::text(readAbsolute(path).value_or(QByteArray())) == text)
        return true;
    return replaceLookedAt(
        path, [&](const QByteArray &bytes) { return keepText(path, bytes, asRead); },
        [&](const QByteArray &bytes) {
            FileReplacement written = QDir::isAbsolutePath(path) ? replaceFile(path, text.toUtf8(), bytes)
                                                                 : notOpened(tr("not an absolute path"));
            if (!written.succeeded() && written.end != FileReplacement::End::ChangedMeanwhile)
                Q_EMIT error(tr("Can'n create %1 file").arg(path));
            return written;
        });
}

bool NotificationsManager::replaceLookedAt(const QString &path, const std::function<bool(const QByteArray &)> &keep,
                                           const std::function<FileReplacement(const QByteArray &)> &replace)
{
    for (int attempt = 0; attempt < MostAttempts; ++attempt) {
        if (!isReplaceable(path))
            return false;
        const std::optional<QByteArray> bytes = readAbsolute(path);
        if (bytes && !keep(*bytes))
            return false;
        const FileReplacement written = replace(bytes.value_or(QByteArray()));
        if (written.end != FileReplacement::End::ChangedMeanwhile) {
            if (!written.succeeded())
                Q_EMIT detail(reasonText(path, written.reason));
            return written.succeeded();
        }
    }
    Q_EMIT error(
        tr("%1 was left as it is: another program kept changing it; try again when that has ended.").arg(path));
    return false;
}

bool NotificationsManager::isReplaceable(const QString &path)
{
    const bool isKnown = !QFileInfo(path).isFile() || WholeFile::read(path);
    if (!isKnown)
        Q_EMIT error(tr("%1 was left as it is: what it holds cannot be read.").arg(path));
    return isKnown;
}

bool NotificationsManager::keepTable(const QByteArray &table, const QByteArrayList &newLines,
                                     const std::optional<QByteArray> &asRead)
{
    if (losesLines(table, newLines))
        return keep(cronFile(), table,
                    tr("%1 held lines that are not written again. The file as it was is kept as %2."),
                    tr("%1 was left as it is: it holds lines that are not written again, and no copy of it could be "
                       "made in /var/backups."));
    if (losesPath(table, newLines))
        return keep(cronFile(), table,
                    tr("%1 runs other programs than warnquota, which are looked for in /usr/sbin alone from now on "
                       "(PATH). The file as it was is kept as %2."),
                    tr("%1 was left as it is: the other programs that it runs would be looked for in /usr/sbin alone "
                       "(PATH), and no copy of it could be made in /var/backups."));
    return !asRead || *asRead == table || keepWhatOthersWrote(cronFile(), table);
}

bool NotificationsManager::keepText(const QString &path, const QByteArray &bytes, const std::optional<QString> &asRead)
{
    const QString text = WholeFile::text(bytes);
    if (asRead && text != *asRead)
        return keepWhatOthersWrote(path, bytes);
    return text.toUtf8() == bytes ||
           keep(path, bytes, tr("%1 held bytes that are no text in UTF-8. The file as it was is kept as %2."),
                tr("%1 was left as it is: it holds bytes that are no text in UTF-8, and no copy of it could be made in "
                   "/var/backups."));
}

bool NotificationsManager::keepWhatOthersWrote(const QString &path, const QByteArray &bytes)
{
    return keep(path, bytes, tr("%1 was changed by somebody else since it was read. The file as it was is kept as %2."),
                tr("%1 was left as it is: somebody else changed it since it was read, and no copy of it could be made "
                   "in /var/backups."));
}

bool NotificationsManager::keep(const QString &path, const QByteArray &bytes, const QString &keptText,
                                const QString &failedText)
{
    const QString copy = BackupCopy::make(path, bytes);
    if (copy.isEmpty())
        Q_EMIT error(failedText.arg(path));
    else
        Q_EMIT detail(keptText.arg(path, copy));
    return !copy.isEmpty();
}
