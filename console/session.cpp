// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "session.h"

#include "accountmodule.h"
#include "consolestyle.h"
#include "icontheme.h"
#include "localcomputermodule.h"

#include <QApplication>
#include <QDir>
#include <QSettings>

namespace
{
QString alwaysKey()
{
    return QStringLiteral("lists/readAlways");
}
} // namespace

Session::Session()
{
    QApplication::setStyle(new ConsoleStyle); // which the application owns
    installIconTheme();                       // before the elements, which look their icons up
    _tree.addModule(new LocalComputerModule(&_ownModules));
    _tree.addModule(new AccountModule(localUserKind(), &_ownModules));
    _tree.addModule(new AccountModule(localGroupKind(), &_ownModules));
    tellModules();
}

void Session::loadPlugins(const QStringList &folders)
{
    for (const QString &folder : folders)
        _loader.loadFolder(folder);
    tellModules();
}

QString Session::pluginFolder()
{
    return QDir::cleanPath(QApplication::applicationDirPath() + QStringLiteral("/" KRA_PLUGINS_FROM_PROGRAM));
}

bool Session::isAdministrator() const
{
    return Module::isAdministrator(*_tree.module(LocalComputerModule::moduleName()));
}

bool Session::readsListsAlways() const
{
    return QSettings().value(alwaysKey(), false).toBool();
}

void Session::setReadsListsAlways(bool always)
{
    QSettings().setValue(alwaysKey(), always);
    tellModules();
}

void Session::tellModules()
{
    const bool always = readsListsAlways();
    for (Module *module : _tree.modules())
        module->setData(QStringLiteral("paranoid"), always);
}
