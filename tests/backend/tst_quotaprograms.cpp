// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <quotaprograms.h>
#include <sandbox.h>

#include <QTranslator>
#include <QtTest>

#include <memory>

namespace
{

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

const QString Device = QStringLiteral("/dev/sda1");
constexpr int megabytes = 4 * 1024 * 1024;

} // namespace

/// How the programs are called, and what is made of what they print and how they end.
class TestQuotaPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void arguments();
    void messagesThatAreLookedAtAreInC();
    void howEachEndedIsADetail();

    void mountSucceedsByItsExitCode();
    void mountThatCannotRun();

    void quotacheckMakesNoOtherTypes_data();
    void quotacheckMakesNoOtherTypes();
    void quotacheckSucceedsHoweverItEnds();
    void quotacheckThatCannotStart_data() { cannotStart(); }
    void quotacheckThatCannotStart();

    void quotaonAndQuotaoffThatCannotStart_data() { cannotStart(); }
    void quotaonAndQuotaoffThatCannotStart();
    void quotaonIsJudgedByWhatItComplainsOf_data();
    void quotaonIsJudgedByWhatItComplainsOf();
    void quotaonThatCrashes();
    void megabytesOnStandardOutput();
    void megabytesOnStandardError();
    void complaintsThatLookLikePlacesToFillIn();
    void whatIsSaidIsTranslatedBeforeItIsFilledIn();

private:
    static void cannotStart();
    void makeUnable(const QString &program, int way);

    Sandbox _sandbox;
    std::unique_ptr<QuotaPrograms> _programs;
    QStringList _errors;
    QStringList _details;
};

void TestQuotaPrograms::init()
{
    _sandbox.reset();
    for (const char *program : {"mount", "quotacheck", "quotaon", "quotaoff"})
        _sandbox.standIn(text(program));
    _errors.clear();
    _details.clear();
    _programs = std::make_unique<QuotaPrograms>();
    connect(_programs.get(), &QuotaPrograms::error, this, [this](const QString &message) { _errors.append(message); });
    connect(_programs.get(), &QuotaPrograms::detail, this, [this](const QString &detail) { _details.append(detail); });
}

void TestQuotaPrograms::cannotStart()
{
    QTest::addColumn<int>("way");
    QTest::newRow("does not exist") << 0;
    QTest::newRow("may not be run") << 1;
    QTest::newRow("is no program") << 2;
}

void TestQuotaPrograms::makeUnable(const QString &program, int way)
{
    if (way == 0)
        QVERIFY(QFile::remove(qEnvironmentVariable("PATH") + QLatin1Char('/') + program));
    else if (way == 1)
        _sandbox.standIn(program).isNotExecutable();
    else
        _sandbox.standIn(program).cannotBeStarted();
}

void TestQuotaPrograms::arguments()
{
    QVERIFY(_programs->remount(Device).isDone);
    QVERIFY(_programs->createQuotaFiles(Device, UserQuota).isDone);
    QVERIFY(_programs->createQuotaFiles(Device, GroupQuota).isDone);
    for (const QuotaKind kind : {UserQuota, GroupQuota})
        for (const bool on : {true, false})
            QVERIFY(_programs->runQuotaOnOff(Device, kind, on));
    QStringList calls;
    const QList<StandInCall> made = _sandbox.calls();
    for (const StandInCall &call : made)
        calls.append(call.program + QLatin1Char('|') + QString::fromUtf8(call.arguments.join('|')));
    QCOMPARE(calls,
             QStringList({text("mount|/dev/sda1|-o|remount"), text("quotacheck|-um|/dev/sda1"),
                          text("quotacheck|-gm|/dev/sda1"), text("quotaon|-u|/dev/sda1"), text("quotaoff|-u|/dev/sda1"),
                          text("quotaon|-g|/dev/sda1"), text("quotaoff|-g|/dev/sda1")}));
    QCOMPARE(_errors, QStringList());
}

void TestQuotaPrograms::messagesThatAreLookedAtAreInC()
{
    qputenv("LANGUAGE", "de");
    qputenv("LC_ALL", "de_DE.UTF-8");
    _programs->runQuotaOnOff(Device, UserQuota, true);
    _programs->remount(Device);
    qunsetenv("LANGUAGE");
    qunsetenv("LC_ALL");
    const QMap<QByteArray, QByteArray> looked = _sandbox.calls(text("quotaon")).first().environment;
    QCOMPARE(looked.value("LC_MESSAGES"), QByteArray("C"));
    QVERIFY(!looked.contains("LANGUAGE"));
    QVERIFY(!looked.contains("LC_ALL"));
    const QMap<QByteArray, QByteArray> shown = _sandbox.calls(text("mount")).first().environment;
    QCOMPARE(shown.value("LANGUAGE"), QByteArray("de"));
}

