// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <appliedchanges.h>
#include <memorysizetransfer.h>
#include <userdata.h>

#include <QtTest>

/// What the task list says of an update that succeeded.
class TestAppliedChanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English)); }

    void eachEditedFieldIsALine();
    void whatIsNotEditedIsNotSaid();
    void sizesThatLookAlikeAreToldToTheByte();
    void aRecordOfAllDevicesSaysNothing();
    void aKindThatIsSwitched();
    void gracePeriods();

private:
    static MemorySize size(quint64 bytes) { return {MemorySizeTransfer(), bytes}; }
    static UserData edited(const DeviceQuota &before, const DeviceQuota &after)
    {
        UserData record;
        record.name = QStringLiteral("anna");
        record.deviceQuotas.insert(device(), after);
        record.touched = std::make_shared<TouchedQuota>(TouchedQuota{device(), before});
        return record;
    }
    static GeneralData edited(const DeviceSettings &before, const DeviceSettings &after)
    {
        GeneralData record;
        record.deviceSettings.insert(device(), after);
        record.touched = TouchedSettings{device(), before};
        return record;
    }
    static QString device() { return QStringLiteral("/dev/vda1"); }
};

void TestAppliedChanges::eachEditedFieldIsALine()
{
    DeviceQuota before;
    before.softBlockLimit = size(1ULL << 30);
    before.hardInodeLimit = 12000;
    before.blocksTimeToForce = QDateTime(QDate(2026, 12, 1), QTime(9, 30));
    DeviceQuota after;
    after.softBlockLimit = size(2ULL << 30);
    after.hardBlockLimit = size(3ULL << 30);
    after.softInodeLimit = 500;
    after.blocksTimeToForce = QDateTime(QDate(2026, 12, 2), QTime(9, 30));
    after.inodesTimeToForce = QDateTime(QDate(2026, 12, 3), QTime(9, 30));
    const QStringList lines = {
        QStringLiteral("anna, /dev/vda1: soft limit on space: 2 Gb, before: 1 Gb"),
        QStringLiteral("anna, /dev/vda1: hard limit on space: 3 Gb, before: none"),
        QStringLiteral("anna, /dev/vda1: soft limit on files: 500, before: none"),
        QStringLiteral("anna, /dev/vda1: hard limit on files: none, before: 12,000"),
        QStringLiteral("anna, /dev/vda1: time to force of space: 02.12.2026 09:30, before: 01.12.2026 09:30"),
        QStringLiteral("anna, /dev/vda1: time to force of files: 03.12.2026 09:30, before: none"),
    };
    QCOMPARE(AppliedChanges::of(edited(before, after)).split(QLatin1Char('\n')), lines);
}

void TestAppliedChanges::whatIsNotEditedIsNotSaid()
{
    DeviceQuota quota;
    quota.softBlockLimit = size(1ULL << 30);
    DeviceQuota after = quota;
    after.usedBlocks = size(5);
    QCOMPARE(AppliedChanges::of(edited(quota, after)), QString());
    // Its number and its unit are a size too, and less than a block is none to the kernel.
    after.softBlockLimit.bytes = 0;
    after.hardBlockLimit = size(1023);
    QCOMPARE(AppliedChanges::of(edited(quota, after)), QString());
}

void TestAppliedChanges::sizesThatLookAlikeAreToldToTheByte()
{
    DeviceQuota before;
    before.softBlockLimit = size((3ULL << 30) + 1024);
    DeviceQuota after;
    after.softBlockLimit = size((3ULL << 30) + 2048 + 1);
    QCOMPARE(AppliedChanges::of(edited(before, after)),
             QStringLiteral("anna, /dev/vda1: soft limit on space: 3 Gb (3,221,227,520 bytes), "
                            "before: 3 Gb (3,221,226,496 bytes)"));
    after.softBlockLimit = size(20000ULL << 30);
    QCOMPARE(AppliedChanges::of(edited(before, after)).section(QLatin1Char(','), 1, 1),
             QStringLiteral(" /dev/vda1: soft limit on space: 2e+04 Gb (21"));
}

void TestAppliedChanges::aRecordOfAllDevicesSaysNothing()
{
    DeviceQuota after;
    after.softInodeLimit = 5;
    UserData record = edited(DeviceQuota(), after);
    record.touched.reset();
    QCOMPARE(AppliedChanges::of(record), QString());
    DeviceSettings settings;
    settings.userSettings.quotaOn = true;
    GeneralData general = edited(DeviceSettings(), settings);
    general.touched.reset();
    QCOMPARE(AppliedChanges::of(general), QString());
}

void TestAppliedChanges::aKindThatIsSwitched()
{
    DeviceSettings before;
    before.groupSettings.quotaOn = true;
    before.groupSettings.blockGrace = TimePeriod(604800);
    DeviceSettings after;
    after.userSettings.quotaOn = true;
    after.userSettings.inodeGrace = TimePeriod(2 * 86400);
    QCOMPARE(AppliedChanges::of(edited(before, after)),
             QStringLiteral("/dev/vda1: quotas for users: on, before: off\n"
                            "/dev/vda1: grace period for files, users: 2 days, before: none\n"
                            "/dev/vda1: quotas for groups: off, before: on"));
    GeneralData taken = edited(DeviceSettings(), DeviceSettings());
    taken.touched->optionsToTake = {GroupQuota};
    QCOMPARE(AppliedChanges::of(taken),
             QStringLiteral("/dev/vda1: option for groups in /etc/fstab: none, before: present"));
}

void TestAppliedChanges::gracePeriods()
{
    DeviceSettings before;
    before.userSettings.quotaOn = before.groupSettings.quotaOn = true;
    before.userSettings.blockGrace = before.groupSettings.inodeGrace = TimePeriod(2 * 604800);
    DeviceSettings after = before;
    after.userSettings.blockGrace = TimePeriod(3 * 604800);
    after.groupSettings.inodeGrace = TimePeriod();
    QCOMPARE(AppliedChanges::of(edited(before, after)),
             QStringLiteral("/dev/vda1: grace period for space, users: 3 weeks, before: 2 weeks\n"
                            "/dev/vda1: grace period for files, groups: none, before: 2 weeks"));
}

QTEST_APPLESS_MAIN(TestAppliedChanges)
#include "tst_appliedchanges.moc"
