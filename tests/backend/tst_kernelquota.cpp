// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <kernelquota.h>
#include <localtimes.h>

#include <QRandomGenerator>
#include <QtTest>

#include <limits>

/// An account's quota on its way from the kernel to a record and back.
class TestKernelQuota : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void whatTheKernelSays();
    void usageIsInBytesAndLimitsAreInBlocks();
    void whatCannotBeCountedIsTheMostThatCan();
    void theEpochIsATime();
    void anAccountIsLimitedByAnyOfTheFourLimits_data();
    void anAccountIsLimitedByAnyOfTheFourLimits();
    void nobodyIsLimitedWhileTheKindIsOff();
    void theFactsOfTheDeviceStay();
    void accountsWithTheSameLimitShareItsText();
    void eachLimitIsItsOwn();

    void limitsAreWrittenInBlocks_data();
    void limitsAreWrittenInBlocks();
    void theNumberAndItsUnitCount();
    void onlyTheTimesThatAreSetAreWritten_data();
    void onlyTheTimesThatAreSetAreWritten();
    void usageIsNotWritten();

    void everyLimitComesBackAsItWas();
    void timesComeBackToTheSecond_data();
    void timesComeBackToTheSecond();

private:
    MemorySizes _sizes;
    LocalTimes _times;
};

namespace
{

dqblk someRecord()
{
    dqblk record = {};
    record.dqb_curspace = 1536;
    record.dqb_bsoftlimit = 1024;
    record.dqb_bhardlimit = 2048;
    record.dqb_curinodes = 7;
    record.dqb_isoftlimit = 100;
    record.dqb_ihardlimit = Q_UINT64_C(5000000000);
    record.dqb_btime = 1893456001;
    record.dqb_itime = 1893456059;
    return record;
}

DeviceQuota onDevice()
{
    DeviceQuota quota;
    quota.kindIsOn = true;
    return quota;
}

} // namespace

void TestKernelQuota::initTestCase()
{
    qputenv("TZ", "Europe/Berlin"); // where clocks are changed
    tzset();
}

void TestKernelQuota::whatTheKernelSays()
{
    DeviceQuota quota = onDevice();
    setFromKernel(quota, someRecord(), _sizes, _times);
    QCOMPARE(quota.usedBlocks.text, QStringLiteral("1.5 Kb"));
    QCOMPARE(quota.softBlockLimit.text, QStringLiteral("1 Mb"));
    QCOMPARE(quota.hardBlockLimit.text, QStringLiteral("2 Mb"));
    QCOMPARE(quota.usedInodes, quint64(7));
    QCOMPARE(quota.softInodeLimit, quint64(100));
    QCOMPARE(quota.hardInodeLimit, Q_UINT64_C(5000000000));
    QCOMPARE(quota.blocksTimeToForce.toSecsSinceEpoch(), qint64(1893456001));
    QCOMPARE(quota.inodesTimeToForce.toSecsSinceEpoch(), qint64(1893456059));
    QCOMPARE(quota.inodesTimeToForce.timeSpec(), Qt::LocalTime);

    setFromKernel(quota, dqblk{}, _sizes, _times);
    QVERIFY(quota.usedBlocks.text.isEmpty());
    QCOMPARE(quota.hardInodeLimit, quint64(0));
    QVERIFY(quota.blocksTimeToForce.isNull());
    QVERIFY(quota.inodesTimeToForce.isNull());
}

void TestKernelQuota::usageIsInBytesAndLimitsAreInBlocks()
{
    dqblk record = {};
    record.dqb_curspace = 1;
    record.dqb_bsoftlimit = 1;
    record.dqb_bhardlimit = Q_UINT64_C(1) << 53; // the most that the kernel keeps
    DeviceQuota quota = onDevice();
    setFromKernel(quota, record, _sizes, _times);
    QCOMPARE(quota.usedBlocks.bytes, quint64(1));
    QCOMPARE(quota.softBlockLimit.bytes, quint64(1024));
    QCOMPARE(quota.hardBlockLimit.bytes, Q_UINT64_C(1) << 63);
}

/// No limit and no time are the last things that a number of many digits may turn into.
void TestKernelQuota::whatCannotBeCountedIsTheMostThatCan()
{
    dqblk record = {};
    record.dqb_bsoftlimit = (Q_UINT64_C(1) << 54) - 1;
    record.dqb_bhardlimit = Q_UINT64_C(1) << 54;
    record.dqb_btime = Q_UINT64_C(1) << 32;
    record.dqb_itime = std::numeric_limits<quint64>::max();
    DeviceQuota quota = onDevice();
    setFromKernel(quota, record, _sizes, _times);
    QCOMPARE(quota.softBlockLimit.bytes, std::numeric_limits<quint64>::max() - 1023);
    QCOMPARE(quota.hardBlockLimit.bytes, std::numeric_limits<quint64>::max());
    QCOMPARE(quota.blocksTimeToForce.toSecsSinceEpoch(), qint64(1) << 32);
    QVERIFY(quota.inodesTimeToForce.isValid());
    QVERIFY(quota.inodesTimeToForce.date().year() > 9999);
    QVERIFY(toKernel(quota).dqb_bhardlimit != 0);
    QCOMPARE(toKernel(quota).dqb_btime, quint64(1) << 32);
}