void TestQuotaPrograms::howEachEndedIsADetail()
{
    _sandbox.standIn(text("mount")).complains("mount: no\n").exits(32);
    _sandbox.standIn(text("quotacheck")).complains("quotacheck: hm\n");
    _sandbox.standIn(text("quotaoff")).exits(3);
    _programs->remount(Device);
    _programs->createQuotaFiles(Device, UserQuota);
    _programs->runQuotaOnOff(Device, UserQuota, false);
    for (const QString &detail :
         {text("mount /dev/sda1 -o remount: exit code 32\nmount: no"),
          text("quotacheck -um /dev/sda1: exit code 0\nquotacheck: hm"), text("quotaoff -u /dev/sda1: exit code 3")})
        QVERIFY2(_details.contains(detail), qPrintable(_details.join(QLatin1Char('\n'))));
}

void TestQuotaPrograms::mountSucceedsByItsExitCode()
{
    _sandbox.standIn(text("mount")).complains("mount: a warning\n");
    QVERIFY(_programs->remount(Device).isDone);
    _sandbox.standIn(text("mount")).exits(1);
    QVERIFY(!_programs->remount(Device).isDone);
    _sandbox.standIn(text("mount")).crashes();
    QVERIFY(!_programs->remount(Device).isDone);
    QCOMPARE(_errors, QStringList());
}

void TestQuotaPrograms::mountThatCannotRun()
{
    makeUnable(text("mount"), 0);
    QVERIFY(!_programs->remount(Device).isDone);
    QVERIFY(_details.last().startsWith(text("mount /dev/sda1 -o remount: could not be started")));
}

void TestQuotaPrograms::quotacheckMakesNoOtherTypes_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {-1, 2, 100})
        QTest::addRow("%d", type) << type;
}

void TestQuotaPrograms::quotacheckMakesNoOtherTypes()
{
    QFETCH(int, type);
    QVERIFY(!_programs->createQuotaFiles(Device, type).isDone);
    QCOMPARE(_errors, QStringList{text("Unknown type option for createQuotaFiles")});
    QCOMPARE(_sandbox.calls().size(), 0);
}

void TestQuotaPrograms::quotacheckSucceedsHoweverItEnds()
{
    _sandbox.standIn(text("quotacheck")).complains("quotacheck: no\n").exits(1);
    QVERIFY(_programs->createQuotaFiles(Device, UserQuota).isDone);
    _sandbox.standIn(text("quotacheck")).crashes();
    QVERIFY(_programs->createQuotaFiles(Device, UserQuota).isDone);
    QCOMPARE(_details.last(), text("quotacheck -um /dev/sda1: was ended by a signal"));
    QCOMPARE(_errors, QStringList());
}

void TestQuotaPrograms::quotacheckThatCannotStart()
{
    QFETCH(int, way);
    makeUnable(text("quotacheck"), way);
    QVERIFY(!_programs->createQuotaFiles(Device, GroupQuota).isDone);
    QCOMPARE(_errors, QStringList{text("Process quotacheck -gm /dev/sda1 can not started")});
}

void TestQuotaPrograms::quotaonAndQuotaoffThatCannotStart()
{
    QFETCH(int, way);
    makeUnable(text("quotaon"), way);
    makeUnable(text("quotaoff"), way);
    QVERIFY(!_programs->runQuotaOnOff(Device, UserQuota, true));
    QVERIFY(!_programs->runQuotaOnOff(Device, GroupQuota, false));
    QCOMPARE(_errors, QStringList({text("Process quotaon can not started"), text("Process quotaoff can not started")}));
}

void TestQuotaPrograms::quotaonIsJudgedByWhatItComplainsOf_data()
{
    QTest::addColumn<QByteArray>("complaint");
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("succeeds");
    QTest::newRow("nothing") << QByteArray() << 0 << true;
    QTest::newRow("nothing, but a code") << QByteArray() << 1 << true;
    QTest::newRow("was on") << QByteArray("quotaon: using /a/aquota.user on /dev/sda1 [/a]: Device or resource busy\n")
                            << 1 << true;
    QTest::newRow("was on, among others") << QByteArray("a warning\nquotaon: using x\n") << 0 << true;
    QTest::newRow("no file") << QByteArray("quotaon: cannot find /a/aquota.user on /dev/sda1 [/a]\n") << 1 << false;
    QTest::newRow("complaint without a code") << QByteArray("hm") << 0 << false;
    QTest::newRow("using without a colon") << QByteArray("using /a\n") << 0 << false;
    QTest::newRow("only a line feed") << QByteArray("\n") << 0 << false;
}

