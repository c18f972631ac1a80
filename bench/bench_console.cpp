// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The real window on a machine with many accounts: how long it takes to start, and how long each thing that the
// administrator does there keeps the window from answering.

#include <element.h>
#include <elementtreeview.h>
#include <mainwindow.h>
#include <sandbox.h>
#include <session.h>
#include <taskobserver.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <functional>

#include <time.h>

namespace
{

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

/// What the thread of the window has worked so far, whatever else the machine is doing.
double workedMilliseconds()
{
    timespec worked = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &worked);
    return double(worked.tv_sec) * 1e3 + double(worked.tv_nsec) / 1e6;
}

/// Does one thing and lets the event loop turn until all that follows of it has happened. Prints how long that was, and
/// the longest single turn, for which the window answered nothing: by the clock, and what the thread worked in one.
void measure(const char *name, const std::function<void()> &action)
{
    constexpr double noticeable = 1.0; // milliseconds; a shorter turn did nothing
    constexpr double quiet = 400.0;    // milliseconds; longer than the pause of a search field

    QElapsedTimer whole;
    whole.start();
    double end = 0;
    double longest = 0;
    double mostWork = 0;
    const auto turn = [&](const std::function<void()> &events) {
        QElapsedTimer timer;
        timer.start();
        const double workedBefore = workedMilliseconds();
        events();
        const double length = milliseconds(timer);
        longest = std::max(longest, length);
        mostWork = std::max(mostWork, workedMilliseconds() - workedBefore);
        if (length > noticeable || TaskObserver::instance()->isBusy())
            end = milliseconds(whole);
    };
    turn(action);
    while (milliseconds(whole) - end < quiet) {
        turn([] { QCoreApplication::processEvents(); });
        QThread::usleep(200);
    }
    std::printf("%-48s %10.0f %10.0f %10.0f\n", name, end, longest, mostWork);
    std::fflush(stdout);
}

void fillMachine(Sandbox &sandbox, int accounts)
{
    QByteArray users = sandbox.readEtc(QStringLiteral("passwd"));
    QByteArray groups = sandbox.readEtc(QStringLiteral("group"));
    for (int i = 0; i < accounts; ++i) {
        const QByteArray id = QByteArray::number(100 + i);
        const QByteArray name = "user" + QByteArray::number(i * 7919LL % 1000003);
        users += name + ":x:" + id + ":100:User number " + id + ",,,:/home/" + name + ":/bin/bash\n";
        groups += name + ":x:" + id + ":\n";
    }
    sandbox.writeEtc(QStringLiteral("passwd"), users);
    sandbox.writeEtc(QStringLiteral("group"), groups);
    sandbox.standIn(QStringLiteral("modinfo")); // so that the plug-in finds the kernel's quota format
    QByteArray table;
    QByteArray devices;
    for (const char *name : {"vda", "vdb", "vdc"}) {
        const QByteArray device = QByteArray("/dev/") + name;
        table += device + " /srv/" + name + " ext4 defaults,usrquota,grpquota 0 2\n";
        devices += device + ": UUID=\"" + name + "\" TYPE=\"ext4\"\n";
        sandbox.kernel().setState(device, USRQUOTA, {});
        sandbox.kernel().setState(device, GRPQUOTA, {});
    }
    sandbox.writeEtc(QStringLiteral("fstab"), table);
    sandbox.writeEtc(QStringLiteral("mtab"), table);
    sandbox.standIn(QStringLiteral("blkid")).prints(devices);
}

