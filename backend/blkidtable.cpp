// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "blkidtable.h"

#include "systemnames.h"

#include <QRegularExpression>
#include <QStringMatcher>

#include <algorithm>

namespace
{

constexpr int KeyLength = 4; // that of "UUID", whatever the key

/// The regular expression that finds a device's line; empty for a spelling of no known form.
QString patternFor(const QString &spec)
{
    if (spec.startsWith(QLatin1Char('/')))
        return spec + QLatin1Char(':');
    for (const QLatin1String key : SystemNames::DeviceKeys) {
        if (spec.startsWith(key)) {
            QString value = spec.mid(KeyLength);
            value.remove(QLatin1Char('"')).remove(QLatin1Char('='));
            return QStringLiteral("%1=\"%2\"").arg(key, value);
        }
    }
    return {};
}

/// Whether a pattern matches itself and nothing else, so that searching for it as a text gives the same answer.
bool isPlainText(const QString &pattern)
{
    return std::all_of(pattern.cbegin(), pattern.cend(), [](QChar character) {
        const char16_t code = character.unicode();
        return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9') ||
               code == '/' || code == ':' || code == '=' || code == '"' || code == '-' || code == '_';
    });
}

QString firstMatchingLine(const QStringList &lines, const QString &pattern)
{
    if (isPlainText(pattern)) {
        const QStringMatcher text(pattern);
        for (const QString &line : lines) {
            if (text.indexIn(line) >= 0)
                return line;
        }
        return {};
    }
    const QRegularExpression expression(pattern);
    if (!expression.isValid()) // matching it would print a warning for every line
        return {};
    for (const QString &line : lines) {
        if (expression.match(line).hasMatch())
            return line;
    }
    return {};
}

} // namespace

BlkidTable::BlkidTable(QStringList lines)
    : _lines(std::move(lines))
{}

QString BlkidTable::resolve(const QString &spec)
{
    static const QRegularExpression devicePath(QStringLiteral("^(.+):"));

    const QString pattern = patternFor(spec);
    if (pattern.isEmpty())
        return {};
    const auto known = _pathsByPattern.constFind(pattern);
    if (known != _pathsByPattern.constEnd())
        return *known;
    const QString path = devicePath.match(firstMatchingLine(_lines, pattern)).captured(1);
    _pathsByPattern.insert(pattern, path);
    return path;
}

QStringList BlkidTable::quotaDevices(const QString &spec)
{
    const auto known = _quotaDevicesBySpec.constFind(spec);
    if (known != _quotaDevicesBySpec.constEnd())
        return *known;
    const QStringMatcher text(spec);
    QStringList paths;
    for (const Device &device : devices()) {
        if (device.canCarryQuotas && text.indexIn(device.line) >= 0)
            paths.append(device.path);
    }
    _quotaDevicesBySpec.insert(spec, paths);
    return paths;
}

QString BlkidTable::filesystemType(const QString &spec)
{
    const QVector<Device> &all = devices();
    const QStringMatcher text(spec);
    const auto found = std::find_if(all.cbegin(), all.cend(),
                                    [&text](const Device &device) { return text.indexIn(device.line) >= 0; });
    return found == all.cend() ? QString() : found->type;
}

const QVector<BlkidTable::Device> &BlkidTable::devices()
{
    static const QRegularExpression typeOfDevice(QStringLiteral("TYPE=(\\S+) ?"));
    static const QRegularExpression pathOfDevice(QStringLiteral("^(/\\S+): "));

    if (_devices.isEmpty()) {
        _devices.reserve(_lines.size());
        for (const QString &line : qAsConst(_lines)) {
            Device device;
            device.line = line;
            device.line.remove(QLatin1Char('"'));
            device.type = typeOfDevice.match(device.line).captured(1);
            device.path = pathOfDevice.match(device.line).captured(1);
            device.canCarryQuotas = !device.path.isEmpty() && SystemNames::isQuotaFilesystem(device.type);
            _devices.append(device);
        }
    }
    return _devices;
}
