// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <bufferdata.h>
#include <sandbox.h>

#include <QSignalSpy>
#include <QTextCodec>
#include <QtTest>

#include <cerrno>

#include <sys/wait.h>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

QStringList texts(const QSignalSpy &spy)
{
    QStringList all;
    for (const QList<QVariant> &arguments : spy)
        all.append(arguments.first().toString());
    return all;
}

} // namespace

/// "blkid" in every condition. One of them takes the whole 30 seconds that it is waited for.
class TestBlkidProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); }
    void init() { _sandbox.reset(); }

    void blkidIsRunWithoutArgumentsAndInC();
    void blkidLinesKeepTheEmptyLastOne();
    void blkidThatPrintsNothingGivesOneEmptyLine();
    void blkidThatPrintsAMegabyte();
    void blkidCodeIsNoError();
    void blkidThatCrashesGivesWhatItPrinted();
    void blkidMissingIsReportedOnce();
    void blkidThatCannotBeStartedIsReported();
    void blkidIsReportedAsADetail();
    void blkidThatHangsIsReportedOnceAndEnded();

private:
    Sandbox _sandbox;
};

void TestBlkidProgram::blkidIsRunWithoutArgumentsAndInC()
{
    qputenv("LANGUAGE", "de");
    qputenv("LC_ALL", "de_DE.UTF-8");
    _sandbox.standIn(text("blkid"));
    BufferData buffer;
    buffer.blkidLines();
    qunsetenv("LANGUAGE");
    qunsetenv("LC_ALL");
    const QList<StandInCall> calls = _sandbox.calls();
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls.first().program, text("blkid"));
    QCOMPARE(calls.first().arguments, QByteArrayList());
    QCOMPARE(calls.first().environment.value("LC_MESSAGES"), QByteArray("C"));
    QVERIFY(!calls.first().environment.contains("LANGUAGE"));
    QVERIFY(!calls.first().environment.contains("LC_ALL"));
}

void TestBlkidProgram::blkidLinesKeepTheEmptyLastOne()
{
    _sandbox.standIn(text("blkid")).prints("/dev/sda1: UUID=\"a\"\n\n/dev/sdb1: LABEL=\"größe\"\n");
    BufferData buffer;
    QCOMPARE(buffer.blkidLines(),
             (QStringList{text("/dev/sda1: UUID=\"a\""), QString(), text("/dev/sdb1: LABEL=\"größe\""), QString()}));
}

void TestBlkidProgram::blkidThatPrintsNothingGivesOneEmptyLine()
{
    _sandbox.standIn(text("blkid"));
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    QCOMPARE(buffer.blkidLines(), QStringList{QString()});
    QVERIFY(errors.isEmpty());
}

void TestBlkidProgram::blkidThatPrintsAMegabyte()
{
    QByteArray output;
    int lines = 0;
    for (; output.size() < 1024 * 1024; ++lines)
        output += "/dev/mapper/" + QByteArray::number(lines) + ": UUID=\"" + QByteArray::number(lines) + "\"\n";
    _sandbox.standIn(text("blkid")).prints(output);
    BufferData buffer;
    QCOMPARE(buffer.blkidLines().size(), lines + 1);
    QCOMPARE(buffer.blkidLines().join(QLatin1Char('\n')).toUtf8(), output);
}

void TestBlkidProgram::blkidCodeIsNoError()
{
    _sandbox.standIn(text("blkid")).prints("/dev/sda1: UUID=\"a\"\n").complains("something else\n").exits(2);
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    QCOMPARE(buffer.blkidLines().first(), text("/dev/sda1: UUID=\"a\""));
    QVERIFY(errors.isEmpty());
}

void TestBlkidProgram::blkidThatCrashesGivesWhatItPrinted()
{
    _sandbox.standIn(text("blkid")).prints("/dev/sda1: UUID=\"a\"\n").crashes();
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    QCOMPARE(buffer.blkidLines().first(), text("/dev/sda1: UUID=\"a\""));
    QVERIFY(errors.isEmpty());
}

void TestBlkidProgram::blkidMissingIsReportedOnce()
{
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    QVERIFY(buffer.blkidLines().isEmpty());
    QVERIFY(buffer.blkidLines().isEmpty());
    QCOMPARE(texts(errors), QStringList{text("Process blkid can not started")});
}

void TestBlkidProgram::blkidThatCannotBeStartedIsReported()
{
    _sandbox.standIn(text("blkid")).cannotBeStarted();
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    QVERIFY(buffer.blkidLines().isEmpty());
    QCOMPARE(texts(errors), QStringList{text("Process blkid can not started")});
}

void TestBlkidProgram::blkidIsReportedAsADetail()
{
    _sandbox.standIn(text("blkid")).complains("a complaint\n").exits(4);
    BufferData buffer;
    const QSignalSpy details(&buffer, &BufferData::detail);
    buffer.blkidLines();
    QCOMPARE(details.size(), 1);
    const QString detail = texts(details).first();
    QVERIFY2(detail.contains(text("blkid")) && detail.contains(text("4")) && detail.contains(text("a complaint")),
             qPrintable(detail));
}

void TestBlkidProgram::blkidThatHangsIsReportedOnceAndEnded()
{
    _sandbox.standIn(QStringLiteral("blkid")).prints("/dev/sda1: TYPE=\"ext4\"\n").ignoresTermination().hangs();
    BufferData buffer;
    const QSignalSpy errors(&buffer, &BufferData::error);
    const QSignalSpy details(&buffer, &BufferData::detail);
    QVERIFY(buffer.blkidLines().isEmpty());
    QVERIFY(buffer.blkidLines().isEmpty()); // at once: it counts as read
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors.first().first().toString(), QStringLiteral("Process blkid can not finished"));
    QCOMPARE(details.size(), 1);
    QCOMPARE(_sandbox.calls().size(), 1);
    QVERIFY2(waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD, "a process is left behind");
}

KRA_SANDBOX_MAIN(TestBlkidProgram)
#include "tst_blkidprogram.moc"
