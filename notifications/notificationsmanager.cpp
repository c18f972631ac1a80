// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notificationsmanager.h"

#include "crontable.h"
#include "crontabreader.h"
#include "dailyrun.h"
#include "warnquotacommand.h"
#include "wholefile.h"

#include <backupcopy.h>
#include <filereplacement.h>

#include <QFileInfo>

namespace
{
QString cronFile()
{
    return QStringLiteral("/etc/cron.d/warnquota");
}

QString reasonText(const QString &path, const QString &reason)
{
    return QStringLiteral("%1: %2").arg(path, reason);
}
} // namespace

std::unique_ptr<NotificationsData> NotificationsManager::read()
{
    auto data = std::make_unique<NotificationsData>();
    const QByteArray table = WholeFile::read(cronFile()).value_or(QByteArray());
    CrontabReader reader;
    connect(&reader, &CrontabReader::error, this, &NotificationsManager::error);

    const auto readOnce = [&](const QString &path) {
        if (!data->files.contains(path))
            data->files.insert(path, readFile(path));
    };
    const QList<CronJob> cronJobs = reader.readJobs(cronFile());
    for (const CronJob &cronJob : cronJobs) {
        const WarnquotaJob job = WarnquotaCommand::parse(cronJob);
        data->jobs.append(job);
        for (const QString &path : {job.quotaTab, job.config, job.adminsFile})
            readOnce(path);
    }
    const QStringList defaultFiles = WarnquotaCommand::defaultFiles();
    for (const QString &path : defaultFiles)
        readOnce(path);

    const QStringList dropped = CronTable::droppedLines(table);
    if (!dropped.isEmpty())
        data->params.insert(NotificationsData::droppedLinesKey(), dropped);
    data->params.insert(NotificationsData::dailyRunKey(), DailyRun::isOn());

    QVariantMap asRead{{cronFile(), WholeFile::text(table)}};
    for (auto file = data->files.cbegin(); file != data->files.cend(); ++file)
        asRead.insert(file.key(), file.value());
    data->params.insert(NotificationsData::asReadKey(), asRead);
    return data;
}

void NotificationsManager::write(const NotificationsData &data)
{
    const QVariantMap asRead = data.params.value(NotificationsData::asReadKey()).toMap();
    writeCronJobs(data.jobs, asRead);
    const bool tellsEdited = data.params.contains(NotificationsData::editedFilesKey());
    const QStringList edited = data.params.value(NotificationsData::editedFilesKey()).toStringList();
    for (auto file = data.files.cbegin(); file != data.files.cend(); ++file)
        if ((!tellsEdited || edited.contains(file.key()) || !QFileInfo::exists(file.key())) &&
            keepWhatOthersWrote(file.key(), asRead))
            writeFile(file.key(), file.value());
}

bool NotificationsManager::writeCronJobs(const QList<WarnquotaJob> &jobs, const QVariantMap &asRead)
{
    if (!keepTable(asRead))
        return false;
    CrontabReader reader;
    connect(&reader, &CrontabReader::error, this, &NotificationsManager::error);
    QList<CronJob> cronJobs;
    for (const WarnquotaJob &job : jobs)
        cronJobs.append(WarnquotaCommand::build(job));
    QString reason;
    const bool written = reader.writeJobs(cronFile(), cronJobs, &reason);
    if (!written)
        Q_EMIT detail(reasonText(cronFile(), reason));
    return written;
}

QString NotificationsManager::readFile(const QString &path)
{
    const std::optional<QByteArray> bytes = WholeFile::read(path);
    if (!bytes) {
        Q_EMIT error(tr("Can'n open %1 file").arg(path));
        return {};
    }
    return WholeFile::text(*bytes);
}

bool NotificationsManager::writeFile(const QString &path, const QString &text)
{
    // What cannot be read was shown as no text, and no text does not take its place.
    const QByteArray old = WholeFile::read(path).value_or(QByteArray());
    if (QFileInfo::exists(path) && WholeFile::text(old) == text)
        return true;
    if (WholeFile::text(old).toUtf8() != old && !keepBytes(path, old))
        return false;
    const FileReplacement written = replaceFile(path, text.toUtf8());
    if (!written.succeeded()) {
        Q_EMIT error(tr("Can'n create %1 file").arg(path));
        Q_EMIT detail(reasonText(path, written.reason));
    }
    return written.succeeded();
}

bool NotificationsManager::keepTable(const QVariantMap &asRead)
{
    const std::optional<QByteArray> table = WholeFile::read(cronFile());
    if (!table || CronTable::droppedLines(*table).isEmpty())
        return keepWhatOthersWrote(cronFile(), asRead);
    return keep(cronFile(), *table, tr("%1 held lines that are not written again. The file as it was is kept as %2."),
                tr("%1 was left as it is: it holds lines that are not written again, and no copy of it could be made "
                   "in /var/backups."));
}

bool NotificationsManager::keepWhatOthersWrote(const QString &path, const QVariantMap &asRead)
{
    const std::optional<QByteArray> bytes = WholeFile::read(path);
    if (!bytes || !asRead.contains(path) || asRead.value(path) == WholeFile::text(*bytes))
        return true;
    return keep(path, *bytes,
                tr("%1 was changed by somebody else since it was read. The file as it was is kept as %2."),
                tr("%1 was left as it is: somebody else changed it since it was read, and no copy of it could be made "
                   "in /var/backups."));
}

bool NotificationsManager::keepBytes(const QString &path, const QByteArray &bytes)
{
    return keep(path, bytes, tr("%1 held bytes that are no text in UTF-8. The file as it was is kept as %2."),
                tr("%1 was left as it is: it holds bytes that are no text in UTF-8, and no copy of it could be made in "
                   "/var/backups."));
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
