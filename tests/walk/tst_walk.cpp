// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "walker.h"

#include <QEventLoop>
#include <QSettings>
#include <QTimer>

#include <functional>

/// The console's own window with the plug-in, used at random while the machine around it changes: what holds whatever
/// anybody does. KRA_SEED repeats a walk, KRA_STEPS makes it longer.
class TestWalk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ConsoleKeyboard::useOwnSettings(QStringLiteral("tst_walk")); }
    void nothingIsLostOnTheWay();
};

void TestWalk::nothingIsLostOnTheWay()
{
    constexpr int steps = 4000;
    constexpr int stepsToARest = 50;
    const quint32 seed = qEnvironmentVariableIsSet("KRA_SEED")
                             ? static_cast<quint32>(qEnvironmentVariable("KRA_SEED").toULong())
                             : std::random_device()();
    const int asked = qEnvironmentVariableIntValue("KRA_STEPS");
    const int count = asked > 0 ? asked : steps;
    qInfo("KRA_SEED=%u KRA_STEPS=%d", seed, count);

    QSettings().clear();
    std::mt19937 random(seed);
    WalkMachine machine(random);
    ConsoleKeyboard console;
    console.open();
    Walker walker(console, machine, random);
    // In an event loop, as in the console's own main(): what is deleted later is so after all that goes on now.
    const auto inEventLoop = [](const std::function<void()> &done) {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&] {
            done();
            loop.quit();
        });
        loop.exec();
    };
    for (int step = 1; step <= count && !QTest::currentTestFailed(); ++step) {
        inEventLoop([&walker] { walker.step(); });
        const bool isRest = step % stepsToARest == 0 || step == count;
        const QStringList problems = isRest ? walker.problemsAtRest() : walker.problems();
        if (!problems.isEmpty()) {
            const QStringList actions = walker.lastActions();
            for (const QString &action : actions)
                qInfo("%s", qPrintable(action));
            QFAIL(qPrintable(QStringLiteral("After step %1:\n%2").arg(step).arg(problems.join(QLatin1Char('\n')))));
        }
    }
}

KRA_SANDBOX_MAIN(TestWalk)
#include "tst_walk.moc"
