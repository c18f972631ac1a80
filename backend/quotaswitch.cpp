// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "quotaswitch.h"

#include "devicetable.h"
#include "fstabwriter.h"
#include "kindreader.h"
#include "quotactl.h"
#include "quotaprograms.h"
#include "systemnames.h"

QuotaSwitch::QuotaSwitch(Tools tools, QObject *parent)
    : QObject(parent)
    , _tools(std::move(tools))
{}

bool QuotaSwitch::setGrace(const KindSettings &settings, QuotaKind kind)
{
    QuotaCtl kernel;
    connect(&kernel, qOverload<const QString &>(&QuotaCtl::error), this, &QuotaSwitch::error);
    dqinfo info = {};
    info.dqi_bgrace = static_cast<quint64>(settings.blockGrace.toSeconds());
    info.dqi_igrace = static_cast<quint64>(settings.inodeGrace.toSeconds());
    info.dqi_valid = IIF_BGRACE | IIF_IGRACE | IIF_FLAGS;
    return kernel.setInfo(settings.device, info, kind);
}

/// Goes on after a step that failed: each step looks at what is there before it acts, so that a later run picks up
/// where this one could not go on.
bool QuotaSwitch::applySettings(const KindSettings &settings, QuotaKind kind, Graces graces)
{
    const QString &device = settings.device;
    if (!settings.quotaOn) {
        switchOff(device, kind);
        return true;
    }
    const QString refusal = _tools.fstab.preview(device, kind, true).refusal;
    const FstabEdit edit = refusal.isEmpty() ? _tools.fstab.setOption(device, kind, true) : FstabEdit();
    if (!edit.isDone) {
        const bool isOn = _tools.kinds.isQuotaOn(device, kind);
        if (!isOn && !refusal.isEmpty())
            Q_EMIT error(refusal);
        else if (isOn && graces == Graces::Set) // for which the table does not matter
            setGrace(settings, kind);
        return true;
    }

    if (!remount(device, kind, edit).isDone && edit.hasWritten())
        return true;
    const QuotaFile file = _tools.kinds.quotaFile(device, kind);
    bool hasFile = file.exists();
    if (!hasFile && isMountedWithOption(device, kind)) {
        _tools.programs.createQuotaFiles(device, kind);
        hasFile = _tools.kinds.quotaFile(device, kind).exists();
    }
    if (!hasFile)
        return true;
    if (_tools.kinds.isQuotaOn(device, kind)) {
        if (graces == Graces::Set)
            setGrace(settings, kind);
    } else if (isMountedWithOption(device, kind) && _tools.programs.runQuotaOnOff(device, kind, true)) {
        tellOldCounts(device, kind, file);
    }
    return true;
}

/// Of a mounted device that does not tell whether quotas are on the option stays, and they with it. One that is not
/// mounted has none that are on.
void QuotaSwitch::switchOff(const QString &device, QuotaKind kind)
{
    const std::optional<bool> answer = _tools.kinds.askWhetherOn(device, kind);
    if (!answer && _tools.devices.isMounted(device))
        return;
    const bool isOn = answer == true;
    const FstabRewrite preview = _tools.fstab.preview(device, kind, false);
    if (!preview.refusal.isEmpty()) {
        if (isOn || preview.matters)
            Q_EMIT error(preview.refusal);
        return;
    }
    const bool isSwitchedOff = isOn && _tools.programs.runQuotaOnOff(device, kind, false);
    if (!_tools.fstab.setOption(device, kind, false).isDone && isSwitchedOff)
        Q_EMIT error(tr("%1: these quotas are off now, and come back at the next start unless the option %2 is taken "
                        "out of %3")
                         .arg(device, SystemNames::optionWord(kind), SystemNames::Fstab));
}

void QuotaSwitch::takeOption(const QString &device, QuotaKind kind)
{
    _tools.fstab.setOption(device, kind, false);
}

bool QuotaSwitch::switchOnDemand(const QString &device, QuotaKind kind)
{
    QStringList complaints;
    if (tryToSwitchOn(device, kind, complaints))
        return true;
    // Now they tell why: a full disk, a device that is not mounted.
    for (const QString &complaint : qAsConst(complaints))
        Q_EMIT error(complaint);
    return false;
}

