// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <generaldata.h>
#include <groupdata.h>
#include <userdata.h>

#include <QtTest>

#include <memory>

class TestRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewAccountRecordNamesNobody();
    void aDefaultDeviceQuotaIsEmpty();
    void aRecordWithAnEmptyMapReadsAsDefaults();
    void lookingUpAMissingDeviceInsertsNothing();
    void devicesAreOrderedByPath();
    void changingACopyLeavesTheFirstAlone();
    void aCopyTakesTheHostsFieldsAlong();
    void defaultSettingsAreAllOff();
};

void TestRecords::aNewAccountRecordNamesNobody()
{
    const UserData user;
    QCOMPARE(user.id, -1);
    QCOMPARE(user.name, QString());
    QVERIFY(user.deviceQuotas.isEmpty());
    QCOMPARE(GroupData().id, -1);
}

void TestRecords::aDefaultDeviceQuotaIsEmpty()
{
    const DeviceQuota quota;
    for (const MemorySize *size : {&quota.usedBlocks, &quota.hardBlockLimit, &quota.softBlockLimit}) {
        QCOMPARE(size->bytes, quint64(0));
        QCOMPARE(size->unit, 0);
        QVERIFY(size->text.isEmpty());
    }
    for (const quint64 count : {quota.usedInodes, quota.hardInodeLimit, quota.softInodeLimit})
        QCOMPARE(count, quint64(0));
    QVERIFY(!quota.inodesTimeToForce.isValid());
    QVERIFY(!quota.blocksTimeToForce.isValid());
    QVERIFY(quota.inodeGracePeriod.text.isEmpty());
    QVERIFY(quota.blockGracePeriod.text.isEmpty());
    QVERIFY(quota.deviceName.isEmpty());
    QVERIFY(quota.filesystemType.isEmpty());
    for (const bool flag :
         {quota.quotaIsOn, quota.kindIsOn, quota.optionIsMounted, quota.fileExists, quota.optionInForce})
        QVERIFY(!flag);
}

void TestRecords::aRecordWithAnEmptyMapReadsAsDefaults()
{
    const UserData user;
    const DeviceQuota quota = user.deviceQuotas.value(QStringLiteral("/dev/sda1"));
    QVERIFY(quota.usedBlocks.text.isEmpty());
    QVERIFY(!quota.quotaIsOn);
    const GeneralData general;
    const DeviceSettings settings = general.deviceSettings.value(QStringLiteral("/dev/sda1"));
    QVERIFY(settings.filesystemType.isEmpty());
    QVERIFY(!settings.userSettings.quotaOn);
}

void TestRecords::lookingUpAMissingDeviceInsertsNothing()
{
    UserData user;
    user.deviceQuotas[QStringLiteral("/dev/sdb1")].usedInodes = 3;
    QCOMPARE(user.deviceQuotas.value(QStringLiteral("/dev/sda1")).usedInodes, quint64(0));
    QCOMPARE(user.deviceQuotas.keys(), QList<QString>{QStringLiteral("/dev/sdb1")});
}

void TestRecords::devicesAreOrderedByPath()
{
    GeneralData general;
    for (const char *path : {"/dev/sdb1", "/dev/sda10", "/dev/sda2"})
        general.deviceSettings.insert(QString::fromLatin1(path), {});
    QCOMPARE(general.deviceSettings.keys(),
             (QList<QString>{QStringLiteral("/dev/sda10"), QStringLiteral("/dev/sda2"), QStringLiteral("/dev/sdb1")}));
}

void TestRecords::changingACopyLeavesTheFirstAlone()
{
    const QString device = QStringLiteral("/dev/sda1");
    UserData first;
    first.name = QStringLiteral("alice");
    first.id = 1000;
    first.deviceQuotas[device].softInodeLimit = 10;

    UserData copy = first;
    QCOMPARE(copy.name, first.name);
    QCOMPARE(copy.id, first.id);
    copy.deviceQuotas[device].softInodeLimit = 20;
    copy.deviceQuotas[QStringLiteral("/dev/sdb1")].softInodeLimit = 30;
    QCOMPARE(first.deviceQuotas.size(), 1);
    QCOMPARE(first.deviceQuotas.value(device).softInodeLimit, quint64(10));

    GeneralData general;
    general.deviceSettings[device].userSettings.quotaOn = true;
    GeneralData assigned;
    assigned = general;
    assigned.deviceSettings[device].userSettings.quotaOn = false;
    QVERIFY(general.deviceSettings.value(device).userSettings.quotaOn);
}

void TestRecords::aCopyTakesTheHostsFieldsAlong()
{
    GeneralData general;
    general.params.insert(GeneralData::passedOverKey(), QStringList{QStringLiteral("a line")});
    general.text = QStringLiteral("text");
    general.number = 7;
    const GeneralData copy = general;
    QCOMPARE(copy.params.value(QStringLiteral("passedOver")).toStringList(), QStringList{QStringLiteral("a line")});
    QCOMPARE(copy.text, QStringLiteral("text"));
    QCOMPARE(copy.number, 7);
}

void TestRecords::defaultSettingsAreAllOff()
{
    const DeviceSettings settings;
    for (const KindSettings *kind : {&settings.userSettings, &settings.groupSettings}) {
        QVERIFY(kind->device.isEmpty());
        QVERIFY(!kind->optionInForce && !kind->optionConfigured && !kind->quotaOn && !kind->fileExists);
        QCOMPARE(kind->blockGrace.toSeconds(), qint64(0));
        QCOMPARE(kind->inodeGrace.toSeconds(), qint64(0));
    }
    QVERIFY(settings.features.isEmpty());
    QVERIFY(settings.failures.isEmpty());
    QCOMPARE(DeviceSettings::quotaFeature(), QStringLiteral("quota-feature"));
}

QTEST_GUILESS_MAIN(TestRecords)
#include "tst_records.moc"
