// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <quotactlmessages.h>

#include <QtTest>

#include <cerrno>
#include <limits>

class TestQuotaCtlMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysWhatFailed_data();
    void saysWhatFailed();
    void everyOtherNumberIsUnknown();
    void isTranslatedInTheContextOfQuotaCtl();
    void theDeviceIsNamed();
};

void TestQuotaCtlMessages::saysWhatFailed_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, int number, const char *message) {
        QTest::newRow(name) << number << QString::fromLatin1(message);
    };
    row("EPERM", 1, "The caller does not have the necessary rights (CAP_SYS_ADMIN) to perform the specified operation");
    row("ENOENT", 2, "File specified in special or addr not exist");
    row("ESRCH", 3, "No disk map was found for the specified user. Quota turned off in file system");
    row("EACCES", 13,
        "Quota file specified in addr exist but is not a perpetual file or quota file specified in addr exist but is "
        "not on the file system of the specified in special");
    row("EFAULT", 14, "Wrong value addr or special");
    row("ENOTBLK", 15, "Value special does not indicate on block device");
    row("EBUSY", 16, "Attemp to execut Q_QUOTAON but another start is already in progress Q_QUOTAON");
    row("EINVAL", 22, "Wrong value cmd or type");
    row("ENOSYS", 38, "Core assembled with parameter turned off CONFIG_QUOTA");
}

void TestQuotaCtlMessages::saysWhatFailed()
{
    QFETCH(int, number);
    QTEST(quotaCtlMessage(number), "message");
}

void TestQuotaCtlMessages::everyOtherNumberIsUnknown()
{
    const QSet<int> listed = {1, 2, 3, 13, 14, 15, 16, 22, 38};
    QVector<int> numbers = {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
    for (int number = -2; number <= 200; ++number)
        numbers.append(number);
    for (const int number : qAsConst(numbers)) {
        if (!listed.contains(number))
            QCOMPARE(quotaCtlMessage(number), QStringLiteral("Unknown error while executing quotactl"));
    }
}

void TestQuotaCtlMessages::isTranslatedInTheContextOfQuotaCtl()
{
    class Translator : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *, const char *, int) const override
        {
            return QString::fromLatin1(context);
        }
    };
    Translator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const QString listed = quotaCtlMessage(1);
    const QString other = quotaCtlMessage(4);
    QVERIFY(QCoreApplication::removeTranslator(&translator));
    QCOMPARE(listed, QStringLiteral("QuotaCtl"));
    QCOMPARE(other, QStringLiteral("QuotaCtl"));
}

void TestQuotaCtlMessages::theDeviceIsNamed()
{
    const QString device = QStringLiteral("/dev/vda");
    QCOMPARE(quotaCtlMessages(device, ENOSPC),
             (QStringList{quotaCtlMessage(ENOSPC), QStringLiteral("/dev/vda: ") + qt_error_string(ENOSPC)}));
    QCOMPARE(quotaCtlMessages(device, EPERM),
             (QStringList{quotaCtlMessage(EPERM), QStringLiteral("/dev/vda: ") + qt_error_string(EPERM)}));
}

QTEST_GUILESS_MAIN(TestQuotaCtlMessages)
#include "tst_quotactlmessages.moc"