/// A time that was set counts, be it the first one there is.
void TestKernelQuota::theEpochIsATime()
{
    DeviceQuota quota;
    quota.blocksTimeToForce = QDateTime::fromSecsSinceEpoch(0);
    QCOMPARE(toKernel(quota).dqb_valid, quint32(QIF_LIMITS | QIF_BTIME));
    QCOMPARE(toKernel(quota).dqb_btime, quint64(0));
}

void TestKernelQuota::anAccountIsLimitedByAnyOfTheFourLimits_data()
{
    QTest::addColumn<quint64>("softBlocks");
    QTest::addColumn<quint64>("hardBlocks");
    QTest::addColumn<quint64>("softFiles");
    QTest::addColumn<quint64>("hardFiles");
    QTest::addColumn<bool>("limited");
    QTest::newRow("none") << quint64(0) << quint64(0) << quint64(0) << quint64(0) << false;
    QTest::newRow("soft space") << quint64(1) << quint64(0) << quint64(0) << quint64(0) << true;
    QTest::newRow("hard space") << quint64(0) << quint64(1) << quint64(0) << quint64(0) << true;
    QTest::newRow("soft files") << quint64(0) << quint64(0) << quint64(1) << quint64(0) << true;
    QTest::newRow("hard files") << quint64(0) << quint64(0) << quint64(0) << quint64(1) << true;
}

void TestKernelQuota::anAccountIsLimitedByAnyOfTheFourLimits()
{
    QFETCH(quint64, softBlocks);
    QFETCH(quint64, hardBlocks);
    QFETCH(quint64, softFiles);
    QFETCH(quint64, hardFiles);
    QFETCH(bool, limited);
    dqblk record = {};
    record.dqb_curspace = 4096; // what is used limits nobody
    record.dqb_bsoftlimit = softBlocks;
    record.dqb_bhardlimit = hardBlocks;
    record.dqb_isoftlimit = softFiles;
    record.dqb_ihardlimit = hardFiles;
    DeviceQuota quota = onDevice();
    setFromKernel(quota, record, _sizes, _times);
    QCOMPARE(quota.quotaIsOn, limited);
    QCOMPARE(hasLimit(record), limited);
}

void TestKernelQuota::nobodyIsLimitedWhileTheKindIsOff()
{
    DeviceQuota quota;
    setFromKernel(quota, someRecord(), _sizes, _times);
    QVERIFY(!quota.quotaIsOn);
}

void TestKernelQuota::theFactsOfTheDeviceStay()
{
    DeviceQuota quota = onDevice();
    quota.deviceName = QStringLiteral("/dev/vda");
    quota.filesystemType = QStringLiteral("ext4");
    quota.blockGracePeriod = TimePeriod(604800);
    quota.fileExists = true;
    setFromKernel(quota, someRecord(), _sizes, _times);
    QCOMPARE(quota.deviceName, QStringLiteral("/dev/vda"));
    QCOMPARE(quota.filesystemType, QStringLiteral("ext4"));
    QCOMPARE(quota.blockGracePeriod.weeks, 1U);
    QVERIFY(quota.fileExists && quota.kindIsOn);
}

/// A machine has few different limits, and those are round.
void TestKernelQuota::accountsWithTheSameLimitShareItsText()
{
    constexpr quint64 GiB = Q_UINT64_C(1) << 30;
    QVector<MemorySize> limits;
    for (int i = 1; i <= 20; ++i)
        limits.append(_sizes.limit(static_cast<quint64>(i) * GiB));
    int shared = 0;
    for (const MemorySize &limit : qAsConst(limits))
        shared += _sizes.limit(limit.bytes).text.constData() == limit.text.constData() ? 1 : 0;
    QVERIFY2(shared >= 15, qPrintable(QString::number(shared))); // two may drive each other out
}

void TestKernelQuota::eachLimitIsItsOwn()
{
    const MemorySizeTransfer units;
    for (quint64 bytes = 0; bytes < 5000; ++bytes) {
        const MemorySize &limit = _sizes.limit(bytes);
        QCOMPARE(limit.bytes, bytes);
        QCOMPARE(limit.text, MemorySize(units, bytes).text);
    }
}

void TestKernelQuota::limitsAreWrittenInBlocks_data()
{
    QTest::addColumn<quint64>("bytes");
    QTest::addColumn<quint64>("blocks");
    QTest::newRow("nothing") << quint64(0) << quint64(0);
    QTest::newRow("1023") << quint64(1023) << quint64(0);
    QTest::newRow("1024") << quint64(1024) << quint64(1);
    QTest::newRow("2047") << quint64(2047) << quint64(1);
    QTest::newRow("1048576") << quint64(1048576) << quint64(1024);
    QTest::newRow("1,234,567 Kb") << quint64(1264196608) << quint64(1234567);
    QTest::newRow("100 Gb") << Q_UINT64_C(107374182400) << quint64(104857600);
}

