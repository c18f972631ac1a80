// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QtTest>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

/// What a process that was started in a strange environment finds after the console's start.
class StartupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pathIsTheSystems();
    void filesAreForAllToReadAndForTheirOwnerToWrite();
    void textsAreUtf8InEveryLocale_data();
    void textsAreUtf8InEveryLocale();
    void goodLocaleIsLeftAlone();
    void timeZoneStaysWhatItIs_data();
    void timeZoneStaysWhatItIs();
    void rootUsesItsOwnFolders();
    void displayStaysReachable();
    void rootKeepsOnlyWhatIsKnown();
    void rootTakesNoPlatformFromElsewhere_data();
    void rootTakesNoPlatformFromElsewhere();
    void rootSpeaksToNoUsersBus();
    void waylandAloneIsUsed();
    void openDescriptorsAreNotHandedOn();
    void threadsShareAHeap();
    void aBrokenPipeIsNotTheEnd();
    void askingUserIsNamed_data();
    void askingUserIsNamed();

private:
    using Environment = QMap<QString, QString>;
    static Environment start(const Environment &changes, mode_t mask = 022, const QStringList &arguments = {});
    static bool isRoot() { return geteuid() == 0; }
};

StartupTest::Environment StartupTest::start(const Environment &changes, mode_t mask, const QStringList &arguments)
{
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("HOME"), QStringLiteral("/nowhere"));
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/nowhere/bin:."));
    for (auto change = changes.begin(); change != changes.end(); ++change)
        environment.insert(change.key(), change.value());
    QProcess probe;
    probe.setProcessEnvironment(environment);
    const mode_t before = umask(mask);
    probe.start(QCoreApplication::applicationDirPath() + QStringLiteral("/startupprobe"), arguments);
    const bool ended = probe.waitForFinished();
    umask(before);
    Environment found;
    if (!ended || probe.exitStatus() != QProcess::NormalExit || probe.exitCode() != 0)
        return found;
    const QStringList lines = QString::fromUtf8(probe.readAllStandardOutput()).split(QLatin1Char('\n'));
    for (const QString &line : lines)
        found.insert(line.section(QLatin1Char('='), 0, 0), line.section(QLatin1Char('='), 1));
    return found;
}

void StartupTest::pathIsTheSystems()
{
    QCOMPARE(start({}).value(QStringLiteral("PATH")),
             QStringLiteral("/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"));
}

void StartupTest::filesAreForAllToReadAndForTheirOwnerToWrite()
{
    QCOMPARE(start({}, 0).value(QStringLiteral("probe umask")), QStringLiteral("22"));
    QCOMPARE(start({}, 077).value(QStringLiteral("probe umask")), QStringLiteral("22"));
}

void StartupTest::textsAreUtf8InEveryLocale_data()
{
    QTest::addColumn<Environment>("environment");
    QTest::addColumn<QString>("language");

    const QString lang = QStringLiteral("LANG");
    const QString all = QStringLiteral("LC_ALL");
    const QString type = QStringLiteral("LC_CTYPE");
    const QString german = QStringLiteral("de_DE");
    QTest::newRow("nothing said") << Environment() << QStringLiteral("C");
    QTest::newRow("C for all") << Environment{{all, QStringLiteral("C")}, {lang, QStringLiteral("de_DE.UTF-8")}}
                               << QStringLiteral("C");
    QTest::newRow("C for characters") << Environment{{type, QStringLiteral("C")}, {lang, QStringLiteral("C.UTF-8")}}
                                      << QStringLiteral("C");
    QTest::newRow("POSIX") << Environment{{lang, QStringLiteral("POSIX")}} << QStringLiteral("C");
    // None of these need be on the machine that runs the test.
    QTest::newRow("other characters") << Environment{{lang, QStringLiteral("de_DE.ISO-8859-1")}} << german;
    QTest::newRow("other characters for all")
        << Environment{{all, QStringLiteral("de_DE.ISO-8859-15@euro")}, {lang, QStringLiteral("fr_FR")}} << german;
    QTest::newRow("UTF-8 that is not there") << Environment{{lang, QStringLiteral("de_DE.UTF-8")}} << german;
    QTest::newRow("language of its own") << Environment{{lang, QStringLiteral("C.UTF-8")},
                                                        {QStringLiteral("LC_MESSAGES"), QStringLiteral("de_DE.UTF-8")}}
                                         << german;
    QTest::newRow("languages in order") << Environment{{lang, QStringLiteral("fr_FR.UTF-8")},
                                                       {QStringLiteral("LANGUAGE"), QStringLiteral("de_DE:fr")}}
                                        << german;
}

