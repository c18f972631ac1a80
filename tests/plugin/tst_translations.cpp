// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "localcomputer.h"

#include <elementeditor.h>
#include <moduletree.h>
#include <pluginloader.h>
#include <privatemounts.h>
#include <sandbox.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSpinBox>
#include <QtTest>

#include <cstdio>

/// In which language the plug-in's first editor is built. The language is a process's own: for each this program runs
/// itself, with the argument "suffixes".
class TestTranslations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void englishHasItsSingularsEverywhere_data();
    void englishHasItsSingularsEverywhere();
    void theCatalogueOfTheLanguageIsAskedFirst();
    void germanNeedsNoInstall();

private:
    /// What the spin box of days says after 1 and after 2.
    static QString suffixes(const QProcessEnvironment &environment);

    Sandbox _sandbox;
    QString _catalogues;
};

void TestTranslations::initTestCase()
{
    // Only this one folder of /usr/share is there; all that is needed of the others was read already.
    const QString share = _sandbox.folder(QStringLiteral("share"));
    _catalogues = share + QStringLiteral("/zel/translations/zel-admin-tev");
    PrivateMounts::replaceFolder(share.toStdString(), "/usr/share");
    _sandbox.standIn(QStringLiteral("modinfo"));
}

void TestTranslations::init()
{
    QDir(_catalogues).removeRecursively();
    QVERIFY(QDir().mkpath(_catalogues));
}

QString TestTranslations::suffixes(const QProcessEnvironment &environment)
{
    QProcess program;
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(QCoreApplication::applicationFilePath(), {QStringLiteral("suffixes")});
    if (!program.waitForFinished(-1) || program.exitCode() != 0)
        return QStringLiteral("failed");
    return QString::fromUtf8(program.readAllStandardOutput());
}

void TestTranslations::englishHasItsSingularsEverywhere_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<bool>("isInstalled");
    for (const bool isInstalled : {true, false}) {
        const char *suffix = isInstalled ? "" : ", from the build folder";
        for (const char *locale : {"en_US.UTF-8", "C", "C.UTF-8", "POSIX", "", "fr_FR.UTF-8", "nonsense"})
            QTest::addRow("'%s'%s", locale, suffix) << QByteArray(locale) << isInstalled;
    }
}

void TestTranslations::englishHasItsSingularsEverywhere()
{
    QFETCH(QByteArray, locale);
    QFETCH(bool, isInstalled);
    if (isInstalled)
        QVERIFY(QFile::copy(QStringLiteral(KRA_TRANSLATIONS "/kra-quota-plugin_en.qm"),
                            _catalogues + QStringLiteral("/kra-quota-plugin_en.qm")));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"})
        environment.remove(QString::fromLatin1(name));
    if (!locale.isEmpty())
        environment.insert(QStringLiteral("LC_ALL"), QString::fromLatin1(locale));
    QCOMPARE(suffixes(environment), QStringLiteral(" day| days"));
}

void TestTranslations::theCatalogueOfTheLanguageIsAskedFirst()
{
    // In a language that the library has no catalogue of: the text of the test's is German all the same.
    QVERIFY(QFile::copy(QStringLiteral(KRA_TEST_CATALOGUE), _catalogues + QStringLiteral("/kra-quota-plugin_fr.qm")));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("fr_FR.UTF-8"));
    QCOMPARE(suffixes(environment), QStringLiteral(" Tag| Tage"));
}

void TestTranslations::germanNeedsNoInstall()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
    QCOMPARE(suffixes(environment), QStringLiteral(" Tag| Tage"));
}

namespace
{
int printSuffixes()
{
    LocalComputer localComputer;
    ModuleTree tree;
    tree.addModule(&localComputer);
    PluginLoader loader(tree);
    loader.loadFile(QStringLiteral(KRA_QUOTA_PLUGIN));
    Module *module = tree.module(QStringLiteral("QuotaGeneralModule"));
    if (!module)
        return 1;
    auto *spinBox = module->elementWidget(QStringLiteral("QuotaGeneralElement"), ElementEditor::MainRole)
                        ->object()
                        ->findChild<QSpinBox *>(QStringLiteral("_blocksUsersDaysGraceSpinBox"));
    QStringList suffixes;
    for (const int value : {1, 2}) {
        spinBox->setValue(value);
        suffixes += spinBox->suffix();
    }
    std::fputs(qPrintable(suffixes.join(QLatin1Char('|'))), stdout);
    return 0;
}
} // namespace

int main(int argc, char *argv[])
{
    if (argc == 2 && qstrcmp(argv[1], "suffixes") == 0) {
        const QApplication application(argc, argv);
        return printSuffixes();
    }
    Sandbox::enter();
    const QApplication application(argc, argv);
    TestTranslations test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_translations.moc"
