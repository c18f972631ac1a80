// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotaprograms.h"

#include "programdetail.h"
#include "systemnames.h"

#include <process.h>

#include <utility>

namespace
{

constexpr int wait = 30000; // milliseconds

QString kindSwitch(QuotaKind kind)
{
    return kind == GroupQuota ? QStringLiteral("-g") : QStringLiteral("-u");
}

} // namespace

QuotaPrograms::QuotaPrograms(QObject *parent)
    : QObject(parent)
{}

bool QuotaPrograms::remount(const QString &device)
{
    const QStringList arguments{device, QStringLiteral("-o"), QStringLiteral("remount")};
    return run(SystemNames::Mount, arguments, Process::NoLimit, Process::NoLimit, Output::IsShown).succeeded();
}

bool QuotaPrograms::createQuotaFiles(const QString &device, int type)
{
    if (type != UserQuota && type != GroupQuota) {
        Q_EMIT error(tr("Unknown type option for createQuotaFiles"));
        return false;
    }
    const QString program = SystemNames::Quotacheck;
    const QStringList arguments{kindSwitch(static_cast<QuotaKind>(type)) + QLatin1Char('m'), device};
    const ProcessResult result = run(program, arguments, wait, Process::NoLimit, Output::IsShown);
    if (result.end == ProcessResult::End::NotStarted) {
        Q_EMIT error(tr("Process %1 %2 can not started").arg(program, arguments.join(QLatin1Char(' '))));
        return false;
    }
    return true; // whether the file is there now is asked of the file
}

bool QuotaPrograms::runQuotaOnOff(const QString &device, QuotaKind kind, bool on)
{
    const QString program = on ? SystemNames::Quotaon : SystemNames::Quotaoff;
    const QStringList arguments{kindSwitch(kind), device};
    const ProcessResult result = run(program, arguments, wait, wait, Output::IsLookedAt);
    if (result.end == ProcessResult::End::NotStarted) {
        Q_EMIT error(tr("Process %1 can not started").arg(program));
        return false;
    }
    if (result.end == ProcessResult::End::TimedOut) {
        Q_EMIT error(tr("Process %1 can not finished").arg(program));
        return false;
    }
    // "quotaon: using FILE on DEVICE" is how it says that the quotas were on before.
    if (!result.standardError.isEmpty() && !result.standardError.contains(": using")) {
        Q_EMIT error(tr("Process %1 %2 return error %3")
                         .arg(program, arguments.join(QLatin1Char(' ')), programComplaint(result)));
        return false;
    }
    return true;
}

QStringList QuotaPrograms::takeComplaints()
{
    return std::exchange(_complaints, {});
}

ProcessResult QuotaPrograms::run(const QString &program, const QStringList &arguments, int startWait, int finishWait,
                                 Output output)
{
    const QString call = QStringList(QStringList{program} + arguments).join(QLatin1Char(' '));
    Q_EMIT detail(tr("Running %1").arg(call));
    const auto messages = output == Output::IsLookedAt ? Process::Messages::InC : Process::Messages::AsUser;
    ProcessResult result = Process::run(program, arguments, startWait, finishWait, messages);
    Q_EMIT detail(programDetail(program, arguments, result));
    const QString complaint = programComplaint(result).trimmed();
    if (output == Output::IsShown && !result.succeeded() && !complaint.isEmpty())
        _complaints.append(complaint);
    return result;
}
