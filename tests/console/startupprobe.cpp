// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Tells what a process finds around it after the console's start: the child of tst_startup.

#include <startup.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>
#include <QTextCodec>
#include <QTextStream>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <malloc.h>
#include <sys/stat.h>

extern char **environ;

namespace
{

/// How many heaps there are when a second thread has allocated.
int heapsOfTwoThreads()
{
    std::thread([] { const std::vector<std::string> some(1000, std::string(100, 'x')); }).join();
    char *text = nullptr;
    size_t size = 0;
    std::FILE *stream = open_memstream(&text, &size);
    malloc_info(0, stream);
    std::fclose(stream);
    const int count = QByteArray(text).count("<heap nr");
    std::free(text);
    return count;
}

} // namespace

int main(int argc, char *argv[])
{
    Startup::prepareProcess();
    Startup::dropForeignArguments(argc, argv);
    const QCoreApplication application(argc, argv);
    const mode_t mask = umask(0);
    QTextStream out(stdout);
    for (char **entry = environ; *entry; ++entry)
        out << QString::fromLocal8Bit(*entry) << '\n';
    out << "probe arguments=" << QCoreApplication::arguments().mid(1).join(QLatin1Char(' ')) << '\n';
    out << "probe umask=" << QString::number(mask, 8) << '\n';
    out << "probe codec=" << QString::fromLatin1(QTextCodec::codecForLocale()->name()) << '\n';
    out << "probe text=" << QString::fromLocal8Bit("\xc3\xa4").size() << '\n';
    out << "probe locale=" << QLocale::system().name() << '\n';
    out << "probe languages=" << QLocale::system().uiLanguages().join(QLatin1Char(' ')) << '\n';
    out << "probe time=" << QDateTime::fromSecsSinceEpoch(1900000000).toString(QStringLiteral("dd.MM.yyyy hh:mm"))
        << '\n';
    const int flags = fcntl(77, F_GETFD);
    if (flags >= 0)
        out << "probe descriptor 77=" << ((flags & FD_CLOEXEC) != 0 ? "closed when a program is run" : "open") << '\n';
    struct sigaction onBrokenPipe = {};
    sigaction(SIGPIPE, nullptr, &onBrokenPipe);
    out << "probe broken pipe=" << (onBrokenPipe.sa_handler == SIG_IGN ? "ignored" : "the end") << '\n';
    out << "probe heaps=" << heapsOfTwoThreads() << '\n';
    return 0;
}
