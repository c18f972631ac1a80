// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "language.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

namespace
{
using Catalogue = std::unique_ptr<QTranslator>;

/// Null where there is none. That of "de" serves "de_AT" as well.
Catalogue load(const char *name, const QString &language, const QString &folder)
{
    auto catalogue = std::make_unique<QTranslator>();
    return catalogue->load(QLatin1String(name) + QLatin1Char('_') + language, folder) ? std::move(catalogue) : nullptr;
}

void install(Catalogue catalogue)
{
    if (!catalogue)
        return;
    catalogue->setParent(QCoreApplication::instance());
    QCoreApplication::installTranslator(catalogue.release());
}

bool isEnglish(const QString &language)
{
    return language == QLatin1String("en") || language.startsWith(QLatin1String("en_")) ||
           language == QLatin1String("C");
}
} // namespace

void Language::install()
{
    const QString own =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/" KRA_TRANSLATIONS_FROM_PROGRAM));
    const QStringList wanted = QLocale::system().uiLanguages();
    for (QString language : wanted) {
        language.replace(QLatin1Char('-'), QLatin1Char('_'));
        if (isEnglish(language))
            return;
        Catalogue console = load("kra-console", language, own);
        if (!console)
            continue;
        ::install(load("qtbase", language, QLibraryInfo::location(QLibraryInfo::TranslationsPath)));
        ::install(load("kra-common", language, own));
        ::install(std::move(console));
        return;
    }
}
