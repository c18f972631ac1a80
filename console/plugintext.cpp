// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugintext.h"

#include <module.h>
#include <moduletree.h>

#include <QCoreApplication>
#include <QFileInfo>

namespace
{
struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(PluginsDialog)
};

QString paragraph(const QString &heading, const QStringList &lines)
{
    QStringList escaped;
    for (const QString &line : lines)
        escaped.append(line.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")));
    return QStringLiteral("<p><b>%1</b><br>%2</p>").arg(heading.toHtmlEscaped(), escaped.join(QLatin1String("<br>")));
}
/// The beginning of what a program printed: of a kernel module's description the end is a signature.
QStringList shortened(const QStringList &texts)
{
    constexpr int shownLines = 8;
    QStringList shortTexts;
    for (const QString &text : texts) {
        QStringList lines = text.split(QLatin1Char('\n'));
        if (lines.size() > shownLines)
            lines = QStringList(lines.mid(0, shownLines)) << QStringLiteral("\u2026");
        shortTexts.append(lines.join(QLatin1Char('\n')));
    }
    return shortTexts;
}
} // namespace

QString pluginTitle(const PluginRecord &record)
{
    return record.title.isEmpty() ? QFileInfo(record.fileName).fileName() : record.title;
}

bool isWhollyAtWork(const PluginRecord &record, const ModuleTree &tree)
{
    return record.state == PluginRecord::State::Attached && unattachedModules(record, tree).isEmpty();
}

QString pluginState(const PluginRecord &record, const ModuleTree &tree)
{
    switch (record.state) {
    case PluginRecord::State::Refused:
        return Texts::tr("Refused: not safe to load");
    case PluginRecord::State::Broken:
        return Texts::tr("Broken: not a plug-in that loads");
    case PluginRecord::State::Foreign:
        return Texts::tr("Made for another program");
    case PluginRecord::State::Threw:
        return Texts::tr("Failed while it was started");
    case PluginRecord::State::Invalid:
        return Texts::tr("Cannot work on this computer");
    case PluginRecord::State::Attached:
        break;
    }
    return isWhollyAtWork(record, tree) ? Texts::tr("At work") : Texts::tr("At work in part");
}

QStringList unattachedModules(const PluginRecord &record, const ModuleTree &tree)
{
    QStringList lines;
    for (const Module *module : tree.waitingModules()) {
        if (record.moduleNames.contains(module->name()))
            lines.append(Texts::tr("%1: there is no module %2 that it could attach to")
                             .arg(module->name(), module->attachName()));
    }
    return lines;
}

QString pluginDetails(const PluginRecord &record, const ModuleTree &tree)
{
    QString text = QStringLiteral("<h3>%1</h3>").arg(pluginTitle(record).toHtmlEscaped());
    if (!record.description.isEmpty())
        text += QStringLiteral("<p>%1</p>").arg(record.description.toHtmlEscaped());
    text += paragraph(pluginState(record, tree), {record.explanation});
    const struct
    {
        QString heading;
        QStringList lines;
    } parts[] = {
        {Texts::tr("Modules without a place"), unattachedModules(record, tree)},
        {Texts::tr("Programs that it ran"), shortened(record.programOutput)},
        {Texts::tr("Modules"), record.moduleNames},
        {Texts::tr("File"), {record.fileName}},
    };
    for (const auto &part : parts) {
        if (!part.lines.isEmpty())
            text += paragraph(part.heading, part.lines);
    }
    return text;
}
