// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountpage.h"

#include "accountlist.h"
#include "form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

namespace
{
QString boundName(AccountPage::Bound bound)
{
    return bound == AccountPage::Bound::Hard ? QStringLiteral("_hard") : QStringLiteral("_soft");
}

QString countedName(Counted counted)
{
    return counted == Counted::Space ? QStringLiteral("Blocks") : QStringLiteral("Inodes");
}

quint64 bytes(double number, const QString &unit)
{
    static const QStringList units{QStringLiteral("Bytes"), QStringLiteral("Kb"), QStringLiteral("Mb"),
                                   QStringLiteral("Gb")};
    for (int i = units.indexOf(unit); i > 0; --i)
        number *= 1024;
    return static_cast<quint64>(number);
}
} // namespace

bool AccountPage::openAccount(Way way, QuotaKind kind, const QString &account, const QString &device)
{
    if (way == Way::List) {
        AccountList list(console(), kind);
        return list.open() && list.choose(device) && list.openAccount(account);
    }
    const QString accounts = kind == GroupQuota ? QStringLiteral("Local groups") : QStringLiteral("Local users");
    return console().driver().open({accounts, account}) && bringTabToFront() && choose(device);
}

int AccountPage::tabs() const
{
    const QTabBar *bar = console().window().findChild<QTabWidget *>(QStringLiteral("pageTabs"))->tabBar();
    int count = 0;
    for (int i = 0; i < bar->count(); ++i)
        count += bar->tabText(i) == QLatin1String("Quota") ? 1 : 0;
    return count;
}

QStringList AccountPage::devices() const
{
    return Form::choices(find<QComboBox>(QStringLiteral("_devicesComboBox")));
}

QString AccountPage::device() const
{
    return find<QComboBox>(QStringLiteral("_devicesComboBox"))->currentText();
}

bool AccountPage::choose(const QString &device)
{
    return Form::choose(find<QComboBox>(QStringLiteral("_devicesComboBox")), device);
}

bool AccountPage::saysQuotaIsOn() const
{
    return find<QLabel>(QStringLiteral("_deviceSupportQuotaStatusLabel"))->text() == QLatin1String("ON");
}

quint64 AccountPage::used(Counted counted) const
{
    if (counted == Counted::Files)
        return static_cast<quint64>(find<QSpinBox>(QStringLiteral("_usedInodesSpinBox"))->value());
    const auto *box = find<QDoubleSpinBox>(QStringLiteral("_usedBlocksDoubleSpinBox"));
    return bytes(box->value(), box->suffix().trimmed());
}

quint64 AccountPage::limit(Counted counted, Bound bound) const
{
    if (!checkBox(counted, bound)->isChecked())
        return 0;
    const QString name = boundName(bound);
    if (counted == Counted::Files)
        return static_cast<quint64>(find<QSpinBox>(name + QStringLiteral("LimitInodesSpinBox"))->value());
    return bytes(find<QDoubleSpinBox>(name + QStringLiteral("LimitBlocksDoubleSpinBox"))->value(),
                 find<QComboBox>(name + QStringLiteral("LimitDimensionComboBox"))->currentText());
}

bool AccountPage::setSpaceLimit(Bound bound, int number, const QString &unit)
{
    const QString name = boundName(bound);
    return Form::check(checkBox(Counted::Space, bound), true) &&
           Form::choose(find<QComboBox>(name + QStringLiteral("LimitDimensionComboBox")), unit) &&
           Form::type(find<QDoubleSpinBox>(name + QStringLiteral("LimitBlocksDoubleSpinBox")),
                      QString::number(number)) &&
           limit(Counted::Space, bound) == bytes(number, unit);
}

bool AccountPage::setFilesLimit(Bound bound, int number)
{
    return Form::check(checkBox(Counted::Files, bound), true) &&
           Form::type(find<QSpinBox>(boundName(bound) + QStringLiteral("LimitInodesSpinBox")),
                      QString::number(number)) &&
           limit(Counted::Files, bound) == static_cast<quint64>(number);
}

bool AccountPage::clearLimit(Counted counted, Bound bound)
{
    return Form::check(checkBox(counted, bound), false);
}

QDateTime AccountPage::timeToForce(Counted counted) const
{
    const QDateTimeEdit *edit = timeEdit(counted);
    return edit->dateTime() == edit->minimumDateTime() ? QDateTime() : edit->dateTime();
}

bool AccountPage::forceYearBefore(Counted counted)
{
    QDateTimeEdit *edit = timeEdit(counted);
    const QDateTime before = edit->dateTime();
    if (!edit->isEnabled())
        return false;
    edit->setFocus();
    edit->setCurrentSection(QDateTimeEdit::YearSection);
    QTest::keyClick(edit, Qt::Key_Down);
    return edit->dateTime() == before.addYears(-1);
}

bool AccountPage::bringTabToFront()
{
    QTabBar *bar = console().window().findChild<QTabWidget *>(QStringLiteral("pageTabs"))->tabBar();
    for (int i = 0; i < bar->count(); ++i) {
        if (bar->tabText(i) != QLatin1String("Quota"))
            continue;
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(i).center());
        return bar->currentIndex() == i && console().driver().settle();
    }
    return false;
}

QCheckBox *AccountPage::checkBox(Counted counted, Bound bound) const
{
    return find<QCheckBox>(boundName(bound) + QStringLiteral("Limit") + countedName(counted) +
                           QStringLiteral("CheckBox"));
}

QDateTimeEdit *AccountPage::timeEdit(Counted counted) const
{
    return find<QDateTimeEdit>(counted == Counted::Space ? QStringLiteral("_blocksDateTimeEdit")
                                                         : QStringLiteral("_inodesDateTimeEdit"));
}