/// `complaints`: what programs said whose failure is no error by itself.
bool QuotaSwitch::tryToSwitchOn(const QString &device, QuotaKind kind, QStringList &complaints)
{
    const QString refusal = _tools.fstab.preview(device, kind, true).refusal;
    if (!refusal.isEmpty()) {
        Q_EMIT error(refusal);
        return false;
    }
    const FstabEdit edit = _tools.fstab.setOption(device, kind, true);
    if (!edit.isDone)
        return false;
    const QuotaFile file = _tools.kinds.quotaFile(device, kind);
    if (!file.exists()) {
        const ProgramStep mounted = remount(device, kind, edit);
        if (!mounted.isDone && edit.hasWritten())
            return false;
        complaints.append(mounted.complaint);
        const ProgramStep counted =
            isMountedWithOption(device, kind) ? _tools.programs.createQuotaFiles(device, kind) : ProgramStep();
        complaints.append(counted.complaint);
        complaints.removeAll(QString());
        if (!counted.isDone)
            return false;
    }
    const bool isOn = switchOnWithFile(device, kind, edit, complaints);
    if (isOn)
        tellOldCounts(device, kind, file);
    return isOn;
}

/// A quota file may be there from earlier, and the option not be in force yet: then "quotaon" refuses it.
bool QuotaSwitch::switchOnWithFile(const QString &device, QuotaKind kind, const FstabEdit &edit,
                                   QStringList &complaints)
{
    const ProgramStep step = _tools.programs.tryQuotaOnOff(device, kind, true);
    if (step.isDone)
        return true;
    if (!isMountedWithOption(device, kind)) {
        const ProgramStep mounted = remount(device, kind, edit);
        if (!mounted.isDone && edit.hasWritten())
            return false;
        if (isMountedWithOption(device, kind))
            return _tools.programs.runQuotaOnOff(device, kind, true);
        if (!mounted.isDone)
            complaints.append(mounted.complaint);
    }
    Q_EMIT error(step.complaint);
    return false;
}

/// A file that was there before is not counted anew. `file` is as it was before it was switched on.
void QuotaSwitch::tellOldCounts(const QString &device, QuotaKind kind, const QuotaFile &file)
{
    if (file.exists())
        Q_EMIT detail(
            tr("%1: quotas count on from the file %2, dated %3. What was stored or removed while they were off "
               "is not counted; to count anew, switch them off, run %4 and switch them on.")
                .arg(device, file.name, file.date->toString(QStringLiteral("dd.MM.yyyy hh:mm")),
                     QuotaPrograms::countCommand(device, kind)));
}

/// What was mounted with which options is another thing afterwards, also when it failed half-way.
ProgramStep QuotaSwitch::remount(const QString &device, QuotaKind kind, const FstabEdit &edit)
{
    ProgramStep step = _tools.programs.remount(device);
    _tools.resetCache();
    if (!step.isDone && edit.hasWritten())
        explainFailedRemount(device, kind, edit, step.complaint);
    return step;
}

void QuotaSwitch::explainFailedRemount(const QString &device, QuotaKind kind, const FstabEdit &edit,
                                       const QString &complaint)
{
    const QString word = SystemNames::optionWord(kind);
    if (!_tools.devices.isMounted(device))
        Q_EMIT error(tr("%1 is not mounted. It has the option %2 in %3 now; mount it, then its quotas can be switched "
                        "on: %4")
                         .arg(device, word, SystemNames::Fstab, complaint));
    else if (_tools.fstab.takeBack(edit, device, kind))
        Q_EMIT error(tr("%1 could not be mounted again with the option %2, which was therefore taken out of %3 again: "
                        "%4")
                         .arg(device, word, SystemNames::Fstab, complaint));
    else
        Q_EMIT error(tr("%1 could not be mounted again with the option %2. Take it out of %3 before the next start: %4")
                         .arg(device, word, SystemNames::Fstab, complaint));
}

bool QuotaSwitch::isMountedWithOption(const QString &device, QuotaKind kind)
{
    return _tools.devices.hasQuotaOption(device, kind, SystemNames::Mtab);
}
