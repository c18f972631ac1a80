// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generalpage.h"

#include "form.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QSpinBox>
#include <QTest>

namespace
{
/// The widgets of the two halves have "Users" and "Groups" in their names.
QString half(QuotaKind kind)
{
    return kind == GroupQuota ? QStringLiteral("Groups") : QStringLiteral("Users");
}
} // namespace

GeneralPage::GeneralPage(RealConsole &console)
    : ConsolePage(console, {QStringLiteral("Quota management")})
{}

QStringList GeneralPage::devices() const
{
    return Form::choices(find<QComboBox>(QStringLiteral("_filesystemsComboBox")));
}

bool GeneralPage::choose(const QString &device)
{
    return Form::choose(find<QComboBox>(QStringLiteral("_filesystemsComboBox")), device);
}

QString GeneralPage::filesystem() const
{
    return find<QLabel>(QStringLiteral("_deviceFilesystemLabel"))->text();
}

bool GeneralPage::canSwitch(QuotaKind kind) const
{
    return settings(kind)->isEnabled();
}

bool GeneralPage::isOn(QuotaKind kind) const
{
    return settings(kind)->isChecked();
}

bool GeneralPage::setOn(QuotaKind kind, bool on)
{
    if (isOn(kind) != on && canSwitch(kind))
        QTest::keyClick(settings(kind), Qt::Key_Space);
    return isOn(kind) == on;
}

qint64 GeneralPage::graceSeconds(QuotaKind kind, Counted counted) const
{
    static constexpr std::array<qint64, 4> unitSeconds = {7 * 86400, 86400, 3600, 60};
    const std::array<QSpinBox *, 4> boxes = spinBoxes(kind, counted);
    qint64 seconds = 0;
    for (std::size_t i = 0; i < boxes.size(); ++i)
        seconds += boxes[i]->value() * unitSeconds[i];
    return seconds;
}

bool GeneralPage::setGrace(QuotaKind kind, Counted counted, const Grace &grace)
{
    const std::array<QSpinBox *, 4> boxes = spinBoxes(kind, counted);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        if (!Form::type(boxes[i], QString::number(grace[i])) || boxes[i]->value() != grace[i])
            return false;
    }
    return true;
}

QStringList GeneralPage::facts(QuotaKind kind) const
{
    return texts(kind == GroupQuota ? QStringLiteral("_groupsListWidget") : QStringLiteral("_usersListWidget"));
}

QStringList GeneralPage::deviceFacts() const
{
    return texts(QStringLiteral("_deviceFactsListWidget"));
}

QGroupBox *GeneralPage::settings(QuotaKind kind) const
{
    return find<QGroupBox>(QStringLiteral("_%1SettingsGroupBox").arg(half(kind).toLower()));
}

std::array<QSpinBox *, 4> GeneralPage::spinBoxes(QuotaKind kind, Counted counted) const
{
    const QString row =
        (counted == Counted::Space ? QStringLiteral("_blocks") : QStringLiteral("_inodes")) + half(kind);
    return {find<QSpinBox>(row + QStringLiteral("WeekGraceSpinBox")),
            find<QSpinBox>(row + QStringLiteral("DaysGraceSpinBox")),
            find<QSpinBox>(row + QStringLiteral("HoursSpinBox")),
            find<QSpinBox>(row + QStringLiteral("MinutesSpinBox"))};
}

/// None while the list is hidden.
QStringList GeneralPage::texts(const QString &list) const
{
    const auto *widget = find<QListWidget>(list);
    QStringList texts;
    for (int i = 0; widget->isVisible() && i < widget->count(); ++i)
        texts.append(widget->item(i)->text());
    return texts;
}
