// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "consoledriver.h"

#include <elementwidget.h>
#include <mainwindow.h>
#include <navigationpane.h>
#include <searchfield.h>
#include <session.h>
#include <startup.h>
#include <taskobserver.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QScreen>
#include <QTest>
#include <QTextStream>

namespace
{

/// A walk through the real console, which leaves a picture of the screen at each stop.
class Tour
{
public:
    Tour(MainWindow &window, const QString &folder, const QString &suffix)
        : _window(window)
        , _console(window)
        , _folder(folder)
        , _suffix(suffix)
    {}

    bool walk()
    {
        return seeComputer() && seeQuotaManagement() && seeQuotas() && seeAccounts() && searchTree() && seePlugins();
    }

private:
    bool seeComputer() { return _console.settle() && keep(QStringLiteral("this-computer")); }

    bool seeQuotaManagement()
    {
        if (!_console.open({QStringLiteral("Quota management")}))
            return fail(QStringLiteral("the page \"Quota management\" did not open"));
        auto *devices = _console.editor()->findChild<QComboBox *>(QStringLiteral("_filesystemsComboBox"));
        devices->setFocus();
        QTest::keyClick(devices, Qt::Key_Home);
        for (int left = devices->count(); left > 0; --left) {
            const QString device = devices->currentText().section(QLatin1Char('/'), -1);
            if (!keep(QStringLiteral("quota-management-%1").arg(device)))
                return false;
            QTest::keyClick(devices, Qt::Key_Down);
        }
        return true;
    }

    bool seeQuotas()
    {
        const QString quotas = QStringLiteral("Quota management");
        const QString users = QStringLiteral("Users");
        return openAndKeep({quotas, QStringLiteral("Notifications")}, QStringLiteral("notifications")) &&
               openAndKeep({quotas, users}, QStringLiteral("quota-users")) &&
               openAndKeep({quotas, users, QStringLiteral("ben")}, QStringLiteral("quota-user")) &&
               openAndKeep({quotas, QStringLiteral("Groups")}, QStringLiteral("quota-groups"));
    }

    bool seeAccounts()
    {
        return openAndKeep({QStringLiteral("Local users")}, QStringLiteral("local-users")) &&
               openAndKeep({QStringLiteral("Local users"), QStringLiteral("ben")}, QStringLiteral("local-user")) &&
               openAndKeep({QStringLiteral("Local groups")}, QStringLiteral("local-groups"));
    }

    bool searchTree()
    {
        SearchField *field = _window.findChild<NavigationPane *>()->searchField();
        field->setFocus();
        QTest::keyClicks(field, QStringLiteral("ed"));
        if (!_console.settle() || !keep(QStringLiteral("search")))
            return false;
        field->clear();
        return true;
    }

    bool seePlugins()
    {
        _window.findChild<QAction *>(QStringLiteral("pluginsAction"))->trigger();
        auto *dialog = _window.findChild<QDialog *>();
        if (!dialog || !QTest::qWaitForWindowExposed(dialog))
            return fail(QStringLiteral("the list of plug-ins did not open"));
        const bool kept = keep(QStringLiteral("plug-ins"));
        dialog->close();
        return kept;
    }

    bool openAndKeep(const QStringList &titles, const QString &name)
    {
        return _console.open(titles) ? keep(name)
                                     : fail(QStringLiteral("the page \"%1\" did not open").arg(titles.last()));
    }

    /// The whole screen, as the person in front of it sees it.
    bool keep(const QString &name)
    {
        QTest::qWait(PaintingTime);
        const QString path = QDir(_folder).filePath(
            QStringLiteral("%1-%2%3.png").arg(++_number, 2, 10, QLatin1Char('0')).arg(name, _suffix));
        QTextStream(stdout) << "  " << path.section(QLatin1Char('/'), -1) << Qt::endl;
        return QGuiApplication::primaryScreen()->grabWindow(0).save(path) ||
               fail(QStringLiteral("the picture %1 could not be written").arg(path));
    }

    static bool fail(const QString &what)
    {
        QTextStream(stderr) << "tour: " << what << Qt::endl;
        return false;
    }

    static constexpr int PaintingTime = 700; // milliseconds for the window manager, which tells nobody when it is done

    MainWindow &_window;
    ConsoleDriver _console;
    QString _folder;
    QString _suffix;
    int _number = 0;
};

} // namespace

/// kra-tour FOLDER SUFFIX: leaves pictures of the console's pages in the folder, the suffix at the end of their names.
int main(int argc, char *argv[])
{
    Startup::prepareProcess();
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("kra"));
    QApplication::setApplicationName(QStringLiteral("kra-console"));
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        QTextStream(stderr) << "Usage: kra-tour FOLDER SUFFIX" << Qt::endl;
        return 2;
    }

    Session session;
    session.loadPlugins({Session::pluginFolder()});
    bool isComplete = false;
    {
        MainWindow window(session);
        window.showMaximized();
        isComplete =
            QTest::qWaitForWindowExposed(&window, 60000) && Tour(window, arguments.at(1), arguments.at(2)).walk();
    }
    TaskObserver::instance()->closeDown();
    return isComplete ? 0 : 1;
}
