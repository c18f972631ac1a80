// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <startup.h>

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

/// What kra-console answers where it opens no window.
class CommandLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersWithoutADisplay_data();
    void answersWithoutADisplay();
    void settingsAreRootsAlone();
};

void CommandLineTest::answersWithoutADisplay_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("variable"); // and its value, set for the process
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("error");
    const QString none;
    const QString usage = QStringLiteral("Usage:");
    QTest::newRow("help") << QStringList{QStringLiteral("--help")} << none << 0 << usage << none;
    QTest::newRow("short help") << QStringList{QStringLiteral("-h")} << none << 0 << usage << none;
    QTest::newRow("version") << QStringList{QStringLiteral("--version")} << none << 0 << QStringLiteral("kra-console ")
                             << none;
    QTest::newRow("unknown option") << QStringList{QStringLiteral("--nonsense")} << none << 2 << none
                                    << QStringLiteral("nonsense");
    QTest::newRow("stray argument") << QStringList{QStringLiteral("stray")} << none << 2 << none
                                    << QStringLiteral("stray");
    QTest::newRow("option without its value")
        << QStringList{QStringLiteral("--plugins")} << none << 2 << none << QStringLiteral("plugins");
    // The languages in their order, up to one that there is a catalogue for; English needs none.
    const QString german = QStringLiteral("Verwaltung dieses Rechners.");
    const QString english = QStringLiteral("Administration of this computer.");
    const std::pair<const char *, QString> languages[] = {{"LANGUAGE=de", german},
                                                          {"LANGUAGE=de_AT:en", german},
                                                          {"LANGUAGE=fr_FR:de", german},
                                                          {"LANGUAGE=en_GB:de", english},
                                                          {"LANG=de_DE.UTF-8", german},
                                                          {"LC_MESSAGES=de_CH.UTF-8", german},
                                                          {"LANG=C", english}};
    for (const auto &[variable, text] : languages)
        QTest::newRow(variable) << QStringList{QStringLiteral("--help")} << QString::fromLatin1(variable) << 0 << text
                                << none;
    QTest::newRow("no display, in German") << QStringList() << QStringLiteral("LANGUAGE=de") << 1 << none
                                           << QStringLiteral("kra-console: Es kann kein Fenster geöffnet werden: ");
    QTest::newRow("no display") << QStringList() << none << 1 << none << QStringLiteral("no window can be opened");
    QTest::newRow("no display, an option of Qt") << QStringList{QStringLiteral("-style"), QStringLiteral("fusion")}
                                                 << none << 1 << none << QStringLiteral("no window can be opened");
    QTest::newRow("a display that is not there")
        << QStringList() << QStringLiteral("DISPLAY=:4711") << 1 << none << QStringLiteral(":4711");
    QTest::newRow("a Wayland display that is not there")
        << QStringList() << QStringLiteral("WAYLAND_DISPLAY=/nowhere/wayland-0") << 1 << none
        << QStringLiteral("no window can be opened");
}

void CommandLineTest::answersWithoutADisplay()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, variable);
    QFETCH(int, code);
    QFETCH(QString, output);
    QFETCH(QString, error);
    const QTemporaryDir home;
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("HOME"), home.path());
    if (!variable.isEmpty())
        environment.insert(variable.section(QLatin1Char('='), 0, 0), variable.section(QLatin1Char('='), 1));
    QProcess console;
    console.setProcessEnvironment(environment);
    console.start(QCoreApplication::applicationDirPath() + QStringLiteral("/kra-console"), arguments);
    QVERIFY(console.waitForFinished(60000));
    const QString printed = QString::fromUtf8(console.readAllStandardOutput());
    const QString complained = QString::fromUtf8(console.readAllStandardError());
    QVERIFY2(console.exitStatus() == QProcess::NormalExit, qPrintable(complained));
    QCOMPARE(console.exitCode(), code);
    QVERIFY2(output.isEmpty() ? printed.isEmpty() : printed.contains(output), qPrintable(printed));
    QVERIFY2(error.isEmpty() ? complained.isEmpty() : complained.contains(error), qPrintable(complained));
    if (code == 1)
        QCOMPARE(complained.count(QLatin1Char('\n')), 1);
    if (code == 2)
        QVERIFY2(complained.contains(QLatin1String("Usage:")), qPrintable(complained));
}

void CommandLineTest::settingsAreRootsAlone()
{
    const QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    const auto modeOf = [&home](const char *name) {
        struct stat state = {};
        const QByteArray path = QFile::encodeName(home.path()) + "/.config/kra" + name;
        return stat(path.constData(), &state) == 0 ? state.st_mode & 07777 : mode_t(0);
    };
    Startup::keepSettingsPrivate();
    QCOMPARE(modeOf(""), mode_t(0700));
    QCOMPARE(modeOf("/kra-console.conf"), mode_t(0600));
    // Also where an earlier console made them for all to read; and what is in it stays.
    QFile file(home.path() + QStringLiteral("/.config/kra/kra-console.conf"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[lists]\nreadAlways=true\n");
    file.close();
    chmod(QFile::encodeName(file.fileName()).constData(), 0644);
    chmod(QFile::encodeName(QFileInfo(file).path()).constData(), 0755);
    Startup::keepSettingsPrivate();
    QCOMPARE(modeOf(""), mode_t(0700));
    QCOMPARE(modeOf("/kra-console.conf"), mode_t(0600));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("[lists]\nreadAlways=true\n"));
}

QTEST_GUILESS_MAIN(CommandLineTest)
#include "tst_commandline.moc"
