// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotaprograms.h"

#include "programdetail.h"
#include "systemnames.h"

namespace
{

constexpr int ProgramWait = 30000; // milliseconds

QString kindSwitch(QuotaKind kind)
{
    return kind == GroupQuota ? QStringLiteral("-g") : QStringLiteral("-u");
}

QStringList countArguments(const QString &device, QuotaKind kind)
{
    return {kindSwitch(kind) + QLatin1Char('m'), device};
}

QString complaintOf(const QString &program, const QStringList &arguments, const ProcessResult &result)
{
    if (result.succeeded())
        return {};
    const QString complaint = programComplaint(result).trimmed();
    return complaint.isEmpty() ? Process::describe(program, arguments, result) : complaint;
}

} // namespace

QuotaPrograms::QuotaPrograms(QObject *parent)
    : QObject(parent)
{}

ProgramStep QuotaPrograms::remount(const QString &device)
{
    const QString program = SystemNames::Mount;
    const QStringList arguments{device, QStringLiteral("-o"), QStringLiteral("remount")};
    const ProcessResult result = run(program, arguments, Process::NoLimit, Process::NoLimit, Process::Messages::AsUser);
    return {result.succeeded(), complaintOf(program, arguments, result)};
}

ProgramStep QuotaPrograms::createQuotaFiles(const QString &device, int type)
{
    if (type != UserQuota && type != GroupQuota) {
        Q_EMIT error(tr("Unknown type option for createQuotaFiles"));
        return {};
    }
    const QString program = SystemNames::Quotacheck;
    const QStringList arguments = countArguments(device, static_cast<QuotaKind>(type));
    const ProcessResult result = run(program, arguments, ProgramWait, Process::NoLimit, Process::Messages::AsUser);
    if (result.end == ProcessResult::End::NotStarted) {
        Q_EMIT error(tr("Process %1 %2 can not started").arg(program, arguments.join(QLatin1Char(' '))));
        return {};
    }
    // Done either way: whether the file is there now is asked of the file.
    return {true, complaintOf(program, arguments, result)};
}

QString QuotaPrograms::countCommand(const QString &device, QuotaKind kind)
{
    return SystemNames::Quotacheck + QLatin1Char(' ') + countArguments(device, kind).join(QLatin1Char(' '));
}

bool QuotaPrograms::runQuotaOnOff(const QString &device, QuotaKind kind, bool on)
{
    const ProgramStep step = tryQuotaOnOff(device, kind, on);
    if (!step.isDone)
        Q_EMIT error(step.complaint);
    return step.isDone;
}

ProgramStep QuotaPrograms::tryQuotaOnOff(const QString &device, QuotaKind kind, bool on)
{
    const QString program = on ? SystemNames::Quotaon : SystemNames::Quotaoff;
    const QStringList arguments{kindSwitch(kind), device};
    const ProcessResult result = run(program, arguments, ProgramWait, ProgramWait, Process::Messages::InC);
    if (result.end == ProcessResult::End::NotStarted)
        return {false, tr("Process %1 can not started").arg(program)};
    if (result.end == ProcessResult::End::TimedOut)
        return {false, tr("Process %1 can not finished").arg(program)};
    // "quotaon: using FILE on DEVICE" is how it says that the quotas were on before.
    if (!result.standardError.isEmpty() && !result.standardError.contains(": using"))
        return {false, tr("Process %1 %2 return error %3")
                           .arg(program, arguments.join(QLatin1Char(' ')), programComplaint(result))};
    return {true, QString()};
}

ProcessResult QuotaPrograms::run(const QString &program, const QStringList &arguments, int startWait, int finishWait,
                                 Process::Messages messages)
{
    ProcessResult result = Process::run(program, arguments, startWait, finishWait, messages);
    Q_EMIT detail(programDetail(program, arguments, result));
    return result;
}
