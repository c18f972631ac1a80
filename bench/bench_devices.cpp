// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <bufferdata.h>
#include <devicetable.h>
#include <quotamanager.h>
#include <sandbox.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <functional>

// The device table for 10, 100 and 1,000 devices: what each question costs, and how that grows. A third of the devices
// are spelled by UUID, the others by path.

namespace
{

const QString Fstab = QStringLiteral("/etc/fstab");

struct Machine
{
    QByteArray fstab;
    QByteArray mtab;
    QByteArray blkid;
    QStringList specs;
};

Machine machineWith(int devices)
{
    Machine machine;
    for (int i = 0; i < devices; ++i) {
        const QByteArray number = QByteArray::number(i).rightJustified(4, '0');
        const QByteArray path = (i % 3 == 2 ? "/dev/mapper/vg.data-lv" : "/dev/sd") + number;
        const QByteArray uuid = "5d0a1c4e-77aa-4d1e-9f00-00000000" + number;
        const QByteArray spec = i % 3 == 0 ? "UUID=" + uuid : path;
        machine.fstab += spec + " /srv/" + number + " ext4 defaults,usrquota,grpquota 0 2\n";
        machine.mtab += path + " /srv/" + number + " ext4 rw,relatime,quota,usrquota,grpquota 0 0\n";
        machine.blkid.prepend(path + ": LABEL=\"data" + number + "\" UUID=\"" + uuid +
                              "\" BLOCK_SIZE=\"4096\" TYPE=\"ext4\" PARTUUID=\"0f3c-" + number + "\"\n");
        machine.specs.append(QString::fromLatin1(spec));
    }
    return machine;
}

/// Microseconds of one call, from as many as fit into a fifth of a second.
double microseconds(const std::function<void()> &calls, int callCount)
{
    QElapsedTimer timer;
    timer.start();
    qint64 rounds = 0;
    do {
        calls();
        ++rounds;
    } while (timer.elapsed() < 200);
    return double(timer.nsecsElapsed()) / 1000.0 / double(rounds) / double(callCount);
}

struct Row
{
    const char *question;
    double cost[3];
};

} // namespace

int main(int argc, char *argv[])
{
    Sandbox::enter();
    const QCoreApplication application(argc, argv);
    Sandbox sandbox;

    const int sizes[] = {10, 100, 1000};
    Row rows[] = {{"resolveDevice", {}},
                  {"quotaDevices", {}},
                  {"deviceOptions, first time", {}},
                  {"deviceOptions, again", {}},
                  {"readGeneral, whole task", {}}};
    for (int column = 0; column < 3; ++column) {
        const int size = sizes[column];
        const Machine machine = machineWith(size);
        sandbox.reset();
        sandbox.writeEtc(QStringLiteral("fstab"), machine.fstab);
        sandbox.writeEtc(QStringLiteral("mtab"), machine.mtab);
        sandbox.standIn(QStringLiteral("blkid")).prints(machine.blkid);
        BufferData buffer;
        DeviceTable table(buffer);

        const QStringList devices = table.quotaDevices();
        const QStringList lines = buffer.blkidLines();
        const BlkidTable blkid(lines);
        const auto resolveAll = [&] {
            for (const QString &spec : machine.specs)
                blkid.resolve(spec);
        };
        const auto optionsOfAll = [&] {
            for (const QString &device : devices)
                table.deviceOptions(device, Fstab);
        };
        rows[0].cost[column] = microseconds(resolveAll, size);
        rows[1].cost[column] = microseconds([&] { buffer.forgetFstab(), table.quotaDevices(); }, 1);
        rows[2].cost[column] = microseconds([&] { buffer.forgetFstab(), optionsOfAll(); }, size);
        rows[3].cost[column] = microseconds(optionsOfAll, size);
        rows[4].cost[column] = microseconds([] { QuotaManager().readGeneral(); }, 1);
    }

    std::printf("\n%-26s %12s %12s %12s %10s %10s   microseconds a call\n", "", "10", "100", "1000", "100/10",
                "1000/100");
    for (const Row &row : rows)
        std::printf("%-26s %12.2f %12.2f %12.2f %9.1fx %9.1fx\n", row.question, row.cost[0], row.cost[1], row.cost[2],
                    row.cost[1] / row.cost[0], row.cost[2] / row.cost[1]);
    return 0;
}
