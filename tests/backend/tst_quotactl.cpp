// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <quotactl.h>
#include <quotakind.h>
#include <sandbox.h>

#include <QSignalSpy>
#include <QtTest>

#include <cerrno>

namespace
{

const QString Device = QStringLiteral("/dev/sda1");

} // namespace

class TestQuotaCtl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void getFormatGivesTheKernelsNumber();
    void getInfoGivesGracePeriodsAndFlags();
    void setInfoHandsTheInfoOver();
    void getQuotaGivesOneAccountsRecord();
    void setQuotaHandsTheRecordOver();
    void commandAndIdAreTheKernels();
    void largeIdIsHandedOverWhole();
    void devicePathIsUtf8();
    void failureEmitsTheNumberThenTheText();
    void failureGivesTheFailureValue();
    void aSlotThatChangesErrnoDoesNotChangeTheText();
    void successEmitsNothing();
    void eintrAndErrno39AreUnknownErrors();
    void switchQuotaOnAndOff();
    void switchQuotaWithAnotherTypeMakesNoCall();

private:
    FakeKernel::Call lastCall() { return _sandbox.kernel().calls().constLast(); }

    Sandbox _sandbox;
};

void TestQuotaCtl::init()
{
    _sandbox.reset();
    FakeKernel::State state;
    state.format = 4;
    state.info.dqi_bgrace = 604800;
    state.info.dqi_igrace = 86400;
    state.info.dqi_flags = DQF_SYS_FILE;
    state.records[1000].dqb_bhardlimit = 2048;
    state.records[1000].dqb_curspace = 12345;
    _sandbox.kernel().setState("/dev/sda1", GroupQuota, state);
}

void TestQuotaCtl::getFormatGivesTheKernelsNumber()
{
    QCOMPARE(QuotaCtl().getFormat(Device, GroupQuota), 4);
}

void TestQuotaCtl::getInfoGivesGracePeriodsAndFlags()
{
    const dqinfo info = QuotaCtl().getInfo(Device, GroupQuota);
    QCOMPARE(info.dqi_bgrace, decltype(info.dqi_bgrace)(604800));
    QCOMPARE(info.dqi_igrace, decltype(info.dqi_igrace)(86400));
    QCOMPARE(info.dqi_flags, decltype(info.dqi_flags)(DQF_SYS_FILE));
}

void TestQuotaCtl::setInfoHandsTheInfoOver()
{
    dqinfo info = {};
    info.dqi_bgrace = 7;
    info.dqi_igrace = 8;
    info.dqi_valid = IIF_BGRACE;
    QVERIFY(QuotaCtl().setInfo(Device, info, GroupQuota));
    const dqinfo kept = _sandbox.kernel().state("/dev/sda1", GroupQuota).info;
    QCOMPARE(kept.dqi_bgrace, decltype(kept.dqi_bgrace)(7));
    QCOMPARE(kept.dqi_igrace, decltype(kept.dqi_igrace)(86400));
}

void TestQuotaCtl::getQuotaGivesOneAccountsRecord()
{
    const dqblk quota = QuotaCtl().getQuota(Device, 1000, GroupQuota);
    QCOMPARE(quota.dqb_bhardlimit, decltype(quota.dqb_bhardlimit)(2048));
    QCOMPARE(quota.dqb_curspace, decltype(quota.dqb_curspace)(12345));
}

void TestQuotaCtl::setQuotaHandsTheRecordOver()
{
    dqblk quota = {};
    quota.dqb_ihardlimit = 9;
    quota.dqb_bhardlimit = 1;
    quota.dqb_valid = QIF_ILIMITS;
    QVERIFY(QuotaCtl().setQuota(Device, 1000, quota, GroupQuota));
    const dqblk kept = _sandbox.kernel().state("/dev/sda1", GroupQuota).records.value(1000);
    QCOMPARE(kept.dqb_ihardlimit, decltype(kept.dqb_ihardlimit)(9));
    QCOMPARE(kept.dqb_bhardlimit, decltype(kept.dqb_bhardlimit)(2048));
}

void TestQuotaCtl::commandAndIdAreTheKernels()
{
    QuotaCtl control;
    const auto check = [this](int command, int id) {
        QCOMPARE(lastCall().command, command);
        QCOMPARE(lastCall().type, int(GroupQuota));
        QCOMPARE(lastCall().device, QByteArray("/dev/sda1"));
        QCOMPARE(lastCall().id, id);
    };
    control.getFormat(Device, GroupQuota);
    check(0x800004, 0);
    control.getInfo(Device, GroupQuota);
    check(0x800005, 0);
    control.setInfo(Device, {}, GroupQuota);
    check(0x800006, 0);
    control.getQuota(Device, 1000, GroupQuota);
    check(0x800007, 1000);
    control.setQuota(Device, 1001, {}, GroupQuota);
    check(0x800008, 1001);
    control.getFormat(Device, UserQuota);
    QCOMPARE(lastCall().type, 0);
}

void TestQuotaCtl::largeIdIsHandedOverWhole()
{
    FakeKernel::State state;
    state.records[4294967294U].dqb_curspace = 5;
    _sandbox.kernel().setState("/dev/sda1", UserQuota, state);
    const dqblk quota = QuotaCtl().getQuota(Device, static_cast<qint32>(4294967294U), UserQuota);
    QCOMPARE(quota.dqb_curspace, decltype(quota.dqb_curspace)(5));
}

