// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "resultstable.h"

#include "machinefacts.h"
#include "shell.h"

#include <QFile>
#include <QTextStream>

namespace
{

QString path()
{
    return qEnvironmentVariable("KRA_RESULTS") + QStringLiteral("/switching.md");
}

QString cell(const QStringList &lines)
{
    QString text = lines.join(QLatin1Char('\n')).trimmed();
    text.replace(QLatin1Char('|'), QLatin1String("\\|"));
    return text.replace(QLatin1Char('\n'), QLatin1String("<br>"));
}

void addRow(const QStringList &cells)
{
    QFile file(path());
    if (file.open(QIODevice::Append))
        QTextStream(&file) << "| " << cells.join(QStringLiteral(" | ")) << " |\n";
}

QString stateOf(const QString &kind, const MachineFacts::Kind &facts)
{
    QStringList words;
    words.append(facts.configured ? QStringLiteral("in fstab") : QStringLiteral("not in fstab"));
    words.append(facts.inForce ? QStringLiteral("mounted with it") : QStringLiteral("mounted without it"));
    words.append(facts.hasFile ? QStringLiteral("file") : QStringLiteral("no file"));
    words.append(facts.on ? QStringLiteral("**on**") : QStringLiteral("off"));
    return QStringLiteral("%1: %2").arg(kind, words.join(QStringLiteral(", ")));
}

} // namespace

void ResultsTable::begin()
{
    QFile::remove(path());
    addRow({QStringLiteral("Case"), QStringLiteral("What ran, and what it said"),
            QStringLiteral("What the console said"), QStringLiteral("Afterwards")});
    addRow({QStringLiteral("---"), QStringLiteral("---"), QStringLiteral("---"), QStringLiteral("---")});
}

void ResultsTable::add(const QString &title, const QString &device, const GeneralPage::Applied &applied)
{
    QStringList said;
    for (const QString &detail : applied.details) {
        if (!detail.startsWith(QLatin1String("Running ")) && !detail.startsWith(QLatin1String("blkid")))
            said.append(detail);
    }
    QStringList console{applied.succeeded ? QStringLiteral("succeeded") : QStringLiteral("failed")};
    console.append(applied.message);
    for (const QString &box : applied.boxes)
        console.append(QStringLiteral("Box: \"%1\"").arg(box));
    const MachineFacts::Device facts = MachineFacts::device(device);
    addRow({title, cell(said), cell(console),
            cell({stateOf(QStringLiteral("users"), facts.user), stateOf(QStringLiteral("groups"), facts.group)})});
}

void ResultsTable::add(const QString &title, const QString &command)
{
    const Shell::Result result = Shell::run(command);
    addRow({title,
            cell({QStringLiteral("%1: ended with exit code %2").arg(command).arg(result.exitCode), result.output,
                  result.errors}),
            QStringLiteral("(by hand)"), QString()});
}
