// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "standin.h"

#include <QFile>
#include <QFileInfo>

namespace
{

void fill(const QString &path, QIODevice::OpenMode mode, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(mode) || file.write(bytes) != bytes.size() || !file.flush()) {
        qFatal("The sandbox cannot write %s: %s", qPrintable(path), qPrintable(file.errorString()));
    }
}

// It is built into the folder of all programs, that of the test among them.
QString standInProgram()
{
    return QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).path() + QStringLiteral("/standin");
}

} // namespace

StandIn::StandIn(const QString &programPath, const QString &scriptPath)
    : _programPath(programPath)
    , _scriptPath(scriptPath)
{
    QFile::remove(_programPath);
    // A link, not a copy: a file that was just written cannot be run while another child still holds it open.
    if (!QFile::link(standInProgram(), _programPath)) {
        qFatal("The sandbox cannot make %s", qPrintable(_programPath));
    }
    fill(_scriptPath, QIODevice::WriteOnly, QByteArray());
}

StandIn &StandIn::prints(const QByteArray &bytes)
{
    return add("out", bytes);
}

StandIn &StandIn::complains(const QByteArray &bytes)
{
    return add("err", bytes);
}

StandIn &StandIn::sleeps(int milliseconds)
{
    return add("sleep " + QByteArray::number(milliseconds));
}

StandIn &StandIn::hangs()
{
    return add("hang");
}

StandIn &StandIn::ignoresTermination()
{
    return add("ignore-termination");
}

void StandIn::exits(int code)
{
    add("exit " + QByteArray::number(code));
}

void StandIn::crashes(int signal)
{
    add("crash " + QByteArray::number(signal));
}

void StandIn::cannotBeStarted()
{
    replaceByFile(true);
}

void StandIn::isNotExecutable()
{
    replaceByFile(false);
}

// A step is a line; one that writes names the number of bytes, which follow the line.
StandIn &StandIn::add(const QByteArray &step, const QByteArray &bytes)
{
    const bool writes = step == "out" || step == "err";
    fill(_scriptPath, QIODevice::Append,
         (writes ? step + ' ' + QByteArray::number(bytes.size()) : step) + '\n' + bytes);
    return *this;
}

void StandIn::replaceByFile(bool executable)
{
    QFile::remove(_programPath);
    fill(_programPath, QIODevice::WriteOnly, "This is not a program.\n");
    QFile::Permissions permissions = QFile::ReadOwner | QFile::WriteOwner;
    if (executable) {
        permissions |= QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
    }
    QFile::setPermissions(_programPath, permissions);
}
