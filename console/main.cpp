// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mainwindow.h"
#include "session.h"
#include "startup.h"
#include "terminationwatcher.h"

#include <taskobserver.h>

#include <QApplication>
#include <QCommandLineParser>

int main(int argc, char *argv[])
{
    Startup::prepareProcess();
    Startup::dropForeignArguments(argc, argv);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("kra"));
    QApplication::setApplicationName(QStringLiteral("kra-console"));
    QApplication::setApplicationDisplayName(QApplication::translate("main", "System console"));
    QApplication::setApplicationVersion(QStringLiteral(KRA_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("kra-console"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QApplication::translate("main", "Administration of this computer."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption plugins(QStringLiteral("plugins"),
                                     QApplication::translate("main", "Load the plug-ins of another folder too."),
                                     QApplication::translate("main", "folder"));
    parser.addOption(plugins);
    parser.process(application);

    Session session;
    session.loadPlugins(QStringList(Session::pluginFolder()) + parser.values(plugins));
    int code = 0;
    {
        MainWindow window(session);
        const TerminationWatcher termination;
        QObject::connect(&termination, &TerminationWatcher::terminationRequested, &window, &QWidget::close);
        window.show();
        code = QApplication::exec();
    }
    TaskObserver::instance()->closeDown();
    return code;
}