void StartupTest::textsAreUtf8InEveryLocale()
{
    QFETCH(Environment, environment);
    QFETCH(QString, language);
    const Environment found = start(environment);
    QCOMPARE(found.value(QStringLiteral("probe codec")), QStringLiteral("UTF-8"));
    QCOMPARE(found.value(QStringLiteral("probe text")), QStringLiteral("1"));
    if (language == QLatin1String("C"))
        QVERIFY(!found.value(QStringLiteral("probe languages")).contains(QLatin1String("de")));
    else
        QVERIFY2(found.value(QStringLiteral("probe languages")).startsWith(QLatin1String("de")),
                 qPrintable(found.value(QStringLiteral("probe languages"))));
}

void StartupTest::goodLocaleIsLeftAlone()
{
    const Environment found = start({{QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8")}});
    QCOMPARE(found.value(QStringLiteral("LC_ALL")), QStringLiteral("C.UTF-8"));
    QVERIFY(!found.contains(QStringLiteral("LC_CTYPE")));
    QVERIFY(!found.contains(QStringLiteral("LC_MESSAGES")));
}

void StartupTest::timeZoneStaysWhatItIs_data()
{
    QTest::addColumn<Environment>("environment");
    QTest::addColumn<QString>("named");
    const QString tz = QStringLiteral("TZ");
    QTest::newRow("the machine's") << Environment() << QStringLiteral(":/etc/localtime");
    QTest::newRow("UTC") << Environment{{tz, QString()}} << QString();
    QTest::newRow("the caller's") << Environment{{tz, QStringLiteral("Asia/Kolkata")}}
                                  << QStringLiteral("Asia/Kolkata");
}

void StartupTest::timeZoneStaysWhatItIs()
{
    QFETCH(Environment, environment);
    QFETCH(QString, named);
    const Environment found = start(environment);
    QVERIFY(found.contains(QStringLiteral("TZ")));
    QCOMPARE(found.value(QStringLiteral("TZ")), named);
    // As without the console's start.
    QProcess date;
    QProcessEnvironment surroundings;
    for (auto variable = environment.begin(); variable != environment.end(); ++variable)
        surroundings.insert(variable.key(), variable.value());
    date.setProcessEnvironment(surroundings);
    date.start(QStringLiteral("date"), {QStringLiteral("--date=@1900000000"), QStringLiteral("+%d.%m.%Y %H:%M")});
    QVERIFY(date.waitForFinished());
    QCOMPARE(found.value(QStringLiteral("probe time")), QString::fromUtf8(date.readAllStandardOutput()).trimmed());
}

void StartupTest::rootUsesItsOwnFolders()
{
    const QStringList folders = {QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("XDG_DATA_HOME"),
                                 QStringLiteral("XDG_CACHE_HOME"),  QStringLiteral("XDG_STATE_HOME"),
                                 QStringLiteral("XDG_CONFIG_DIRS"), QStringLiteral("XDG_DATA_DIRS"),
                                 QStringLiteral("XDG_RUNTIME_DIR")};
    Environment environment{{QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("Any")}};
    for (const QString &folder : folders)
        environment.insert(folder, QStringLiteral("/nowhere/x"));
    const Environment found = start(environment);
    QCOMPARE(found.value(QStringLiteral("XDG_CURRENT_DESKTOP")), QStringLiteral("Any"));
    QCOMPARE(found.value(QStringLiteral("HOME")),
             isRoot() ? QString::fromLocal8Bit(getpwuid(0)->pw_dir) : QStringLiteral("/nowhere"));
    for (const QString &folder : folders)
        QCOMPARE(found.value(folder) == QLatin1String("/nowhere/x"), !isRoot());
}

void StartupTest::displayStaysReachable()
{
    const QTemporaryDir home;
    QFile authority(home.filePath(QStringLiteral(".Xauthority")));
    QVERIFY(authority.open(QIODevice::WriteOnly));
    const Environment caller{{QStringLiteral("HOME"), home.path()},
                             {QStringLiteral("DISPLAY"), QStringLiteral(":5")},
                             {QStringLiteral("WAYLAND_DISPLAY"), QStringLiteral("wayland-0")},
                             {QStringLiteral("XDG_RUNTIME_DIR"), QStringLiteral("/run/user/4711")}};
    const Environment found = start(caller);
    QCOMPARE(found.value(QStringLiteral("DISPLAY")), QStringLiteral(":5"));
    QCOMPARE(found.value(QStringLiteral("XAUTHORITY")), isRoot() ? authority.fileName() : QString());
    QCOMPARE(found.value(QStringLiteral("WAYLAND_DISPLAY")),
             isRoot() ? QStringLiteral("/run/user/4711/wayland-0") : QStringLiteral("wayland-0"));

    Environment named = caller;
    named.insert(QStringLiteral("WAYLAND_DISPLAY"), QStringLiteral("/run/display/wayland-1"));
    QCOMPARE(start(named).value(QStringLiteral("WAYLAND_DISPLAY")), QStringLiteral("/run/display/wayland-1"));
    named.insert(QStringLiteral("XAUTHORITY"), QStringLiteral("/run/authority"));
    QCOMPARE(start(named).value(QStringLiteral("XAUTHORITY")), QStringLiteral("/run/authority"));
}

void StartupTest::rootKeepsOnlyWhatIsKnown()
{
    const QStringList dropped = {QStringLiteral("QT_PLUGIN_PATH"),     QStringLiteral("QT_QPA_PLATFORM_PLUGIN_PATH"),
                                 QStringLiteral("QML2_IMPORT_PATH"),   QStringLiteral("LD_LIBRARY_PATH"),
                                 QStringLiteral("LD_PRELOAD"),         QStringLiteral("LIBMOUNT_FSTAB"),
                                 QStringLiteral("BLKID_FILE"),         QStringLiteral("BASH_ENV"),
                                 QStringLiteral("LIBGL_DRIVERS_PATH"), QStringLiteral("GTK3_MODULES"),
                                 QStringLiteral("NOBODY_KNOWS_THIS")};
    const QStringList kept = {QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("DISPLAY"), QStringLiteral("SUDO_USER"),
                              QStringLiteral("LANGUAGE")};
    Environment environment;
    for (const QString &name : dropped)
        environment.insert(name, QString());
    for (const QString &name : kept)
        environment.insert(name, QStringLiteral("2"));
    const Environment found = start(environment);
    for (const QString &name : kept)
        QCOMPARE(found.value(name), QStringLiteral("2"));
    for (const QString &name : dropped)
        QVERIFY2(found.contains(name) != isRoot(), qPrintable(name));
}

void StartupTest::rootTakesNoPlatformFromElsewhere_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("left");
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("one dash") << QStringLiteral("-platformpluginpath /x --plugins /y")
                              << QStringLiteral("--plugins /y");
    QTest::newRow("two dashes") << QStringLiteral("-a --platformpluginpath /x b") << QStringLiteral("-a b");
    QTest::newRow("twice") << QStringLiteral("-platformpluginpath /x -platformpluginpath /y") << QString();
    QTest::newRow("without its value") << QStringLiteral("a -platformpluginpath") << QStringLiteral("a");
}

void StartupTest::rootTakesNoPlatformFromElsewhere()
{
    QFETCH(QString, given);
    QFETCH(QString, left);
    const Environment found = start({}, 022, given.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QVERIFY(found.contains(QStringLiteral("probe arguments")));
    QCOMPARE(found.value(QStringLiteral("probe arguments")), isRoot() ? left : given);
}

void StartupTest::rootSpeaksToNoUsersBus()
{
    const QString address = QStringLiteral("DBUS_SESSION_BUS_ADDRESS");
    const QString user = QStringLiteral("unix:path=/run/user/4711/bus");
    const Environment found = start({{address, user}, {QStringLiteral("XDG_RUNTIME_DIR"), QStringLiteral("/run/x")}});
    if (!isRoot()) {
        QCOMPARE(found.value(address), user);
        return;
    }
    const QString own = found.value(QStringLiteral("XDG_RUNTIME_DIR")) + QStringLiteral("/bus");
    const bool hasOwn = found.contains(QStringLiteral("XDG_RUNTIME_DIR")) && QFile::exists(own);
    QCOMPARE(found.value(address), hasOwn ? QStringLiteral("unix:path=") + own : QStringLiteral("disabled:"));
    QCOMPARE(start({}).value(address), found.value(address)); // none is started either
}

void StartupTest::waylandAloneIsUsed()
{
    const QString platform = QStringLiteral("QT_QPA_PLATFORM");
    const QString wayland = QStringLiteral("WAYLAND_DISPLAY");
    QCOMPARE(start({{wayland, QStringLiteral("wayland-0")}}).value(platform), QStringLiteral("wayland"));
    QVERIFY(!start({{wayland, QStringLiteral("wayland-0")}, {QStringLiteral("DISPLAY"), QStringLiteral(":0")}})
                 .contains(platform));
    QCOMPARE(start({{wayland, QStringLiteral("wayland-0")}, {platform, QStringLiteral("offscreen")}}).value(platform),
             QStringLiteral("offscreen"));
    QVERIFY(!start({}).contains(platform));
}

void StartupTest::aBrokenPipeIsNotTheEnd()
{
    QCOMPARE(start({}, 022).value(QStringLiteral("probe broken pipe")), QStringLiteral("ignored"));
}

void StartupTest::threadsShareAHeap()
{
    QCOMPARE(start({}, 022).value(QStringLiteral("probe heaps")), QStringLiteral("1"));
}

void StartupTest::openDescriptorsAreNotHandedOn()
{
    constexpr int descriptor = 77;
    QCOMPARE(dup2(STDERR_FILENO, descriptor), descriptor); // which goes on to the probe
    const Environment found = start({});
    close(descriptor);
    QCOMPARE(found.value(QStringLiteral("probe descriptor 77")), QStringLiteral("closed when a program is run"));
}

void StartupTest::askingUserIsNamed_data()
{
    QTest::addColumn<Environment>("environment");
    QTest::addColumn<QString>("uid");
    const QString sudo = QStringLiteral("SUDO_UID");
    const QString polkit = QStringLiteral("PKEXEC_UID");
    QTest::newRow("polkit") << Environment{{polkit, QStringLiteral("1000")}} << QStringLiteral("1000");
    QTest::newRow("sudo") << Environment{{sudo, QStringLiteral("1001")}} << QStringLiteral("1001");
    QTest::newRow("both") << Environment{{sudo, QStringLiteral("1001")}, {polkit, QStringLiteral("1000")}}
                          << QStringLiteral("1001");
    QTest::newRow("nobody") << Environment() << QString();
}

void StartupTest::askingUserIsNamed()
{
    QFETCH(Environment, environment);
    QFETCH(QString, uid);
    QCOMPARE(start(environment).value(QStringLiteral("SUDO_UID")), uid);
}

QTEST_GUILESS_MAIN(StartupTest)
#include "tst_startup.moc"
