// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fstabrewrite.h"

#include "systemnames.h"

#include <QByteArrayList>
#include <QCoreApplication>
#include <QVector>

#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

#include <mntent.h>

namespace
{

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(FstabRewrite)
};

const char *const noOptions = "defaults"; // an empty column would make the next one the options

/// A line as the system's reader understands it, in the bytes of the file.
struct Entry
{
    QByteArray fsName;
    QByteArray dir;
    QByteArray type;
    QByteArray opts;
    int freq = 0;
    int passno = 0;

    bool operator==(const Entry &other) const
    {
        return fsName == other.fsName && dir == other.dir && type == other.type && opts == other.opts &&
               freq == other.freq && passno == other.passno;
    }
};

/// A line that is no comment and not blank: its first four columns as they stand, and as they are read.
struct Row
{
    int lineNumber;
    QByteArray line;
    QByteArrayList columns;
    std::optional<Entry> entry; ///< none for what the reader keeps to itself, such as an ignored automounter's line
};

struct CloseFile
{
    void operator()(FILE *file) const { std::fclose(file); }
};

QVector<Entry> readEntries(QByteArray text)
{
    QVector<Entry> entries;
    if (text.isEmpty())
        return entries;
    const auto size = static_cast<std::size_t>(text.size());
    const std::unique_ptr<FILE, CloseFile> stream(fmemopen(text.data(), size, "r"));
    std::vector<char> line(size + 2); // longer than the longest line, which the reader would cut
    mntent read = {};
    while (stream && getmntent_r(stream.get(), &read, line.data(), static_cast<int>(line.size())) != nullptr)
        entries.append({read.mnt_fsname, read.mnt_dir, read.mnt_type, read.mnt_opts, read.mnt_freq, read.mnt_passno});
    return entries;
}

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\t';
}

QByteArrayList columnsOf(const QByteArray &line)
{
    constexpr int textColumns = 4;
    QByteArrayList columns;
    for (int at = 0; columns.size() < textColumns;) {
        while (at < line.size() && isBlank(line.at(at)))
            ++at;
        const int start = at;
        while (at < line.size() && !isBlank(line.at(at)))
            ++at;
        columns.append(line.mid(start, at - start));
    }
    return columns;
}

QVector<Row> rowsOf(const QByteArray &table)
{
    QVector<Row> rows;
    int lineNumber = 0;
    const QByteArrayList lines = table.split('\n');
    for (const QByteArray &line : lines) {
        ++lineNumber;
        const QByteArrayList columns = columnsOf(line);
        if (columns.first().isEmpty() || columns.first().startsWith('#'))
            continue;
        const QVector<Entry> read = readEntries(line + '\n');
        rows.append({lineNumber, line, columns, read.isEmpty() ? std::nullopt : std::make_optional(read.first())});
    }
    return rows;
}

/// As a column of the file: what the reader decodes, in octal.
QByteArray encoded(const QString &word)
{
    QByteArray bytes;
    const QByteArray plain = word.toLocal8Bit();
    for (const char byte : plain) {
        if (isBlank(byte) || byte == '\n' || byte == '\\')
            bytes.append('\\').append(QByteArray::number(static_cast<int>(byte), 8).rightJustified(3, '0'));
        else
            bytes.append(byte);
    }
    return bytes;
}

/// The options as a column. An option that was there keeps its bytes, which its text may not tell.
QByteArray optionColumn(const QStringList &options, const Row &row)
{
    QByteArrayList oldBytes = row.columns.at(3).split(',');
    QStringList oldWords = QString::fromLocal8Bit(row.entry->opts).split(QLatin1Char(','));
    QByteArrayList words;
    for (const QString &option : options) {
        const int old = oldWords.indexOf(option);
        if (old < 0) {
            words.append(encoded(option));
        } else {
            words.append(oldBytes.takeAt(old));
            oldWords.removeAt(old);
        }
    }
    return words.join(',');
}

QByteArray lineOf(const Row &row)
{
    if (!row.entry)
        return row.line + '\n';
    QByteArrayList columns = row.columns;
    if (columns.last().isEmpty())
        columns.last() = noOptions;
    columns.append(QByteArray::number(row.entry->freq));
    columns.append(QByteArray::number(row.entry->passno));
    return columns.join("  ") + '\n';
}

FstabRewrite refused(const QString &reason)
{
    return {QByteArray(), Texts::tr("File %1 was not changed: %2").arg(SystemNames::Fstab, reason)};
}

/// Whether the new table reads as the old one does, but for the options of one row.
bool readsAsWanted(const QByteArray &content, const QVector<Row> &rows, int changedRow, const QString &options)
{
    QVector<Entry> found = readEntries(content);
    QVector<Entry> wanted;
    for (int i = 0; i < rows.size(); ++i) {
        const std::optional<Entry> &entry = rows.at(i).entry;
        if (!entry)
            continue;
        wanted.append(*entry);
        const int at = wanted.size() - 1;
        if (i == changedRow && at < found.size()) {
            const QString expected = options.isEmpty() ? QLatin1String(noOptions) : options;
            if (QString::fromLocal8Bit(found.at(at).opts) != expected)
                return false;
            wanted[at].opts = found.at(at).opts;
        } else if (wanted.at(at).opts.isEmpty()) {
            wanted[at].opts = noOptions;
        }
    }
    return found == wanted;
}

} // namespace

FstabRewrite rewriteFstab(const QByteArray &table, const QString &device, const QStringList &options,
                          const std::function<QString(const QString &spec)> &resolve)
{
    if (table.contains('\0')) // the reader would take what follows for another line
        return refused(Texts::tr("it contains a NUL byte"));
    QVector<Row> rows = rowsOf(table);
    int changedRow = -1;
    for (int i = 0; i < rows.size(); ++i) {
        const Row &row = rows.at(i);
        if (row.columns.at(1).isEmpty() || row.columns.at(2).isEmpty())
            return refused(Texts::tr("its line %1 lacks a mount point or a file system type: %2")
                               .arg(QString::number(row.lineNumber), QString::fromLocal8Bit(row.line)));
        if (changedRow < 0 && row.entry && resolve(QString::fromLocal8Bit(row.entry->fsName)) == device)
            changedRow = i;
    }
    if (changedRow < 0)
        return refused(Texts::tr("none of its lines names the device %1 by its path or by UUID=").arg(device));
    rows[changedRow].columns.last() = optionColumn(options, rows.at(changedRow));

    QByteArray content;
    for (const Row &row : qAsConst(rows))
        content.append(lineOf(row));
    if (!readsAsWanted(content, rows, changedRow, options.join(QLatin1Char(','))))
        return refused(Texts::tr("it would not read the same afterwards"));
    return {content, QString()};
}
