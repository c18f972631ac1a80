// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "settingswriter.h"

#include "kindreader.h"
#include "quotactl.h"
#include "quotaswitch.h"
#include "reporter.h"

#include <algorithm>
#include <array>

namespace
{

/// One grace period of a kind: in a record, in the kernel's, and its name in a text.
struct Grace
{
    TimePeriod KindSettings::*period;
    decltype(dqinfo::dqi_bgrace) dqinfo::*seconds;
    const char *name;
};

constexpr std::array<Grace, 2> AllGraces = {{
    {&KindSettings::blockGrace, &dqinfo::dqi_bgrace, QT_TRANSLATE_NOOP("SettingsWriter", "grace period for space")},
    {&KindSettings::inodeGrace, &dqinfo::dqi_igrace, QT_TRANSLATE_NOOP("SettingsWriter", "grace period for files")},
}};

quint64 secondsOf(const KindSettings &settings, const Grace &grace)
{
    return static_cast<quint64>((settings.*grace.period).toSeconds());
}

QString textOf(quint64 seconds)
{
    const QString text = TimePeriod::ofSeconds(seconds).text;
    return text.isEmpty() ? SettingsWriter::tr("none") : text;
}

} // namespace

SettingsWriter::SettingsWriter(KindReader &kinds, QuotaSwitch &quotaSwitch, std::function<void()> resetCache,
                               Reporter &reporter)
    : _kinds(kinds)
    , _switch(quotaSwitch)
    , _resetCache(std::move(resetCache))
    , _reporter(reporter)
{}

void SettingsWriter::write(const GeneralData &data)
{
    if (data.touched) {
        const QString &device = data.touched->device;
        if (data.deviceSettings.contains(device))
            writeEdited(data.deviceSettings.value(device), *data.touched);
        return;
    }
    for (const DeviceSettings &settings : data.deviceSettings)
        writeAll(settings);
}

void SettingsWriter::writeAll(const DeviceSettings &settings)
{
    _switch.applySettings(settings.userSettings, UserQuota, QuotaSwitch::Graces::Set);
    _resetCache();
    _switch.applySettings(settings.groupSettings, GroupQuota, QuotaSwitch::Graces::Set);
}

void SettingsWriter::writeEdited(const DeviceSettings &settings, const TouchedSettings &touched)
{
    writeEdited(settings.userSettings, touched.asRead.userSettings, UserQuota);
    _resetCache();
    writeEdited(settings.groupSettings, touched.asRead.groupSettings, GroupQuota);
    for (const QuotaKind kind : touched.optionsToTake)
        takeOption(kind == GroupQuota ? settings.groupSettings : settings.userSettings, kind);
}

/// Takes the option of a kind that is off out of the table of file systems; one that somebody switched on meanwhile
/// keeps it.
void SettingsWriter::takeOption(const KindSettings &settings, QuotaKind kind)
{
    const std::optional<bool> isOn = _kinds.askWhetherOn(settings.device, kind, KindReader::NotMounted::IsOff);
    if (isOn == true)
        _reporter.error(
            tr("%1: quotas of this kind are on by now, so their option stays in /etc/fstab").arg(settings.device));
    else if (isOn == false)
        _switch.takeOption(settings.device, kind);
}

void SettingsWriter::writeEdited(const KindSettings &settings, const KindSettings &asRead, QuotaKind kind)
{
    bool isNewlyOn = false;
    if (settings.quotaOn != asRead.quotaOn) {
        const std::optional<bool> wasOn = _kinds.askWhetherOn(settings.device, kind);
        _switch.applySettings(settings, kind, QuotaSwitch::Graces::Leave);
        isNewlyOn = wasOn == false;
    }
    const bool areGracesEdited = std::any_of(AllGraces.begin(), AllGraces.end(), [&](const Grace &grace) {
        return secondsOf(settings, grace) != secondsOf(asRead, grace);
    });
    if (settings.quotaOn && areGracesEdited)
        setEditedGraces(settings, asRead, kind, isNewlyOn);
}

/// Puts the edited grace periods into the kernel's answer of now. One that was changed on the machine since the read
/// stays, unless the kind was switched on just now: what the kernel has then is nobody's edit.
void SettingsWriter::setEditedGraces(const KindSettings &settings, const KindSettings &asRead, QuotaKind kind,
                                     bool isNewlyOn)
{
    const QString &device = settings.device;
    const QString kindName = kind == GroupQuota ? tr("groups") : tr("users");
    if (!_kinds.isQuotaOn(device, kind)) {
        _reporter.error(tr("%1: the grace periods for %2 were not set, since quotas are off").arg(device, kindName));
        return;
    }
    const std::optional<dqinfo> now = _kinds.askInfo(device, kind);
    if (!now)
        return;
    dqinfo merged = {};
    merged.dqi_valid = IIF_BGRACE | IIF_IGRACE | IIF_FLAGS;
    bool isChanged = false;
    for (const Grace &grace : AllGraces) {
        const quint64 found = (*now).*grace.seconds;
        const quint64 shown = static_cast<quint64>(TimePeriod::ofSeconds(found).toSeconds());
        const quint64 read = secondsOf(asRead, grace);
        const quint64 wanted = secondsOf(settings, grace);
        merged.*grace.seconds = found;
        if (wanted == read || wanted == found)
            continue;
        if (isNewlyOn || (asRead.quotaOn && shown == read)) {
            merged.*grace.seconds = wanted;
            isChanged = true;
        } else {
            _reporter.error(tr("%1: the %2 for %3 is %4 by now, not what was shown: %5 was not written")
                                .arg(device, tr(grace.name), kindName, textOf(found), textOf(wanted)));
        }
    }
    if (isChanged) {
        QuotaCtl kernel;
        QObject::connect(&kernel, qOverload<const QString &>(&QuotaCtl::error),
                         [this](const QString &message) { _reporter.error(message); });
        kernel.setInfo(device, merged, kind);
    }
}
