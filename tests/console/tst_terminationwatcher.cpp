// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <terminationwatcher.h>

#include <QSignalSpy>
#include <QtTest>

#include <cerrno>
#include <csignal>

/// What a session that ends, or Ctrl+C in a terminal, makes of the console.
class TestTerminationWatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void signalsAreRequests_data();
    void signalsAreRequests();
    void severalSignalsAtOnceAreOneRequest();
    void signalsLeaveTheReasonOfAFailureAlone();
    void signalsHaveTheirUsualEffectAfterwards();
};

void TestTerminationWatcher::signalsAreRequests_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestTerminationWatcher::signalsAreRequests()
{
    QFETCH(const int, signal);
    const TerminationWatcher watcher;
    QSignalSpy requests(&watcher, &TerminationWatcher::terminationRequested);
    for (int times = 1; times <= 2; ++times) {
        QCOMPARE(raise(signal), 0);
        QTRY_COMPARE(requests.count(), times);
    }
}

void TestTerminationWatcher::severalSignalsAtOnceAreOneRequest()
{
    const TerminationWatcher watcher;
    QSignalSpy requests(&watcher, &TerminationWatcher::terminationRequested);
    for (int times = 0; times < 20; ++times)
        QCOMPARE(raise(SIGTERM), 0);
    QTRY_COMPARE(requests.count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(requests.count(), 1);
}

void TestTerminationWatcher::signalsLeaveTheReasonOfAFailureAlone()
{
    const TerminationWatcher watcher;
    constexpr int moreThanAPipeHolds = 100000;
    errno = ESRCH;
    for (int times = 0; times < moreThanAPipeHolds; ++times)
        raise(SIGTERM);
    QCOMPARE(errno, ESRCH);
}

void TestTerminationWatcher::signalsHaveTheirUsualEffectAfterwards()
{
    {
        const TerminationWatcher watcher;
    }
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction present = {};
        QCOMPARE(sigaction(signal, nullptr, &present), 0);
        QVERIFY(present.sa_handler == SIG_DFL);
    }
}

QTEST_GUILESS_MAIN(TestTerminationWatcher)
#include "tst_terminationwatcher.moc"