void walkThrough(Session &session, MainWindow &window)
{
    auto *tree = window.findChild<ElementTreeView *>(QStringLiteral("treeView"));
    auto *treeSearch = window.findChild<QLineEdit *>(QStringLiteral("treeSearchField"));
    auto *listSearch = window.findChild<QLineEdit *>(QStringLiteral("listSearchField"));
    auto *variants = window.findChild<QComboBox *>(QStringLiteral("variantBox"));
    auto *refresh = window.findChild<QAction *>(QStringLiteral("refreshAction"));
    const auto element = [&session](const char *type) {
        const QVector<TreeNode *> nodes = session.tree().rootNode()->allChildNodes();
        return *std::find_if(nodes.begin(), nodes.end(),
                             [type](const TreeNode *node) { return node->id() == QLatin1String(type); });
    };
    const auto choose = [tree](TreeNode *node) { tree->setCurrentIndex(tree->indexOf(node)); };
    measure("page of the quotas of three devices", [&] { choose(element("QuotaGeneralElement")); });
    TreeNode *users = element("LocalUsers");
    ElementTreeView *list = nullptr;
    const auto chooseVariant = [variants](int variant) {
        variants->setCurrentIndex(variant);
        Q_EMIT variants->activated(variant);
    };

    measure("list of users: first read and shown", [&] { choose(users); });
    for (auto *view : window.findChildren<ElementTreeView *>(QStringLiteral("accountView"))) {
        if (view->isVisible())
            list = view;
    }
    if (!list)
        qFatal("No list is shown");
    measure("  sorted by name", [&] { list->sortByColumn(0, Qt::AscendingOrder); });
    measure("  sorted by name, the other way", [&] { list->sortByColumn(0, Qt::DescendingOrder); });
    measure("  sorted by number", [&] { list->sortByColumn(1, Qt::AscendingOrder); });
    measure("  searched, few rows match", [&] { listSearch->setText(QStringLiteral("user999")); });
    measure("  searched, half match", [&] { listSearch->setText(QStringLiteral("11")); });
    measure("  search ended", [&] { listSearch->clear(); });
    measure("  system accounts alone", [&] { chooseVariant(1); });
    measure("  ordinary accounts alone", [&] { chooseVariant(2); });
    measure("  all accounts", [&] { chooseVariant(0); });
    measure("  scrolled to the end", [&] { list->scrollToBottom(); });
    measure("  read again while it is sorted", [&] { refresh->trigger(); });
    measure("tree: list of users unfolded", [&] { tree->expand(tree->indexOf(users)); });
    measure("  page of one user", [&] { choose(users->childNodes().last()); });
    measure("  back to the list", [&] { choose(users); });
    measure("  searched, few rows match", [&] { treeSearch->setText(QStringLiteral("user999")); });
    measure("  searched, all users match", [&] { treeSearch->setText(QStringLiteral("user")); });
    measure("  search ended", [&] { treeSearch->clear(); });
    measure("  list of users read again", [&] { refresh->trigger(); });
    measure("list of groups: first read and shown", [&] { choose(element("LocalGroups")); });
    measure("quotas of all users: first read and shown", [&] { choose(element("QuotaUsersElement")); });
    measure("  read again", [&] { refresh->trigger(); });
}

} // namespace

int main(int argc, char *argv[])
{
    Sandbox::enter();
    Sandbox sandbox;
    const int accounts = argc > 1 ? QByteArray(argv[argc - 1]).toInt() : 100000;
    fillMachine(sandbox, accounts);

    QElapsedTimer sinceStart;
    sinceStart.start();
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets); // as the console itself does
    QApplication application(argc, argv);
    Session session;
    session.loadPlugins({Session::pluginFolder()});
    const double loaded = milliseconds(sinceStart);
    MainWindow window(session);
    std::printf("%-48s %10s %10s %10s\n", qPrintable(QStringLiteral("milliseconds, %1 users and groups").arg(accounts)),
                "whole", "longest", "work");
    std::printf("%-48s %10.0f\n", "application and plug-ins", loaded);
    measure("window: shown, with the computer's page", [&] { window.show(); });
    walkThrough(session, window);
    measure("window: closed", [&] { window.close(); });
    TaskObserver::instance()->closeDown();
    return 0;
}