void TestKernelQuota::limitsAreWrittenInBlocks()
{
    QFETCH(quint64, bytes);
    QFETCH(quint64, blocks);
    DeviceQuota quota;
    quota.softBlockLimit = _sizes.limit(bytes);
    QCOMPARE(toKernel(quota).dqb_bsoftlimit, blocks);
    QCOMPARE(toKernel(quota).dqb_bhardlimit, quint64(0));
    quota.hardBlockLimit = _sizes.limit(bytes);
    QCOMPARE(toKernel(quota).dqb_bhardlimit, blocks);
}

void TestKernelQuota::theNumberAndItsUnitCount()
{
    DeviceQuota quota;
    quota.softBlockLimit = _sizes.limit(4096);
    quota.softBlockLimit.value = 1.5;
    quota.softBlockLimit.unit = MemorySizeTransfer::Mb;
    QCOMPARE(toKernel(quota).dqb_bsoftlimit, quint64(1536));
}

void TestKernelQuota::onlyTheTimesThatAreSetAreWritten_data()
{
    QTest::addColumn<bool>("blocks");
    QTest::addColumn<bool>("inodes");
    QTest::addColumn<quint32>("valid");
    QTest::newRow("none") << false << false << quint32(5);
    QTest::newRow("space") << true << false << quint32(0x15);
    QTest::newRow("files") << false << true << quint32(0x25);
    QTest::newRow("both") << true << true << quint32(0x35);
}

void TestKernelQuota::onlyTheTimesThatAreSetAreWritten()
{
    QFETCH(bool, blocks);
    QFETCH(bool, inodes);
    QFETCH(quint32, valid);
    DeviceQuota quota;
    if (blocks)
        quota.blocksTimeToForce = QDateTime::fromSecsSinceEpoch(1893456001);
    if (inodes)
        quota.inodesTimeToForce = QDateTime::fromSecsSinceEpoch(1893456002);
    const dqblk record = toKernel(quota);
    QCOMPARE(record.dqb_valid, valid);
    QCOMPARE(record.dqb_btime, quint64(blocks ? 1893456001 : 0));
    QCOMPARE(record.dqb_itime, quint64(inodes ? 1893456002 : 0));
}

void TestKernelQuota::usageIsNotWritten()
{
    DeviceQuota quota = onDevice();
    setFromKernel(quota, someRecord(), _sizes, _times);
    const dqblk record = toKernel(quota);
    QCOMPARE(record.dqb_curspace, quint64(0));
    QCOMPARE(record.dqb_curinodes, quint64(0));
}

void TestKernelQuota::everyLimitComesBackAsItWas()
{
    auto *random = QRandomGenerator::global();
    const auto upTo = [random](int bits) { return random->generate64() >> (64 - random->bounded(1, bits + 1)); };
    for (int i = 0; i < 100000; ++i) {
        dqblk record = {};
        record.dqb_bsoftlimit = upTo(53);
        record.dqb_bhardlimit = upTo(53);
        record.dqb_isoftlimit = upTo(64);
        record.dqb_ihardlimit = upTo(64);
        DeviceQuota quota = onDevice();
        setFromKernel(quota, record, _sizes, _times);
        const dqblk written = toKernel(quota);
        QCOMPARE(written.dqb_bsoftlimit, record.dqb_bsoftlimit);
        QCOMPARE(written.dqb_bhardlimit, record.dqb_bhardlimit);
        QCOMPARE(written.dqb_isoftlimit, record.dqb_isoftlimit);
        QCOMPARE(written.dqb_ihardlimit, record.dqb_ihardlimit);
    }
}

void TestKernelQuota::timesComeBackToTheSecond_data()
{
    QTest::addColumn<quint64>("seconds");
    QTest::newRow("long past") << quint64(1);
    QTest::newRow("before summer time") << quint64(1774745999);
    QTest::newRow("after it began") << quint64(1774746000);
    QTest::newRow("the hour that comes twice, first") << quint64(1792889999);
    QTest::newRow("the hour that comes twice, again") << quint64(1792892000);
    QTest::newRow("beyond 2038") << quint64(4102444799);
    QTest::newRow("beyond 32 bits") << quint64(1) + 0xffffffff;
}

void TestKernelQuota::timesComeBackToTheSecond()
{
    QFETCH(quint64, seconds);
    dqblk record = {};
    record.dqb_btime = seconds;
    record.dqb_itime = seconds + 1;
    DeviceQuota quota = onDevice();
    setFromKernel(quota, record, _sizes, _times);
    const DeviceQuota copy = quota;
    QCOMPARE(toKernel(copy).dqb_btime, seconds);
    QCOMPARE(toKernel(copy).dqb_itime, seconds + 1);
}

QTEST_GUILESS_MAIN(TestKernelQuota)
#include "tst_kernelquota.moc"
