// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <mounteddevice.h>
#include <quotamanager.h>
#include <sandbox.h>

#include <QDir>
#include <QtTest>

#include <algorithm>
#include <cerrno>
#include <memory>

namespace
{

constexpr int Accounts = 300;
const QString Sda = QStringLiteral("/dev/sda1");

} // namespace

/// How the kernel is asked about many accounts of one device: by a descriptor of its mount point where that answers,
/// else by its path, and always with the same result.
class TestMountedDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void manyQuestionsGoByTheDescriptor();
    void anOlderKernelIsAskedByThePath();
    void theMountPointOfAnotherDeviceIsNotUsed();
    void whatIsNoBlockDeviceIsAskedByItsPath();
    void aFailureIsToldByThePath();
    void aDescriptorHasOneOwner();

private:
    QuotaManager::Accounts read();
    int questions(bool byDescriptor) const;
    void verify(const QuotaManager::Accounts &users) const;

    Sandbox _sandbox;
    QString _folder;
    QStringList _errors;
};

void TestMountedDevice::init()
{
    _sandbox.reset();
    _errors.clear();
    _folder = _sandbox.folder(QStringLiteral("a"));
    const QByteArray table = "/dev/sda1 " + _folder.toUtf8() + " ext4 rw,usrquota 0 0\n";
    _sandbox.writeEtc(QStringLiteral("fstab"), table);
    _sandbox.writeEtc(QStringLiteral("mtab"), table);
    _sandbox.standIn(QStringLiteral("blkid")).prints("/dev/sda1: TYPE=\"ext4\"\n");
    QByteArray passwd;
    FakeKernel::State state;
    for (quint32 i = 0; i < Accounts; ++i) {
        passwd += "u" + QByteArray::number(i) + ":x:" + QByteArray::number(4294967294U - i) + ":1::/:/bin/sh\n";
        state.records[4294967294U - i].dqb_ihardlimit = i + 1;
    }
    _sandbox.writeEtc(QStringLiteral("passwd"), passwd);
    _sandbox.kernel().setState("/dev/sda1", UserQuota, state);
}

QuotaManager::Accounts TestMountedDevice::read()
{
    QuotaManager manager;
    connect(&manager, &QuotaManager::error, this, [this](const QString &message) { _errors.append(message); });
    return manager.readAllUsers();
}

int TestMountedDevice::questions(bool byDescriptor) const
{
    const QList<FakeKernel::Call> calls = FakeKernel::instance().calls();
    return static_cast<int>(std::count_if(calls.cbegin(), calls.cend(), [byDescriptor](const FakeKernel::Call &call) {
        return call.command == Q_GETQUOTA && call.isByDescriptor == byDescriptor;
    }));
}

void TestMountedDevice::verify(const QuotaManager::Accounts &users) const
{
    QCOMPARE(_errors, QStringList());
    QCOMPARE(users.size(), std::size_t(Accounts));
    for (std::size_t i = 0; i < users.size(); ++i)
        QCOMPARE(users[i]->deviceQuotas.value(Sda).hardInodeLimit, quint64(i + 1));
}

void TestMountedDevice::manyQuestionsGoByTheDescriptor()
{
    _sandbox.kernel().mount("/dev/sda1", _folder.toUtf8());
    const QDir descriptors(QStringLiteral("/proc/self/fd"));
    const int before = descriptors.entryList().size();
    verify(read());
    QCOMPARE(questions(true), Accounts);
    QCOMPARE(questions(false), 0);
    QCOMPARE(descriptors.entryList().size(), before);
}

void TestMountedDevice::anOlderKernelIsAskedByThePath()
{
    _sandbox.kernel().mount("/dev/sda1", _folder.toUtf8());
    _sandbox.kernel().failByDescriptor(ENOSYS);
    verify(read());
    QCOMPARE(questions(true), 0);
    QCOMPARE(questions(false), Accounts);
}

void TestMountedDevice::theMountPointOfAnotherDeviceIsNotUsed()
{
    _sandbox.kernel().mount("/dev/sda1", "/proc");
    verify(read());
    QCOMPARE(questions(true), 0);
    QCOMPARE(questions(false), Accounts);
}

void TestMountedDevice::whatIsNoBlockDeviceIsAskedByItsPath()
{
    verify(read());
    QCOMPARE(questions(false), Accounts);
    QCOMPARE(MountedDevice(QStringLiteral("/proc"), "/proc").descriptor(), -1);
    QCOMPARE(MountedDevice(Sda, "/is/not/there").descriptor(), -1);
}

/// A kernel that refuses says so in the same words, once, whichever way it is asked.
void TestMountedDevice::aFailureIsToldByThePath()
{
    _sandbox.kernel().mount("/dev/sda1", _folder.toUtf8());
    FakeKernel::State state = _sandbox.kernel().state("/dev/sda1", UserQuota);
    state.failures.insert(Q_GETQUOTA, EPERM);
    _sandbox.kernel().setState("/dev/sda1", UserQuota, state);
    const QuotaManager::Accounts users = read();
    QCOMPARE(_errors.size(), 2);
    QCOMPARE(_errors.last(), QStringLiteral("/dev/sda1: ") + qt_error_string(EPERM));
    QCOMPARE(users.front()->failures.keys(), QList<QString>{Sda});
    QCOMPARE(questions(true), 1);
    QCOMPARE(questions(false), Accounts);
}

void TestMountedDevice::aDescriptorHasOneOwner()
{
    _sandbox.kernel().mount("/dev/sda1", _folder.toUtf8());
    MountedDevice first(Sda, _folder.toUtf8());
    const int descriptor = first.descriptor();
    QVERIFY(descriptor != -1);
    MountedDevice second(std::move(first));
    QCOMPARE(second.descriptor(), descriptor);
    QCOMPARE(second.path(), QByteArray("/dev/sda1"));
    second.close();
    QCOMPARE(second.descriptor(), -1);
    QVERIFY(!QFile::exists(QStringLiteral("/proc/self/fd/%1").arg(descriptor)));
}

KRA_SANDBOX_MAIN(TestMountedDevice)
#include "tst_mounteddevice.moc"
