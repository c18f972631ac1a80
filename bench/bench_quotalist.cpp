// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

// How long the list of all users keeps the window's thread at work, for accounts with quotas on three devices, and how
// that grows with their number.

#include <abstractcontainerelement.h>
#include <accountcolumn.h>
#include <elementtreeview.h>
#include <memorysizetransfer.h>
#include <module.h>
#include <userdata.h>
#include <userelement.h>
#include <userselement.h>
#include <userswidget.h>

#include <QApplication>
#include <QComboBox>
#include <QLoggingCategory>
#include <QStandardPaths>

#include <cstdio>
#include <functional>
#include <vector>

#include <time.h>

namespace
{
const QStringList devices = {QStringLiteral("/dev/vda1"), QStringLiteral("/dev/vdb1"), QStringLiteral("/dev/vdc1")};

using Times = std::vector<std::pair<const char *, double>>;

std::unique_ptr<ElementData> record(int number)
{
    const MemorySizeTransfer units;
    constexpr quint64 block = 1024;
    auto user = std::make_unique<UserData>();
    user->name = QStringLiteral("user%1").arg(number * 7919 % 1000003);
    user->id = number;
    for (int i = 0; i < devices.size(); ++i) {
        DeviceQuota quota;
        quota.deviceName = devices.at(i);
        quota.kindIsOn = quota.quotaIsOn = quota.fileExists = true;
        quota.usedBlocks = MemorySize(units, block * quint64(number * 31337 % 65521));
        quota.softBlockLimit = MemorySize(units, block * quint64(number * 271 % 9973 * (i + 1)));
        quota.usedInodes = quint64(number % 977);
        user->deviceQuotas.insert(quota.deviceName, quota);
    }
    return user;
}

/// Of this thread, whatever else runs on the machine.
double workedMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

void turnLoop()
{
    for (int turn = 0; turn < 5; ++turn)
        QCoreApplication::processEvents();
}

Times measure(int rows)
{
    Module module(QStringLiteral("Module"), nullptr);
    UsersElement list(&module, &Module::isAdministratorHierarchy);
    UsersWidget widget(&module, &Module::isAdministratorHierarchy);
    widget.resize(1200, 800);
    widget.setElement(&list);
    widget.show();
    widget.read();
    turnLoop();
    auto *view = widget.findChild<ElementTreeView *>();
    auto *box = widget.findChild<QComboBox *>(QStringLiteral("_devicesComboBox"));

    Times times;
    const auto step = [&times](const char *name, const std::function<void()> &action) {
        const double before = workedMilliseconds();
        action();
        turnLoop();
        times.emplace_back(name, workedMilliseconds() - before);
    };
    const auto fill = [&] {
        QVector<TreeNode *> users;
        for (int i = 0; i < rows; ++i) {
            std::unique_ptr<ElementData> made = record(i);
            users +=
                new UserElement(static_cast<UserData *>(made.get())->name, &module, &Module::isAdministratorHierarchy);
            static_cast<Element *>(users.last())->setRecord(std::move(made));
        }
        return users;
    };
    const auto show = [&](const QVector<TreeNode *> &users) {
        list.clearDelete();
        list.append(users);
        ElementData told;
        told.params.insert(AbstractContainerElement::devicesKey(), devices);
        widget.performOperation(OperationType::Read, &told, 0);
    };
    const auto chooseVariant = [&list](int variant) {
        ChangeDisplayElementData data(variant);
        list.performOperation(OperationType::ChangeDisplay, &data, 0);
    };
    QVector<TreeNode *> users = fill();
    step("first shown", [&] { show(users); });
    step("another device", [&] { box->setCurrentIndex(1); });
    step("sorted by name", [&] { view->sortByColumn(AccountColumn::Name, Qt::AscendingOrder); });
    step("another device, by name", [&] { box->setCurrentIndex(2); });
    step("sorted by soft limit", [&] { view->sortByColumn(AccountColumn::SoftBlockLimit, Qt::AscendingOrder); });
    step("the other way", [&] { view->sortByColumn(AccountColumn::SoftBlockLimit, Qt::DescendingOrder); });
    step("another device, by limit", [&] { box->setCurrentIndex(0); });
    step("searched, few match", [&] { widget.setFilterText(QStringLiteral("user999")); });
    step("another device, searched", [&] { box->setCurrentIndex(1); });
    step("search ended", [&] { widget.setFilterText(QString()); });
    step("system accounts", [&] { chooseVariant(1); });
    step("ordinary accounts", [&] { chooseVariant(2); });
    step("all accounts", [&] { chooseVariant(0); });
    view->setCurrentIndex(view->model()->index(rows / 2, 0));
    view->scrollToBottom();
    users = fill();
    step("rows that are replaced", [&] { list.clearDelete(); });
    step("their successors", [&] { show(users); });
    return times;
}
} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    QLoggingCategory::setFilterRules(QStringLiteral("kra.module.info=false\nkra.module.debug=false"));
    std::vector<Times> all;
    for (const int rows : {1000, 10000, 100000})
        all.push_back(measure(rows));
    std::printf("%-26s %10s %10s %10s   %s\n", "milliseconds for users:", "1,000", "10,000", "100,000", "growth");
    for (size_t i = 0; i < all[0].size(); ++i)
        std::printf("%-26s %10.2f %10.2f %10.2f   x%.1f x%.1f\n", all[0][i].first, all[0][i].second, all[1][i].second,
                    all[2][i].second, all[1][i].second / all[0][i].second, all[2][i].second / all[1][i].second);
    return 0;
}
