// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "identity.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace
{
/// A translator that belongs to the application, installed there when `load` found its catalogue.
template<typename Load>
void install(const Load &load)
{
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (load(*translator))
        QCoreApplication::installTranslator(translator);
}
} // namespace

/// Runs when the application object and this library are both there, before any class of the plug-in is built.
static void installTranslators()
{
    // A translator that is installed later is asked first. The texts are written for many ("1 weeks"): the English
    // catalogue, part of this library, has their singulars in any language; then come that of the administrator's
    // language, part of it as well, and the one that is installed.
    Q_INIT_RESOURCE(catalogues);
    const QString catalogue = QLatin1String(Identity::Catalogue);
    install(
        [&](QTranslator &english) { return english.load(QStringLiteral(":/kra-quota-plugin/%1_en").arg(catalogue)); });
    install([&](QTranslator &own) {
        return own.load(QLocale::system(), catalogue, QStringLiteral("_"), QStringLiteral(":/kra-quota-plugin"));
    });
    install([&](QTranslator &system) {
        return system.load(QLocale::system(), catalogue, QStringLiteral("_"), QLatin1String(Identity::CatalogueFolder));
    });
}

Q_COREAPP_STARTUP_FUNCTION(installTranslators)
