// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fstabrewrite.h"

#include "blkidtable.h"
#include "mountfile.h"
#include "systemnames.h"

#include <QByteArrayList>
#include <QCoreApplication>
#include <QVector>

#include <algorithm>
#include <optional>

namespace
{

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(FstabRewrite)
};

const char *const noOptions = "defaults"; // an empty column would make the next one the options

/// A line with its first four columns as they stand.
struct Row
{
    MountLine line;
    QByteArrayList words;
    std::optional<QStringList> newOptions;

    /// The device as the line names it; empty where it names none.
    QString spelling() const
    {
        return line.columns && line.columns->canNameDevice() ? line.columns->spelling() : QString();
    }
    QStringList options() const
    {
        const QString text = QString::fromLocal8Bit(line.columns->opts);
        return text.isEmpty() ? QStringList() : text.split(QLatin1Char(','));
    }
};

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\t';
}

QByteArrayList wordsOf(const QByteArray &line)
{
    constexpr int wordColumns = 4;
    QByteArrayList words;
    for (int at = 0; words.size() < wordColumns;) {
        while (at < line.size() && isBlank(line.at(at)))
            ++at;
        const int start = at;
        while (at < line.size() && !isBlank(line.at(at)))
            ++at;
        words.append(line.mid(start, at - start));
    }
    return words;
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

/// The new options as a column. An option that was there keeps its bytes, which its text may not tell.
QByteArray optionColumn(const Row &row)
{
    QByteArrayList oldBytes = row.words.at(3).split(',');
    QStringList oldWords = QString::fromLocal8Bit(row.line.columns->opts).split(QLatin1Char(','));
    QByteArrayList words;
    for (const QString &option : *row.newOptions) {
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

QByteArray bytesOf(const Row &row)
{
    if (!row.line.columns)
        return row.line.text + '\n';
    QByteArrayList columns = row.words;
    if (row.newOptions)
        columns.last() = optionColumn(row);
    if (columns.last().isEmpty())
        columns.last() = noOptions;
    columns.append(QByteArray::number(row.line.columns->freq));
    columns.append(QByteArray::number(row.line.columns->passno));
    return columns.join("  ") + '\n';
}

/// Whether the new table reads as the old one does, but for the new options.
bool readsAsWanted(const QByteArray &content, const QVector<Row> &rows)
{
    const QVector<MountLine> found = mountLines(content);
    if (found.size() != rows.size())
        return false;
    for (int i = 0; i < rows.size(); ++i) {
        const Row &row = rows.at(i);
        std::optional<MountColumns> wanted = row.line.columns;
        const std::optional<MountColumns> &columns = found.at(i).columns;
        if (wanted && columns && row.newOptions) {
            const QString options = row.newOptions->join(QLatin1Char(','));
            if (QString::fromLocal8Bit(columns->opts) != (options.isEmpty() ? QLatin1String(noOptions) : options))
                return false;
            wanted->opts = columns->opts;
        } else if (wanted && wanted->opts.isEmpty()) {
            wanted->opts = noOptions;
        }
        if (!(columns == wanted))
            return false;
    }
    return true;
}

QString numberOf(const Row &row)
{
    return QString::number(row.line.number);
}

FstabRewrite refused(const QString &reason)
{
    return {QByteArray(), Texts::tr("File %1 was not changed: %2").arg(SystemNames::Fstab, reason)};
}

/// "mount" takes the mark for a part of what it stands before, be that a device or the "#" of a comment.
QString refusalForMark(const QByteArray &table)
{
    return table.startsWith("\xef\xbb\xbf")
               ? Texts::tr("it begins with a byte order mark, which mount takes for a part of the first line; save it "
                           "without that mark")
               : QString();
}

QString journaledOptionOf(const QStringList &options)
{
    for (const QString &option : options) {
        for (const QLatin1String word : {SystemNames::journaledWord(UserQuota), SystemNames::journaledWord(GroupQuota),
                                         SystemNames::JournaledFormat})
            if (option.startsWith(word))
                return option;
    }
    return {};
}

/// No line resolves to the device: why, and what to do about the line that is meant for it.
FstabRewrite refusedWithoutLine(const QByteArray &table, const QVector<Row> &rows, const QString &device,
                                const OptionChange &change, const BlkidTable &blkid)
{
    const QString mark = refusalForMark(table);
    FstabRewrite refusal = refused(
        mark.isEmpty() ? Texts::tr("none of its lines names the device %1 by its path or by UUID=").arg(device) : mark);
    refusal.matters = change.step != OptionChange::Step::Remove;
    for (const Row &row : rows) {
        if (row.spelling().isEmpty() || !blkid.resolve(row.spelling()).isEmpty())
            continue;
        const std::optional<BlkidTable::Device> meant = blkid.find(row.spelling());
        const bool isListed = meant && meant->path == device;
        if (!isListed && row.spelling() != device)
            continue;
        const QString named = Texts::tr("its line %1 names the device %2").arg(numberOf(row), device);
        if (isListed)
            //: %1: "its line 3 names the device /dev/sda1", %2: as in "LABEL=home", %3: what to write instead
            refusal = refused(
                Texts::tr("%1 as %2; write %3 there, then it can be switched")
                    .arg(named, row.spelling(), meant->uuid.isEmpty() ? device : QLatin1String("UUID=") + meant->uuid));
        else
            refusal = refused(Texts::tr("%1, but blkid does not list that device; look whether it is there and "
                                        "whether blkid works")
                                  .arg(named));
        refusal.matters =
            change.step != OptionChange::Step::Remove || row.options().contains(SystemNames::optionWord(change.kind));
        if (refusal.matters)
            break;
    }
    return refusal;
}

/// What a line's options become; the same where nothing has to change.
QStringList changed(const QStringList &options, const OptionChange &change)
{
    const QString word = SystemNames::optionWord(change.kind);
    switch (change.step) {
    case OptionChange::Step::Replace:
        return change.options;
    case OptionChange::Step::Remove: {
        QStringList rest = options;
        rest.removeAll(word);
        return rest;
    }
    case OptionChange::Step::Add:
        break;
    }
    const bool isThere = options.contains(word) || !SystemNames::journaledOption(options, change.kind).isEmpty();
    return isThere ? options : options + QStringList{word};
}

/// The kernel reads the words in their order: which of them says in the end whether a kind is on.
QString decidingWord(const QStringList &options, QuotaKind kind)
{
    const auto decides = [kind](const QString &option) {
        return option == SystemNames::optionWord(kind) || option == SystemNames::NoQuotaWord ||
               (kind == UserQuota && option == SystemNames::QuotaWord);
    };
    const auto word = std::find_if(options.crbegin(), options.crend(), decides);
    return word == options.crend() ? QString() : *word;
}

/// An option that stays, and brings quotas back that were switched off.
QString optionThatStays(const QStringList &options, QuotaKind kind)
{
    const QString journaled = SystemNames::journaledOption(options, kind);
    const QString word = decidingWord(options, kind);
    return journaled.isEmpty() && word != SystemNames::NoQuotaWord ? word : journaled;
}

/// What keeps the change of one word from being what was asked for: other options that stay, since they are for the
/// administrator to change. The kernel does not mount a file system with an option of the old kind and one of the
/// journaled kind.
QString refusalForOptions(const Row &row, const QString &device, const OptionChange &change)
{
    const QString word = SystemNames::optionWord(change.kind);
    const QString staying = optionThatStays(changed(row.options(), change), change.kind);
    if (change.step == OptionChange::Step::Remove && !staying.isEmpty())
        return Texts::tr("its line %1 for %2 has the option %3, which brings these quotas back at the next start; take "
                         "it out there, then they can be switched off")
            .arg(numberOf(row), device, staying);
    if (change.step == OptionChange::Step::Add && row.options().contains(word) &&
        decidingWord(row.options(), change.kind) == SystemNames::NoQuotaWord)
        return Texts::tr("its line %1 for %2 has the option %3 after %4, which switches these quotas off at every "
                         "mount; take %3 out there, then they can be switched on")
            .arg(numberOf(row), device, SystemNames::NoQuotaWord, word);
    const QString other = journaledOptionOf(row.options());
    if (change.step == OptionChange::Step::Add && !other.isEmpty() && changed(row.options(), change) != row.options())
        return Texts::tr("its line %1 for %2 has the option %3, beside which the device could not be mounted with %4; "
                         "write %5%6 there instead and mount the device again, then these quotas can be switched on")
            .arg(numberOf(row), device, other, word, SystemNames::journaledWord(change.kind),
                 SystemNames::quotaFileName(change.kind));
    return {};
}

/// What keeps the table from being written again, whatever the change; empty when nothing does.
QString refusalForTable(const QByteArray &table, const QVector<Row> &rows)
{
    const QString mark = refusalForMark(table);
    if (!mark.isEmpty())
        return mark;
    const int nul = table.indexOf('\0');
    if (nul >= 0) // others of the system's readers would take what follows for another line
        return Texts::tr("its line %1 contains a NUL byte; take it out there").arg(table.left(nul).count('\n') + 1);
    for (const Row &row : rows) {
        if (row.words.at(1).isEmpty() || row.words.at(2).isEmpty())
            return Texts::tr("its line %1 lacks a mount point or a file system type: %2")
                .arg(numberOf(row), QString::fromLocal8Bit(row.line.text));
    }
    return {};
}

} // namespace

FstabRewrite rewriteFstab(const QByteArray &table, const QString &device, const OptionChange &change,
                          const BlkidTable &blkid)
{
    QVector<Row> rows;
    const QVector<MountLine> lines = mountLines(table);
    bool isNamed = false;
    bool isChange = false;
    for (const MountLine &line : lines) {
        Row row{line, wordsOf(line.text), std::nullopt};
        const QString spelling = row.spelling();
        if (!spelling.isEmpty() && blkid.resolve(spelling) == device) {
            isNamed = true;
            const QString refusal = refusalForOptions(row, device, change);
            if (!refusal.isEmpty())
                return refused(refusal);
            const QStringList options = changed(row.options(), change);
            if (options != row.options())
                row.newOptions = options;
            isChange = isChange || row.newOptions || change.step == OptionChange::Step::Replace;
        }
        rows.append(row);
    }
    if (!isNamed && blkid.isEmpty())
        return refused(
            Texts::tr("blkid did not tell which of its lines is for %1; try again when it works").arg(device));
    if (!isNamed)
        return refusedWithoutLine(table, rows, device, change, blkid);
    if (!isChange)
        return {table, QString()};

    const QString unsafe = refusalForTable(table, rows);
    if (!unsafe.isEmpty())
        return refused(unsafe);
    QByteArray content;
    for (const Row &row : qAsConst(rows))
        content.append(bytesOf(row));
    if (!readsAsWanted(content, rows))
        return refused(Texts::tr("it would not read the same afterwards"));
    return {content, QString()};
}
