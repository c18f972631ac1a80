// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace
{
/// Runs when the application object and this library are both there, before any class of the plug-in is built.
void installTranslator()
{
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QLocale::system(), QStringLiteral("kra-quota-plugin"), QStringLiteral("_"),
                         QStringLiteral("/usr/share/zel/translations/zel-admin-tev")))
        QCoreApplication::installTranslator(translator);
}
} // namespace

Q_COREAPP_STARTUP_FUNCTION(installTranslator)
