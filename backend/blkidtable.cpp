// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "blkidtable.h"

#include "systemnames.h"

#include <QFileInfo>
#include <QRegularExpression>

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

/// What every text holds that the expression matches; nothing where it has more in it than a dot for any letter.
QStringList piecesOf(const QString &pattern)
{
    const bool isPlain = std::none_of(pattern.cbegin(), pattern.cend(), [](QChar character) {
        return QStringView(uR"(\^$[](){}|?*+)").contains(character);
    });
    return isPlain ? pattern.split(QLatin1Char('.')) : QStringList();
}

bool isLabel(const QString &key)
{
    return key.contains(QLatin1String("LABEL"));
}

bool canBeTakenForMore(const QString &label)
{
    return std::any_of(label.cbegin(), label.cend(), [](QChar character) {
        const char16_t code = character.unicode();
        return code == '/' || code == ':' || code == '=' || code == '"' || code == '\'';
    });
}

/// A name of a device that is not its path: "LABEL=home".
QString nameOf(const QString &key, const QString &value)
{
    return key + QLatin1Char('=') + value;
}

/// A backslash stands before a quote and before another backslash.
QString unescaped(QString value)
{
    for (int at = 0; (at = value.indexOf(QLatin1Char('\\'), at)) >= 0; ++at)
        value.remove(at, 1);
    return value;
}

/// The node that a path leads to; the path itself where there is none.
QString nodeOf(const QString &path)
{
    const QString node = QFileInfo(path).canonicalFilePath();
    return node.isEmpty() ? path : node;
}

/// What stands before the last colon, which need not be a path.
QString printedPath(const QString &line)
{
    return line.left(qMax(0, line.lastIndexOf(QLatin1Char(':'))));
}

/// The numbers of the lines that have a name are kept for the first of them alone.
void insertFirst(QHash<QString, int> &lines, const QString &name, int number)
{
    if (!lines.contains(name))
        lines.insert(name, number);
}

struct Patterns
{
    QRegularExpression tag{QStringLiteral(R"re(([A-Z][A-Z0-9_]*)="((?:[^"\\]|\\.)*)")re")};
    QRegularExpression type{QStringLiteral("TYPE=(\\S+) ?")};
    QRegularExpression path{QStringLiteral("^(/\\S+): ")};
};

} // namespace

struct BlkidTable::Line
{
    Line(const QString &printed, const Patterns &patterns);

    QString text;       ///< as it was printed, but for the labels
    QString plain;      ///< without the double quotes, too
    QStringList labels; ///< those that are not in `text`: "LABEL=/home"
    QStringList names;  ///< all that it is called: "UUID=1"
    Device device;
};

BlkidTable::Line::Line(const QString &printed, const Patterns &patterns)
{
    int copied = 0;
    for (auto tags = patterns.tag.globalMatch(printed); tags.hasNext();) {
        const QRegularExpressionMatch match = tags.next();
        const QString key = match.captured(1);
        const QString value = unescaped(match.captured(2));
        names.append(nameOf(key, value));
        if (isLabel(key) && canBeTakenForMore(value)) {
            text += printed.mid(copied, match.capturedStart(2) - copied);
            copied = match.capturedEnd(2);
            labels.append(names.last());
        }
        if (key == QLatin1String("TYPE"))
            device.type = value;
        if (key == QLatin1String("UUID"))
            device.uuid = value;
    }
    text += printed.mid(copied);
    plain = text;
    plain.remove(QLatin1Char('"'));
    device.firstType = patterns.type.match(plain).captured(1);
    device.path = patterns.path.match(plain).captured(1);
}

BlkidTable::BlkidTable(const QStringList &lines)
{
    const Patterns patterns;
    QStringList texts;
    QStringList plains;
    for (const QString &printed : lines) {
        const Line line(printed, patterns);
        texts.append(line.text);
        plains.append(line.plain);
        add(line);
    }
    _lines = TextIndex(texts);
    _plains = TextIndex(plains);
}

void BlkidTable::add(const Line &line)
{
    const int number = _devices.size();
    _devices.append(line.device);
    for (const QString &label : line.labels)
        _byLabel[label].append(number);
    if (line.device.path.isEmpty())
        return;
    insertFirst(_byPath, line.device.path, number);
    for (const QString &name : line.names)
        insertFirst(_byTag, name, number);
}

QString BlkidTable::resolve(const QString &spec) const
{
    const QString pattern = patternFor(spec);
    if (pattern.isEmpty())
        return {};
    const QStringList pieces = piecesOf(pattern);
    const QVector<int> candidates = _lines.holdingRarest(pieces);
    if (pieces.size() == 1) // letters that stand for themselves
        return candidates.isEmpty() ? QString() : printedPath(_lines.at(candidates.first()));
    const QRegularExpression expression(pattern);
    if (!expression.isValid()) // matching it would print a warning for every line
        return {};
    const auto match = std::find_if(candidates.cbegin(), candidates.cend(), [this, &expression](int number) {
        return expression.match(_lines.at(number)).hasMatch();
    });
    return match == candidates.cend() ? QString() : printedPath(_lines.at(*match));
}

QStringList BlkidTable::quotaDevices(const QString &spec) const
{
    QVector<int> numbers = _plains.holding(spec) + _byLabel.value(spec);
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    QStringList paths;
    for (const int number : qAsConst(numbers)) {
        const Device &device = _devices.at(number);
        if (!device.path.isEmpty() && SystemNames::isQuotaFilesystem(device.firstType))
            paths.append(device.path);
    }
    return paths;
}

std::optional<BlkidTable::Device> BlkidTable::find(const QString &spec) const
{
    if (!spec.startsWith(QLatin1Char('/'))) {
        const QString key = spec.section(QLatin1Char('='), 0, 0);
        const QString value = spec.section(QLatin1Char('='), 1).remove(QLatin1Char('"'));
        return first(_byTag, nameOf(key, value));
    }
    std::optional<Device> found = first(_byPath, spec);
    if (!found && spec.startsWith(QLatin1String("/dev/"))) // elsewhere a link may lead to a server that does not answer
        found = first(byNode(), nodeOf(spec));
    return found;
}

std::optional<BlkidTable::Device> BlkidTable::first(const LineByName &lines, const QString &name) const
{
    const auto number = lines.constFind(name);
    return number == lines.cend() ? std::nullopt : std::make_optional(_devices.at(*number));
}

/// Asks the machine about every device, and so only when it has to.
const BlkidTable::LineByName &BlkidTable::byNode() const
{
    if (!_byNode) {
        _byNode.emplace();
        for (int number = 0; number < _devices.size(); ++number) {
            const QString &path = _devices.at(number).path;
            if (!path.isEmpty())
                insertFirst(*_byNode, nodeOf(path), number);
        }
    }
    return *_byNode;
}
