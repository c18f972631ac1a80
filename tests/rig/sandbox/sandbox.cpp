// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sandbox.h"

#include "privatemounts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include <sys/mount.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

const char *const accounts = "root:x:0:0:root:/root:/bin/bash\n"
                             "daemon:x:1:1:daemon:/usr/sbin:/usr/sbin/nologin\n"
                             "nobody:x:65534:65534:nobody:/nonexistent:/usr/sbin/nologin\n"
                             "anna:x:1000:1000:Anna,,,:/home/anna:/bin/bash\n";
const char *const groups = "root:x:0:\n"
                           "daemon:x:1:\n"
                           "nogroup:x:65534:\n"
                           "anna:x:1000:\n";

// What the dynamic linker, the C library and Qt need of the real /etc. All else a test brings itself.
const char *const borrowed[] = {"alternatives", "fonts", "ld.so.cache", "localtime", "nsswitch.conf", "timezone"};

// The folder that holds all of a sandbox; set by enter().
fs::path &root()
{
    static fs::path path;
    return path;
}

QString path(const QString &name)
{
    return QString::fromStdString(root().string()) + QLatin1Char('/') + name;
}

void makeFolder(const fs::path &folder)
{
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        PrivateMounts::fail("make " + folder.string(), error.value());
    }
}

void borrowFromRealEtc(const fs::path &etc)
{
    for (const char *name : borrowed) {
        const fs::path source = fs::path("/etc") / name;
        std::error_code error;
        if (fs::exists(fs::symlink_status(source, error))) {
            fs::copy(source, etc / name, fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
        }
        if (error) {
            PrivateMounts::fail("copy " + source.string(), error.value());
        }
    }
}

// The content goes with the namespace; what is left to remove is the folder it was mounted on.
void leave()
{
    umount2(root().c_str(), MNT_DETACH);
    rmdir(root().c_str());
}

} // namespace

void Sandbox::enter()
{
    PrivateMounts::enterNamespace();

    std::string folder = (fs::temp_directory_path() / "kra-sandbox-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        PrivateMounts::fail("make " + folder, errno);
    }
    root() = folder;
    std::atexit(leave);
    PrivateMounts::mountMemory(folder);
    for (const char *part : {"etc", "backups", "bin", "scripts", "folders", "home"}) {
        makeFolder(root() / part);
    }
    borrowFromRealEtc(root() / "etc");
    PrivateMounts::replaceFolder(root() / "etc", "/etc");
    PrivateMounts::replaceFolder(root() / "backups", "/var/backups");

    qputenv("PATH", QFile::encodeName(path(QStringLiteral("bin"))));
    // Settings and caches of whoever runs the test are as little the test's as its /etc.
    qputenv("HOME", QFile::encodeName(path(QStringLiteral("home"))));
    for (const char *variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"}) {
        qunsetenv(variable);
    }
}

Sandbox::Sandbox()
{
    if (root().empty()) {
        qFatal("Sandbox::enter() comes first in main(): see KRA_SANDBOX_MAIN");
    }
    reset();
}

void Sandbox::reset()
{
    QSet<QString> kept;
    for (const char *name : borrowed) {
        kept.insert(QString::fromLatin1(name));
    }
    const QStringList names =
        QDir(QStringLiteral("/etc")).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        if (!kept.contains(name)) {
            removeEtc(name);
        }
    }
    clearBackups();
    writeEtc(QStringLiteral("fstab"), QByteArray());
    writeEtc(QStringLiteral("mtab"), QByteArray());
    writeEtc(QStringLiteral("passwd"), accounts);
    writeEtc(QStringLiteral("group"), groups);

    for (const char *part : {"bin", "scripts", "folders", "home"}) {
        std::error_code error;
        fs::remove_all(root() / part, error);
        makeFolder(root() / part);
    }
    QFile::remove(path(QStringLiteral("calls")));
    kernel().reset();
}

void Sandbox::writeEtc(const QString &name, const QByteArray &content)
{
    const QString filePath = QStringLiteral("/etc/") + name;
    QDir().mkpath(QFileInfo(filePath).path());
    QFile::remove(filePath);
    QFile file(filePath);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush()) {
        qFatal("The sandbox cannot write %s: %s", qPrintable(filePath), qPrintable(file.errorString()));
    }
}

QByteArray Sandbox::readEtc(const QString &name) const
{
    QFile file(QStringLiteral("/etc/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Sandbox::removeEtc(const QString &name)
{
    std::error_code error;
    fs::remove_all(fs::path("/etc") / name.toStdString(), error);
    if (error) {
        qFatal("The sandbox cannot remove /etc/%s: %s", qPrintable(name), error.message().c_str());
    }
}

QDir Sandbox::backups()
{
    return {QStringLiteral("/var/backups"), QString(), QDir::Name, QDir::Files};
}

void Sandbox::clearBackups()
{
    const QStringList names = backups().entryList();
    for (const QString &name : names) {
        QFile::remove(backups().filePath(name));
    }
}

QByteArrayList Sandbox::backupContents()
{
    QByteArrayList contents;
    const QStringList names = backups().entryList();
    for (const QString &name : names) {
        QFile file(backups().filePath(name));
        contents.append(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable"));
    }
    return contents;
}

QString Sandbox::folder(const QString &name)
{
    const QString folderPath = path(QStringLiteral("folders/") + name);
    makeFolder(folderPath.toStdString());
    return folderPath;
}

StandIn Sandbox::standIn(const QString &program)
{
    return {path(QStringLiteral("bin/") + program), path(QStringLiteral("scripts/") + program)};
}

QList<StandInCall> Sandbox::calls() const
{
    QFile log(path(QStringLiteral("calls")));
    if (!log.open(QIODevice::ReadOnly)) {
        return {};
    }
    QList<StandInCall> calls;
    const QByteArrayList texts = log.readAll().split('\0');
    // Each text ends with a NUL, so that there is an empty one after the last.
    for (int next = 0; next + 2 < texts.size();) {
        StandInCall call;
        call.program = QString::fromLocal8Bit(texts.at(next++));
        const int argumentCount = texts.at(next++).toInt();
        const int environmentCount = texts.at(next++).toInt();
        call.arguments = texts.mid(next, argumentCount);
        next += argumentCount;
        for (const QByteArray &entry : texts.mid(next, environmentCount)) {
            const int equals = entry.indexOf('=');
            call.environment.insert(entry.left(equals), entry.mid(equals + 1));
        }
        next += environmentCount;
        calls.append(call);
    }
    return calls;
}

QList<StandInCall> Sandbox::calls(const QString &program) const
{
    QList<StandInCall> found = calls();
    found.erase(std::remove_if(found.begin(), found.end(),
                               [&program](const StandInCall &call) { return call.program != program; }),
                found.end());
    return found;
}
