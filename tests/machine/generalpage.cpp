// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generalpage.h"

#include "realconsole.h"

#include <elementwidget.h>
#include <taskobserver.h>

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QSpinBox>
#include <QTest>
#include <QToolBar>

namespace
{
/// The widgets of the two halves have "Users" and "Groups" in their names.
QString half(QuotaKind kind)
{
    return kind == GroupQuota ? QStringLiteral("Groups") : QStringLiteral("Users");
}
} // namespace

GeneralPage::GeneralPage(RealConsole &console)
    : _console(console)
{
    connect(TaskObserver::instance(), &TaskObserver::taskDetail, this, &GeneralPage::noteDetail);
    connect(TaskObserver::instance(), &TaskObserver::taskFinished, this, &GeneralPage::noteEnd);
}

bool GeneralPage::open()
{
    return _console.driver().open({QStringLiteral("Quota management")}) && _console.driver().editor();
}

bool GeneralPage::refresh()
{
    return click(QStringLiteral("refreshAction")) && _console.driver().settle();
}

QStringList GeneralPage::devices() const
{
    const auto *box = find<QComboBox>(QStringLiteral("_filesystemsComboBox"));
    QStringList devices;
    for (int i = 0; i < box->count(); ++i)
        devices.append(box->itemText(i));
    return devices;
}

bool GeneralPage::choose(const QString &device)
{
    auto *box = find<QComboBox>(QStringLiteral("_filesystemsComboBox"));
    if (!box->isEnabled())
        return false;
    QTest::keyClick(box, Qt::Key_Home);
    while (box->currentText() != device && box->currentIndex() + 1 < box->count())
        QTest::keyClick(box, Qt::Key_Down);
    return box->currentText() == device;
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
        if (!boxes[i]->isEnabled())
            return false;
        boxes[i]->setFocus();
        boxes[i]->selectAll();
        QTest::keyClicks(boxes[i], QString::number(grace[i]));
        QTest::keyClick(boxes[i], Qt::Key_Tab);
        if (boxes[i]->value() != grace[i])
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

GeneralPage::Applied GeneralPage::apply()
{
    _applied = {};
    _applied.message = QStringLiteral("Apply did nothing.");
    _details.clear();
    _boxes.takeTexts();
    const bool isDone = click(QStringLiteral("applyAction")) && _console.driver().settle();
    _applied.succeeded = _applied.succeeded && isDone;
    _applied.boxes = _boxes.takeTexts();
    return _applied;
}

template<class Widget>
Widget *GeneralPage::find(const QString &name) const
{
    return _console.driver().editor()->findChild<Widget *>(name);
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

/// On the tool bar. False while the action is not available.
bool GeneralPage::click(const QString &action)
{
    auto *bar = _console.window().findChild<QToolBar *>();
    QWidget *button = bar->widgetForAction(_console.window().findChild<QAction *>(action));
    if (!button->isEnabled())
        return false;
    QTest::mouseClick(button, Qt::LeftButton);
    return true;
}

void GeneralPage::noteDetail(quint64 id, const QString &text)
{
    Q_UNUSED(id) // tasks run one after the other
    _details.append(text);
}

void GeneralPage::noteEnd(const TaskReport &task)
{
    if (!task.changesMachine)
        return;
    _applied.succeeded = task.status == TaskDescription::Succeeded;
    _applied.message = task.message;
    _applied.details = _details;
    _applied.milliseconds = task.runMilliseconds;
}
