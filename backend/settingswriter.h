// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <generaldata.h>
#include <quotakind.h>

#include <QCoreApplication>

#include <functional>

class KindReader;
class QuotaSwitch;
class Reporter;

/// Applies general settings: switches quotas and sets grace periods. Belongs to the thread of what it is made with.
class SettingsWriter
{
    Q_DECLARE_TR_FUNCTIONS(SettingsWriter)

public:
    /// What it is made with is not owned and must live longer.
    SettingsWriter(KindReader &kinds, QuotaSwitch &quotaSwitch, std::function<void()> resetCache, Reporter &reporter);

    /// See QuotaManager::applyGeneral().
    void write(const GeneralData &data);

private:
    void writeAll(const DeviceSettings &settings);
    void writeEdited(const DeviceSettings &settings, const TouchedSettings &touched);
    void writeEdited(const KindSettings &settings, const KindSettings &asRead, QuotaKind kind);
    void takeOption(const KindSettings &settings, QuotaKind kind);
    void setEditedGraces(const KindSettings &settings, const KindSettings &asRead, QuotaKind kind, bool isNewlyOn);

    KindReader &_kinds;
    QuotaSwitch &_switch;
    const std::function<void()> _resetCache;
    Reporter &_reporter;
};
