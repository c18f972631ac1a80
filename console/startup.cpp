// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "startup.h"

#include <QByteArray>
#include <QFile>
#include <QVector>

#include <algorithm>
#include <csignal>
#include <memory>
#include <type_traits>

#include <fcntl.h>
#include <langinfo.h>
#include <linux/close_range.h>
#include <locale.h>
#include <malloc.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr char utf8Locale[] = "C.UTF-8";

struct Category
{
    int mask;
    const char *name;
};

/// Every category but LC_CTYPE.
constexpr Category categories[] = {
    {LC_NUMERIC_MASK, "LC_NUMERIC"},
    {LC_TIME_MASK, "LC_TIME"},
    {LC_COLLATE_MASK, "LC_COLLATE"},
    {LC_MONETARY_MASK, "LC_MONETARY"},
    {LC_MESSAGES_MASK, "LC_MESSAGES"},
    {LC_PAPER_MASK, "LC_PAPER"},
    {LC_NAME_MASK, "LC_NAME"},
    {LC_ADDRESS_MASK, "LC_ADDRESS"},
    {LC_TELEPHONE_MASK, "LC_TELEPHONE"},
    {LC_MEASUREMENT_MASK, "LC_MEASUREMENT"},
    {LC_IDENTIFICATION_MASK, "LC_IDENTIFICATION"},
};

using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&freelocale)>;

/// Null where the machine does not have the locale. An empty name stands for what the environment asks for.
Locale openLocale(int mask, const QByteArray &name)
{
    return {newlocale(mask, name.constData(), nullptr), &freelocale};
}

/// What setlocale(3) would take for a category.
QByteArray wantedLocale(const char *category)
{
    for (const char *variable : {"LC_ALL", category, "LANG"}) {
        const QByteArray value = qgetenv(variable);
        if (!value.isEmpty())
            return value;
    }
    return "C";
}

/// "de_DE" of "de_DE.UTF-8" and "de_DE.ISO-8859-15@euro".
QByteArray languageOf(const QByteArray &locale)
{
    const auto end = std::find_if(locale.begin(), locale.end(), [](char c) { return c == '.' || c == '@'; });
    return locale.left(static_cast<int>(end - locale.begin()));
}

/// The names of the environment's variables, copied, so that they can be unset on the way.
QVector<QByteArray> environmentNames()
{
    QVector<QByteArray> names;
    for (char **entry = environ; *entry; ++entry) {
        const QByteArray text(*entry);
        names.append(text.left(text.indexOf('=')));
    }
    return names;
}

bool belongsTo(uid_t account, const QByteArray &folder)
{
    struct stat status = {};
    return stat(folder.constData(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == account;
}

/// Names the display's files with their whole paths, since they are looked up below folders that change.
void keepDisplay()
{
    const QByteArray authority = qgetenv("HOME") + "/.Xauthority";
    if (qEnvironmentVariableIsEmpty("XAUTHORITY") && !qEnvironmentVariableIsEmpty("DISPLAY") &&
        QFile::exists(QFile::decodeName(authority)))
        qputenv("XAUTHORITY", authority);

    const QByteArray socket = qgetenv("WAYLAND_DISPLAY");
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    if (!socket.isEmpty() && !socket.startsWith('/') && !folder.isEmpty())
        qputenv("WAYLAND_DISPLAY", folder + '/' + socket);
}
} // namespace

void Startup::prepareProcess()
{
    useOneLargeHeap();
    ignoreBrokenPipes();
    keepDescriptors();
    useSystemPath();
    useCommonFileMask();
    useUtf8();
    nameTimeZone();
    nameAskingUser();
    choosePlatform();
    if (geteuid() == 0) {
        keepKnownEnvironment();
        useFoldersOf(0);
        useOwnSessionBus();
    }
}

void Startup::useOneLargeHeap()
{
    constexpr int mebibyte = 1024 * 1024;
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_TOP_PAD, 16 * mebibyte);
    mallopt(M_TRIM_THRESHOLD, 64 * mebibyte);
    mallopt(M_MMAP_THRESHOLD, 32 * mebibyte); // the most that it takes; larger ones have a mapping of their own
}

void Startup::ignoreBrokenPipes()
{
    std::signal(SIGPIPE, SIG_IGN); // which QProcess takes back in the child
}

void Startup::keepDescriptors()
{
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
}

void Startup::choosePlatform()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "wayland");
}

void Startup::useOwnSessionBus()
{
    const QByteArray socket = qgetenv("XDG_RUNTIME_DIR") + "/bus"; // the folder is root's
    const bool hasOwn = qEnvironmentVariableIsSet("XDG_RUNTIME_DIR") && QFile::exists(QFile::decodeName(socket));
    qputenv("DBUS_SESSION_BUS_ADDRESS", hasOwn ? "unix:path=" + socket : QByteArray("disabled:"));
}