void TestQuotaCtl::devicePathIsUtf8()
{
    QuotaCtl().getFormat(QString::fromUtf8("/dev/mapper/größe"), UserQuota);
    QCOMPARE(lastCall().device, QByteArray("/dev/mapper/größe"));
}

void TestQuotaCtl::failureEmitsTheNumberThenTheText()
{
    QuotaCtl control;
    QVariantList emitted;
    connect(&control, qOverload<const QString &>(&QuotaCtl::error), this,
            [&emitted](const QString &message) { emitted.append(message); });
    connect(&control, qOverload<int>(&QuotaCtl::error), this,
            [&emitted](int errorNumber) { emitted.append(errorNumber); });
    QCOMPARE(control.getFormat(QStringLiteral("/dev/none"), UserQuota), -1);
    QCOMPARE(emitted, (QVariantList{ENOENT, QStringLiteral("File specified in special or addr not exist")}));
}

void TestQuotaCtl::failureGivesTheFailureValue()
{
    const QString none = QStringLiteral("/dev/none");
    QuotaCtl control;
    const QSignalSpy errors(&control, qOverload<int>(&QuotaCtl::error));
    QCOMPARE(control.getFormat(none, UserQuota), -1);
    QCOMPARE(control.getInfo(none, UserQuota).dqi_bgrace, decltype(dqinfo::dqi_bgrace)(0));
    QVERIFY(!control.setInfo(none, {}, UserQuota));
    QCOMPARE(control.getQuota(none, 0, UserQuota).dqb_curspace, decltype(dqblk::dqb_curspace)(0));
    QVERIFY(!control.setQuota(none, 0, {}, UserQuota));
    QVERIFY(!control.switchQuota(none, UserQuota, true));
    QCOMPARE(errors.size(), 6);
}

void TestQuotaCtl::successEmitsNothing()
{
    QuotaCtl control;
    const QSignalSpy numbers(&control, qOverload<int>(&QuotaCtl::error));
    const QSignalSpy messages(&control, qOverload<const QString &>(&QuotaCtl::error));
    control.getFormat(Device, GroupQuota);
    control.getQuota(Device, 77, GroupQuota);
    QVERIFY(numbers.isEmpty());
    QVERIFY(messages.isEmpty());
}

void TestQuotaCtl::eintrAndErrno39AreUnknownErrors()
{
    QuotaCtl control;
    const QSignalSpy messages(&control, qOverload<const QString &>(&QuotaCtl::error));
    for (const int errorNumber : {4, 39}) {
        FakeKernel::State state;
        state.failures.insert(Q_GETFMT, errorNumber);
        _sandbox.kernel().setState("/dev/sda1", UserQuota, state);
        control.getFormat(Device, UserQuota);
        QCOMPARE(messages.constLast().first().toString(), QStringLiteral("Unknown error while executing quotactl"));
    }
    QCOMPARE(messages.size(), 2);
}

void TestQuotaCtl::switchQuotaOnAndOff()
{
    FakeKernel::State state;
    state.on = false;
    _sandbox.kernel().setState("/dev/sda1", UserQuota, state);
    QuotaCtl control;
    QVERIFY(control.switchQuota(Device, UserQuota, true));
    QCOMPARE(lastCall().command, 0x800002);
    QCOMPARE(lastCall().id, 4);
    QCOMPARE(lastCall().quotaFile, QByteArray("/aquota.user"));
    QVERIFY(_sandbox.kernel().state("/dev/sda1", UserQuota).on);
    QVERIFY(control.switchQuota(Device, UserQuota, false));
    QCOMPARE(lastCall().command, 0x800003);
    QCOMPARE(lastCall().id, 0);
    QVERIFY(!_sandbox.kernel().state("/dev/sda1", UserQuota).on);

    control.switchQuota(Device, GroupQuota, true);
    QCOMPARE(lastCall().quotaFile, QByteArray("/aquota.group"));
}

void TestQuotaCtl::aSlotThatChangesErrnoDoesNotChangeTheText()
{
    QuotaCtl control;
    connect(&control, qOverload<int>(&QuotaCtl::error), this, [] { errno = EPERM; });
    const QSignalSpy messages(&control, qOverload<const QString &>(&QuotaCtl::error));
    control.getFormat(QStringLiteral("/dev/none"), UserQuota);
    QCOMPARE(messages.first().first().toString(), QStringLiteral("File specified in special or addr not exist"));
}

void TestQuotaCtl::switchQuotaWithAnotherTypeMakesNoCall()
{
    QuotaCtl control;
    const QSignalSpy numbers(&control, qOverload<int>(&QuotaCtl::error));
    const QSignalSpy messages(&control, qOverload<const QString &>(&QuotaCtl::error));
    for (const int type : {-1, 2, 256})
        QVERIFY(!control.switchQuota(Device, type, true));
    QCOMPARE(numbers.size(), 3);
    QCOMPARE(numbers.first().first().toInt(), EINVAL);
    QCOMPARE(messages.first().first().toString(), QStringLiteral("Wrong value cmd or type"));
    QVERIFY(_sandbox.kernel().calls().isEmpty());
}

KRA_SANDBOX_MAIN(TestQuotaCtl)
#include "tst_quotactl.moc"
