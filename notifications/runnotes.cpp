// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "runnotes.h"

#include "cronsyntax.h"
#include "warnquotacommand.h"
#include "wholefile.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace
{
using WarnquotaCommand::Loss;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(NotificationsWidget)
};

constexpr int longestShownText = 300;

QString shortened(const QString &text)
{
    return text.size() <= longestShownText ? text : text.left(longestShownText) + QChar(0x2026);
}

bool isForeign(const WarnquotaJob &run)
{
    return !run.job.asRead.isEmpty() && run.job.user != QLatin1String("root");
}

Loss lossOf(const WarnquotaJob &run)
{
    return run.job.asRead.isEmpty() ? Loss::None : WarnquotaCommand::lossOf(run.job);
}

QString fieldText(CronSyntax::Field field)
{
    switch (field) {
    case CronSyntax::Minute:
        return Texts::tr("the minute (0 to 59)");
    case CronSyntax::Hour:
        return Texts::tr("the hour (0 to 23)");
    case CronSyntax::DayOfMonth:
        return Texts::tr("the day of the month (1 to 31)");
    case CronSyntax::Month:
        return Texts::tr("the month (1 to 12)");
    case CronSyntax::DayOfWeek:
        return Texts::tr("the day of the week (0 to 7)");
    case CronSyntax::None:
        break;
    }
    return {};
}

QString fileNote(const QString &path, const QString &user, const NotificationNotes &notes)
{
    if (!path.startsWith(QLatin1Char('/')))
        return Texts::tr("cron looks for %1 from the home folder of %2: its text is neither shown nor written here.")
            .arg(path, user);
    if (!WarnquotaCommand::isPlainPath(path))
        return Texts::tr("The shell that cron starts may read %1 as another path: its text is not edited here.")
            .arg(path);
    if (notes.filesWithoutFolder.contains(path))
        return Texts::tr("The folder %1 does not exist: make it before you edit the text of %2.")
            .arg(QFileInfo(path).path(), path);
    if (notes.missingFiles.contains(path))
        return Texts::tr("%1 does not exist: it is made when its text is edited and applied.").arg(path);
    return {};
}
} // namespace

QStringList RunNotes::of(const WarnquotaJob &run, const NotificationNotes &notes)
{
    QStringList texts;
    if (isForeign(run))
        texts += Texts::tr("This task runs as %1. With changes applied it runs as root.").arg(run.job.user);
    const Loss loss = lossOf(run);
    if (loss == Loss::Program)
        texts += Texts::tr("This task is not a run of warnquota: %1. With changes applied it is rewritten as a run of "
                           "warnquota.")
                     .arg(shortened(run.job.command));
    else if (loss == Loss::Detail)
        texts += Texts::tr("The line of this task says more than this page can: %1. With changes applied it is "
                           "rewritten as: %2.")
                     .arg(shortened(WholeFile::text(run.job.asRead)), shortened(WarnquotaCommand::build(run).command));
    QStringList paths = {run.config, run.adminsFile, run.quotaTab};
    paths.removeDuplicates();
    for (const QString &path : qAsConst(paths))
        if (const QString note = fileNote(shortened(path), run.job.user, notes); !path.isEmpty() && !note.isEmpty())
            texts += note;
    return texts;
}

QString RunNotes::question(const WarnquotaJob &before, const WarnquotaJob &after)
{
    const Loss loss = lossOf(before);
    if (before == after || (loss == Loss::None && !isForeign(before)))
        return {};
    //: %1 and %2 are lines of the cron file.
    QStringList texts(Texts::tr("This line of the cron file\n%1\nis replaced by\n%2")
                          .arg(shortened(WholeFile::text(before.job.asRead)),
                               shortened(WholeFile::text(WarnquotaCommand::line(after)))));
    if (isForeign(before))
        texts += Texts::tr("It ran as %1 and will run as root, with the mail command that %2 names.")
                     .arg(before.job.user, shortened(after.config));
    if (loss == Loss::Program)
        texts += Texts::tr("It ran another program and will send quota warnings.");
    texts += Texts::tr("The file as it was is kept in /var/backups. Apply this?");
    return texts.join(QStringLiteral("\n\n"));
}

QString RunNotes::refusal(const QString &name, const CronSchedule &schedule)
{
    const CronSyntax::Field refused = schedule.minute.isEmpty() ? CronSyntax::None : CronSyntax::refusedField(schedule);
    if (refused == CronSyntax::None)
        return {};
    //: %1 is a field of the line: "the hour (0 to 23)", %2 the name of a task
    return Texts::tr("cron refuses %1 of task %2, and with it all tasks.").arg(fieldText(refused), name);
}