void Startup::keepSettingsPrivate()
{
    const QByteArray config = qgetenv("HOME") + "/.config";
    const QByteArray folder = config + "/kra";
    mkdir(config.constData(), S_IRWXU);
    mkdir(folder.constData(), S_IRWXU);
    chmod(folder.constData(), S_IRWXU);
    const int file =
        open((folder + "/kra-console.conf").constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    if (file < 0)
        return;
    fchmod(file, S_IRUSR | S_IWUSR); // which stays: a file of settings is replaced by one of its mode
    close(file);
}

void Startup::useSystemPath()
{
    qputenv("PATH", "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin");
}

void Startup::useCommonFileMask()
{
    umask(S_IWGRP | S_IWOTH);
}

void Startup::useUtf8()
{
    const Locale whole = openLocale(LC_ALL_MASK, "");
    if (whole && QByteArray(nl_langinfo_l(CODESET, whole.get())) == "UTF-8")
        return;

    for (const Category &category : categories) {
        const QByteArray wanted = wantedLocale(category.name);
        if (openLocale(category.mask, wanted)) {
            qputenv(category.name, wanted);
            continue;
        }
        // Texts are looked up by the language's name, for which the machine need not have the locale.
        if (category.mask == LC_MESSAGES_MASK && qEnvironmentVariableIsEmpty("LANGUAGE"))
            qputenv("LANGUAGE", languageOf(wanted));
        qputenv(category.name, utf8Locale);
    }
    qunsetenv("LC_ALL");
    qputenv("LC_CTYPE", utf8Locale);
}

void Startup::nameTimeZone()
{
    if (!qEnvironmentVariableIsSet("TZ")) // set and empty means UTC
        qputenv("TZ", ":/etc/localtime");
}

void Startup::useFoldersOf(uid_t account)
{
    keepDisplay();
    const passwd *entry = getpwuid(account); // no other thread yet
    qputenv("HOME", entry && *entry->pw_dir ? QByteArray(entry->pw_dir) : QByteArray("/"));
    for (const char *name :
         {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_CONFIG_DIRS", "XDG_DATA_DIRS"})
        qunsetenv(name);
    if (belongsTo(account, qgetenv("XDG_RUNTIME_DIR")))
        return;
    const QByteArray folder = "/run/user/" + QByteArray::number(account);
    if (belongsTo(account, folder))
        qputenv("XDG_RUNTIME_DIR", folder);
    else
        qunsetenv("XDG_RUNTIME_DIR");
}

void Startup::keepKnownEnvironment()
{
    constexpr const char *names[] = {
        // who, and where
        "HOME",
        "LOGNAME",
        "PATH",
        "PKEXEC_UID",
        "SHELL",
        "TERM",
        "USER",
        // the language and the time
        "LANG",
        "LANGUAGE",
        "TZ",
        // the display and its session
        "AT_SPI_BUS_ADDRESS",
        "DESKTOP_SESSION",
        "DESKTOP_STARTUP_ID",
        "DISPLAY",
        "GNOME_DESKTOP_SESSION_ID",
        "KDE_FULL_SESSION",
        "KDE_SESSION_VERSION",
        "NO_AT_BRIDGE",
        "WAYLAND_DISPLAY",
        "XAUTHORITY",
        "XCURSOR_SIZE",
        "XCURSOR_THEME",
        "XDG_CURRENT_DESKTOP",
        "XDG_RUNTIME_DIR",
        "XDG_SEAT",
        "XDG_VTNR",
        "XMODIFIERS",
        // how it is drawn
        "LIBGL_ALWAYS_SOFTWARE",
        "QT_ACCESSIBILITY",
        "QT_AUTO_SCREEN_SCALE_FACTOR",
        "QT_ENABLE_HIGHDPI_SCALING",
        "QT_FONT_DPI",
        "QT_IM_MODULE",
        "QT_LINUX_ACCESSIBILITY_ALWAYS_ON",
        "QT_LOGGING_RULES",
        "QT_QPA_PLATFORM",
        "QT_QPA_PLATFORMTHEME",
        "QT_SCALE_FACTOR",
        "QT_SCALE_FACTOR_ROUNDING_POLICY",
        "QT_SCREEN_SCALE_FACTORS",
        "QT_STYLE_OVERRIDE",
        "QT_USE_PHYSICAL_DPI",
        "QT_X11_NO_MITSHM",
        "QT_XCB_GL_INTEGRATION",
    };
    constexpr const char *beginnings[] = {"LC_", "SUDO_", "XDG_SESSION_"};
    for (const QByteArray &name : environmentNames()) {
        const bool known = std::find(std::begin(names), std::end(names), name) != std::end(names) ||
                           std::any_of(std::begin(beginnings), std::end(beginnings),
                                       [&name](const char *beginning) { return name.startsWith(beginning); });
        if (!known)
            qunsetenv(name.constData());
    }
}

void Startup::dropForeignArguments(int &argc, char *argv[])
{
    if (geteuid() != 0)
        return;
    int kept = 0;
    for (int i = 0; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (i > 0 && (argument == "-platformpluginpath" || argument == "--platformpluginpath"))
            ++i; // and its value
        else
            argv[kept++] = argv[i];
    }
    argc = kept;
    argv[argc] = nullptr;
}

void Startup::nameAskingUser()
{
    const QByteArray asked = qgetenv("PKEXEC_UID");
    if (!asked.isEmpty() && qEnvironmentVariableIsEmpty("SUDO_UID"))
        qputenv("SUDO_UID", asked);
}
