// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "commandline.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstring>

#include <unistd.h>

namespace
{

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

constexpr int NoDisplay = 1;
constexpr int NotUnderstood = 2;

QtMessageHandler handlerBefore = nullptr;
// Never deleted: the process may end while they are used.
QString *noWindow = nullptr;
QString *platformMessage = nullptr;

void print(std::FILE *channel, const QString &text)
{
    std::fputs(qPrintable(text), channel);
    std::fflush(channel);
}

void checkMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtFatalMsg) {
        const QString why = platformMessage->isEmpty() ? text.simplified() : *platformMessage;
        print(stderr, noWindow->arg(QCoreApplication::applicationName(), why) + QLatin1Char('\n'));
        _exit(NoDisplay);
    }
    if (context.category && std::strncmp(context.category, "qt.qpa", strlen("qt.qpa")) == 0) {
        if (platformMessage->isEmpty())
            *platformMessage = text.simplified();
        return;
    }
    handlerBefore(type, context, text);
}

/// Those that the application object takes out of its arguments.
void addOptionsOfQt(QCommandLineParser &parser)
{
    for (const char *name :
         {"platform", "platformpluginpath", "platformtheme", "plugin", "style", "stylesheet", "display", "geometry",
          "qwindowgeometry", "qwindowicon", "qwindowtitle", "icon", "title", "name", "session", "fontengine", "dpi"}) {
        QCommandLineOption option(QString::fromLatin1(name), {}, QStringLiteral("value"));
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    }
    QCommandLineOption reverse(QStringLiteral("reverse"));
    reverse.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(reverse);
}

} // namespace

CommandLine::CommandLine(const QStringList &arguments)
    : _noWindowText(Texts::tr("%1: no window can be opened: %2"))
{
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setApplicationDescription(Texts::tr("Administration of this computer."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption plugins(QStringLiteral("plugins"), Texts::tr("Load the plug-ins of another folder too."),
                                     Texts::tr("folder"));
    parser.addOption(plugins);
    addOptionsOfQt(parser);

    QString complaint;
    if (!parser.parse(arguments))
        complaint = parser.errorText();
    else if (!parser.positionalArguments().isEmpty())
        complaint = Texts::tr("Unexpected argument: %1").arg(parser.positionalArguments().constFirst());
    if (!complaint.isEmpty()) {
        print(stderr, complaint + QLatin1String("\n\n") + parser.helpText());
        _exitCode = NotUnderstood;
    } else if (parser.isSet(help)) {
        print(stdout, parser.helpText());
        _exitCode = EXIT_SUCCESS;
    } else if (parser.isSet(version)) {
        print(stdout, QStringLiteral("%1 %2\n").arg(QCoreApplication::applicationName(),
                                                    QCoreApplication::applicationVersion()));
        _exitCode = EXIT_SUCCESS;
    }
    _pluginFolders = parser.values(plugins);
}

DisplayCheck::DisplayCheck(const QString &noWindowText)
{
    if (!platformMessage) {
        noWindow = new QString;
        platformMessage = new QString;
    }
    *noWindow = noWindowText;
    handlerBefore = qInstallMessageHandler(&checkMessage);
}

DisplayCheck::~DisplayCheck()
{
    qInstallMessageHandler(handlerBefore);
}