void TestQuotaPrograms::quotaonIsJudgedByWhatItComplainsOf()
{
    QFETCH(QByteArray, complaint);
    QFETCH(int, code);
    QFETCH(bool, succeeds);
    _sandbox.standIn(text("quotaon")).complains(complaint).exits(code);
    QCOMPARE(_programs->runQuotaOnOff(Device, UserQuota, true), succeeds);
    const QString error = text("Process quotaon -u /dev/sda1 return error ") + QString::fromUtf8(complaint);
    QCOMPARE(_errors, succeeds ? QStringList() : QStringList{error});
}

/// That it crashed is told; what it did before is seen from the kernel.
void TestQuotaPrograms::quotaonThatCrashes()
{
    _sandbox.standIn(text("quotaon")).crashes();
    QVERIFY(_programs->runQuotaOnOff(Device, UserQuota, true));
    QCOMPARE(_details.last(), text("quotaon -u /dev/sda1: was ended by a signal"));
    _sandbox.standIn(text("quotaon")).complains("oh").crashes();
    QVERIFY(!_programs->runQuotaOnOff(Device, UserQuota, true));
    QCOMPARE(_errors, QStringList{text("Process quotaon -u /dev/sda1 return error oh")});
}

void TestQuotaPrograms::megabytesOnStandardOutput()
{
    for (const char *program : {"mount", "quotacheck", "quotaon"})
        _sandbox.standIn(text(program)).prints(QByteArray(megabytes, 'x'));
    QVERIFY(_programs->remount(Device).isDone);
    QVERIFY(_programs->createQuotaFiles(Device, UserQuota).isDone);
    QVERIFY(_programs->runQuotaOnOff(Device, UserQuota, true));
    QCOMPARE(_errors, QStringList());
}

/// The program is not held up, and nobody has to look at all of it.
void TestQuotaPrograms::megabytesOnStandardError()
{
    for (const char *program : {"mount", "quotacheck", "quotaon"})
        _sandbox.standIn(text(program)).complains("first\n" + QByteArray(megabytes, 'x') + "\nlast\n");
    QVERIFY(_programs->remount(Device).isDone);
    QVERIFY(_programs->createQuotaFiles(Device, UserQuota).isDone);
    QVERIFY(!_programs->runQuotaOnOff(Device, UserQuota, true));
    constexpr int readable = 20000;
    QCOMPARE(_errors.size(), 1);
    QVERIFY(_errors.first().startsWith(text("Process quotaon -u /dev/sda1 return error first\nxxx")));
    QVERIFY(_errors.first().endsWith(text("xxx\nlast\n")));
    QVERIFY(_errors.first().size() < readable);
    for (const QString &detail : qAsConst(_details)) {
        QVERIFY(detail.size() < readable);
        QVERIFY(detail.endsWith(text("\nlast")));
    }
}

void TestQuotaPrograms::complaintsThatLookLikePlacesToFillIn()
{
    _sandbox.standIn(text("quotaoff")).complains("%1 %2 %3").exits(1);
    QVERIFY(!_programs->runQuotaOnOff(text("/dev/%3"), GroupQuota, false));
    QCOMPARE(_errors, QStringList{text("Process quotaoff -g /dev/%3 return error %1 %2 %3")});
}

void TestQuotaPrograms::whatIsSaidIsTranslatedBeforeItIsFilledIn()
{
    class Translator : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *wording, const char * /*comment*/,
                          int /*count*/) const override
        {
            return QStringLiteral("<%1>").arg(QLatin1String(context)) + QLatin1String(wording);
        }
    };
    Translator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const QString mark = text("<QuotaPrograms>");
    QVERIFY(!_programs->createQuotaFiles(Device, 2).isDone);
    _sandbox.standIn(text("quotaoff")).complains("quotaoff: no\n").exits(1);
    QVERIFY(!_programs->runQuotaOnOff(Device, UserQuota, false));
    for (const char *program : {"quotacheck", "quotaon"})
        _sandbox.standIn(text(program)).cannotBeStarted();
    QVERIFY(!_programs->createQuotaFiles(Device, GroupQuota).isDone);
    QVERIFY(!_programs->runQuotaOnOff(Device, UserQuota, true));
    QCOMPARE(_errors, QStringList({mark + text("Unknown type option for createQuotaFiles"),
                                   mark + text("Process quotaoff -u /dev/sda1 return error quotaoff: no\n"),
                                   mark + text("Process quotacheck -gm /dev/sda1 can not started"),
                                   mark + text("Process quotaon can not started")}));
}

KRA_SANDBOX_MAIN(TestQuotaPrograms)

#include "tst_quotaprograms.moc"
