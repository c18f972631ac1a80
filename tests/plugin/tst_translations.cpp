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
#include <QLocale>
#include <QSpinBox>
#include <QtTest>

/// The catalogue is there before the first class of the plug-in is built.
class TestTranslations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theEditorIsBuiltInTheSystemsLanguage();

private:
    Sandbox _sandbox;
};

void TestTranslations::initTestCase()
{
    // Only this one folder of /usr/share is there; all that is needed of the others was read already.
    const QString share = _sandbox.folder(QStringLiteral("share"));
    const QString catalogues = share + QStringLiteral("/zel/translations/zel-admin-tev");
    QVERIFY(QDir().mkpath(catalogues));
    QVERIFY(QFile::copy(QStringLiteral(KRA_TRANSLATIONS "/kra-quota-plugin_en.qm"),
                        catalogues + QStringLiteral("/kra-quota-plugin_en.qm")));
    PrivateMounts::replaceFolder(share.toStdString(), "/usr/share");
    _sandbox.standIn(QStringLiteral("modinfo"));
}

void TestTranslations::theEditorIsBuiltInTheSystemsLanguage()
{
    QCOMPARE(QLocale::system().name(), QStringLiteral("en_US"));
    LocalComputer localComputer;
    ModuleTree tree;
    tree.addModule(&localComputer);
    PluginLoader loader(tree);
    loader.loadFile(QStringLiteral(KRA_QUOTA_PLUGIN));
    Module *module = tree.module(QStringLiteral("QuotaGeneralModule"));
    QVERIFY(module);
    auto *spinBox = module->elementWidget(QStringLiteral("QuotaGeneralElement"), ElementEditor::MainRole)
                        ->object()
                        ->findChild<QSpinBox *>(QStringLiteral("_blocksUsersDaysGraceSpinBox"));
    QVERIFY(spinBox);
    QCOMPARE(spinBox->suffix(), QStringLiteral(" days"));
    spinBox->setValue(1);
    QCOMPARE(spinBox->suffix(), QStringLiteral(" day"));
}

int main(int argc, char *argv[])
{
    qputenv("LC_ALL", "en_US.UTF-8"); // before Qt asks for the system's language
    Sandbox::enter();
    const QApplication application(argc, argv);
    TestTranslations test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_translations.moc"
