// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "machinefacts.h"

#include <quotamanager.h>

#include <QSignalSpy>
#include <QTest>

/// What the back end reads of a real machine's devices, against what that machine's own programs say.
class TestReadGeneral : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void findsTheDevices();
    void readsADevice_data();
    void readsADevice();
    void coversEveryState();

private:
    GeneralData _data;
};

namespace
{

void compare(const KindSettings &read, const MachineFacts::Kind &facts, const QString &device)
{
    QCOMPARE(read.device, device);
    QCOMPARE(read.optionConfigured, facts.configured);
    QCOMPARE(read.optionInForce, facts.inForce);
    QCOMPARE(read.quotaOn, facts.on);
    QCOMPARE(read.fileExists, facts.hasFile);
    QCOMPARE(read.blockGrace.toSeconds(), facts.blockGrace);
    QCOMPARE(read.inodeGrace.toSeconds(), facts.inodeGrace);
}

} // namespace

void TestReadGeneral::initTestCase()
{
    QuotaManager manager;
    const QSignalSpy errors(&manager, &QuotaManager::error);
    _data = manager.readGeneral();
    QVERIFY2(errors.isEmpty(), qPrintable(errors.value(0).value(0).toString()));
}

void TestReadGeneral::findsTheDevices()
{
    QStringList expected = MachineFacts::quotaDevices();
    expected.sort();
    QCOMPARE(_data.deviceSettings.keys(), expected);
}

void TestReadGeneral::readsADevice_data()
{
    QTest::addColumn<QString>("device");
    for (const QString &device : MachineFacts::quotaDevices())
        QTest::newRow(qPrintable(device)) << device;
}

void TestReadGeneral::readsADevice()
{
    QFETCH(const QString, device);
    const MachineFacts::Device facts = MachineFacts::device(device);
    const DeviceSettings read = _data.deviceSettings.value(device);
    QCOMPARE(read.filesystemType, facts.type);
    QCOMPARE(read.failures, QStringList());
    compare(read.userSettings, facts.user, device);
    compare(read.groupSettings, facts.group, device);
}

/// The comparison above would say little on a machine whose devices are all alike.
void TestReadGeneral::coversEveryState()
{
    int inForce = 0;
    int onlyConfigured = 0;
    int without = 0;
    int asFeature = 0;
    for (const QString &path : MachineFacts::quotaDevices()) {
        const MachineFacts::Kind user = MachineFacts::device(path).user;
        inForce += user.configured && user.inForce && user.on && user.hasFile ? 1 : 0;
        onlyConfigured += user.configured && !user.inForce && !user.on ? 1 : 0;
        without += !user.configured && !user.inForce && !user.on ? 1 : 0;
        asFeature += !user.configured && user.on && !user.hasFile ? 1 : 0;
    }
    QCOMPARE(inForce, 1);
    QCOMPARE(onlyConfigured, 1);
    QCOMPARE(without, 1);
    QCOMPARE(asFeature, 1);
    QCOMPARE(MachineFacts::device(QStringLiteral("/dev/vda")).user.blockGrace, qint64(3 * 86400));
    QCOMPARE(MachineFacts::device(QStringLiteral("/dev/vda")).group.inodeGrace, qint64(12 * 3600));
}

QTEST_GUILESS_MAIN(TestReadGeneral)
#include "tst_readgeneral.moc"
