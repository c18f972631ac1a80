// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "commandline.h"
#include "language.h"
#include "mainwindow.h"
#include "session.h"
#include "startup.h"
#include "terminationwatcher.h"

#include <taskobserver.h>

#include <QApplication>

#include <optional>
#include <utility>

#include <unistd.h>

namespace
{

/// The application object of this time needs no display, and leaves the arguments as they are.
CommandLine readCommandLine(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Language::install();
    return CommandLine(QCoreApplication::arguments());
}

} // namespace

int main(int argc, char *argv[])
{
    Startup::prepareProcess();
    Startup::dropForeignArguments(argc, argv);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets); // or the window waits for the drivers of a graphics card
    QCoreApplication::setOrganizationName(QStringLiteral("kra"));
    QCoreApplication::setApplicationName(QStringLiteral("kra-console"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KRA_VERSION));
    const CommandLine commandLine = readCommandLine(argc, argv);
    if (commandLine.exitCode())
        return *commandLine.exitCode();

    std::optional<DisplayCheck> displayCheck(std::in_place, commandLine.noWindowText());
    QApplication application(argc, argv);
    displayCheck.reset();
    Language::install();
    QApplication::setApplicationDisplayName(QApplication::translate("main", "System console"));
    QApplication::setDesktopFileName(QStringLiteral("kra-console"));

    if (geteuid() == 0)
        Startup::keepSettingsPrivate();
    Session session;
    session.loadPlugins(QStringList(Session::pluginFolder()) + commandLine.pluginFolders());
    int code = 0;
    {
        MainWindow window(session);
        const TerminationWatcher termination;
        QObject::connect(&termination, &TerminationWatcher::terminationRequested, &window, &MainWindow::terminate);
        window.show();
        code = QApplication::exec();
    }
    if (TaskObserver::instance()->isChangingMachine())
        qInfo("%s", qPrintable(QApplication::translate("main", "The console ends as soon as its change is done.")));
    TaskObserver::instance()->closeDown();
    return code;
}
