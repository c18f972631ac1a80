// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "limitform.h"

#include <abstractquotawidget.h>
#include <localquotamodules.h>
#include <quotageneralmodule.h>
#include <sandbox.h>
#include <taskobserver.h>

#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <tuple>

using namespace LimitForm;

/// From the kernel through a read, the form, a hand that edits one field of it, and an update back to the kernel: one
/// field of one device is another then, and nothing else.
class TestLimitsRoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void randomRecords_data();
    void randomRecords();

private:
    void useRandomStates(QRandomGenerator &random);
    static QList<FakeKernel::Call> setCalls();
    void runTasks(int count, const std::function<void()> &start);

    Sandbox _sandbox;
};

namespace
{
constexpr quint32 AccountId = 4294967294U;
constexpr int KiBShift = 10;

/// What a field of the form stands for in the kernel.
struct Field
{
    const char *name;
    __uint64_t dqblk::*inKernel;
    void (*edit)(const QWidget &form, QRandomGenerator &random);
    /// What the kernel is to have of what the form shows.
    quint64 (*shown)(const QWidget &form);
};

template<const char *limit>
quint64 shownBlocks(const QWidget &form)
{
    double bytes = formWidget<QDoubleSpinBox>(form, limit)->value();
    for (int unit = unitOf(form, limit)->currentIndex(); unit > 0; --unit)
        bytes *= 1024;
    return static_cast<quint64>(bytes) >> KiBShift;
}

template<const char *limit>
quint64 shownCount(const QWidget &form)
{
    return static_cast<quint64>(formWidget<QSpinBox>(form, limit)->value());
}

template<const char *time>
quint64 shownSeconds(const QWidget &form)
{
    const auto *edit = formWidget<QDateTimeEdit>(form, time);
    return edit->isEnabled() ? static_cast<quint64>(edit->dateTime().toSecsSinceEpoch()) : 0;
}

const std::array<Field, 6> fields = {{
    {"soft blocks", &dqblk::dqb_bsoftlimit, &editSize<SoftBlocks>, &shownBlocks<SoftBlocks>},
    {"hard blocks", &dqblk::dqb_bhardlimit, &editSize<HardBlocks>, &shownBlocks<HardBlocks>},
    {"soft files", &dqblk::dqb_isoftlimit, &editCount<SoftInodes>, &shownCount<SoftInodes>},
    {"hard files", &dqblk::dqb_ihardlimit, &editCount<HardInodes>, &shownCount<HardInodes>},
    {"blocks time", &dqblk::dqb_btime, &editMoment<BlocksTime>, &shownSeconds<BlocksTime>},
    {"files time", &dqblk::dqb_itime, &editMoment<InodesTime>, &shownSeconds<InodesTime>},
}};

const std::array<QByteArray, 3> devices = {"/dev/vda", "/dev/vdb", "/dev/vdc"};

/// Of every order of magnitude, up to the largest that the kernel keeps: 2^63 bytes, and as many files.
dqblk randomRecord(QRandomGenerator &random)
{
    const auto number = [&random](int lowest, int highest) {
        return random.bounded(4) == 0 ? 0 : random.generate64() >> random.bounded(lowest, highest);
    };
    const auto moment = [&random] {
        return random.bounded(3) == 0 ? 0 : static_cast<quint64>(1792890000 + random.bounded(-3000000, 3000000));
    };
    dqblk record = {};
    record.dqb_bsoftlimit = number(11, 63);
    record.dqb_bhardlimit = number(11, 63);
    record.dqb_curspace = number(11, 63);
    record.dqb_isoftlimit = number(1, 63);
    record.dqb_ihardlimit = number(1, 63);
    record.dqb_curinodes = number(1, 63);
    record.dqb_btime = moment();
    record.dqb_itime = moment();
    return record;
}

QString difference(const dqblk &before, const dqblk &after)
{
    QStringList texts;
    for (const Field &field : fields)
        if (before.*field.inKernel != after.*field.inKernel)
            texts += QStringLiteral("%1 was %2 and is %3")
                         .arg(QLatin1String(field.name))
                         .arg(before.*field.inKernel)
                         .arg(after.*field.inKernel);
    return texts.join(QLatin1Char('\n'));
}
} // namespace

/// Three devices with both kinds on, a user and a group of the same name and id.
void TestLimitsRoundTrip::init()
{
    _sandbox.reset();
    QByteArray table;
    QByteArray blkid;
    for (const QByteArray &device : devices) {
        const QString folder = _sandbox.folder(QString::fromLatin1(device.mid(5)));
        table += device + ' ' + folder.toUtf8() + " ext4 rw,usrquota,grpquota 0 0\n";
        blkid += device + ": TYPE=\"ext4\"\n";
        for (const char *name : {"/aquota.user", "/aquota.group"})
            QVERIFY(QFile(folder + QLatin1String(name)).open(QIODevice::WriteOnly)); // else applying warns first
    }
    _sandbox.writeEtc(QStringLiteral("fstab"), table);
    _sandbox.writeEtc(QStringLiteral("mtab"), table);
    _sandbox.writeEtc(QStringLiteral("passwd"), "anna:x:4294967294:1000::/:/bin/sh\n");
    _sandbox.writeEtc(QStringLiteral("group"), "anna:x:4294967294:\n");
    _sandbox.standIn(QStringLiteral("blkid")).prints(blkid);
}

void TestLimitsRoundTrip::useRandomStates(QRandomGenerator &random)
{
    for (const QByteArray &device : devices) {
        for (const int kind : {USRQUOTA, GRPQUOTA}) {
            FakeKernel::State state;
            state.records.insert(AccountId, randomRecord(random));
            _sandbox.kernel().setState(device, kind, state);
        }
    }
}

QList<FakeKernel::Call> TestLimitsRoundTrip::setCalls()
{
    QList<FakeKernel::Call> calls = FakeKernel::instance().calls();
    calls.erase(std::remove_if(calls.begin(), calls.end(),
                               [](const FakeKernel::Call &call) { return call.command != Q_SETQUOTA; }),
                calls.end());
    return calls;
}

void TestLimitsRoundTrip::runTasks(int count, const std::function<void()> &start)
{
    QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    start();
    while (finished.size() < count)
        QVERIFY(finished.wait());
    for (const QList<QVariant> &arguments : finished) {
        const auto task = arguments.first().value<TaskReport>();
        QVERIFY2(task.status == TaskDescription::Succeeded, qPrintable(task.message));
    }
}

void TestLimitsRoundTrip::randomRecords_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("kind");
    QTest::addColumn<quint32>("seed");
    for (const auto &[type, kind] :
         {std::make_tuple("QuotaUserElement", USRQUOTA), std::make_tuple("QuotaGroupElement", GRPQUOTA),
          std::make_tuple("LocalUserQuotaElement", USRQUOTA), std::make_tuple("LocalGroupQuotaElement", GRPQUOTA)})
        for (quint32 seed = 1; seed <= 5; ++seed)
            QTest::addRow("%s %u", type, seed) << QString::fromLatin1(type) << static_cast<int>(kind) << seed;
}

void TestLimitsRoundTrip::randomRecords()
{
    QFETCH(QString, type);
    QFETCH(int, kind);
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    QuotaGeneralModule lists(nullptr);
    LocalUserQuotaModule localUsers(nullptr);
    LocalGroupQuotaModule localGroups(nullptr);
    Module *module = &lists;
    if (type.startsWith(QLatin1String("Local")))
        module = kind == USRQUOTA ? static_cast<Module *>(&localUsers) : &localGroups;
    OrdinaryElement element(type, QString(), QStringLiteral("anna"), module, &Module::isAdministratorHierarchy,
                            Element::Place::Child);
    auto *editor = dynamic_cast<AbstractQuotaWidget *>(element.elementWidget(ElementEditor::MainRole));
    QVERIFY(editor);
    editor->setElement(&element);
    auto *box = formWidget<QComboBox>(*editor, "_devicesComboBox");

    int written = 0;
    for (int round = 0; round < 15; ++round) {
        useRandomStates(random);
        runTasks(1, [&element] { element.performOperation(OperationType::Read, nullptr, 0); });
        QCOMPARE(box->count(), static_cast<int>(devices.size()));
        for (int look = random.bounded(6); look > 0; --look)
            box->setCurrentIndex(random.bounded(box->count()));
        const QByteArray shown = box->currentText().toLatin1();
        const dqblk before = _sandbox.kernel().state(shown, kind).records.value(AccountId);
        QMap<std::pair<QByteArray, int>, dqblk> others;
        for (const QByteArray &device : devices)
            for (const int each : {USRQUOTA, GRPQUOTA})
                if (device != shown || each != kind)
                    others.insert({device, each}, _sandbox.kernel().state(device, each).records.value(AccountId));

        const Field &edited = fields.at(static_cast<size_t>(random.bounded(static_cast<int>(fields.size()))));
        edited.edit(*editor, random);
        if (!editor->isContentChanged())
            continue; // a time that does not run
        dqblk expected = before;
        expected.*edited.inKernel = edited.shown(*editor);
        runTasks(2, [editor] { editor->applyContentChanges(); });

        const dqblk after = _sandbox.kernel().state(shown, kind).records.value(AccountId);
        QCOMPARE(difference(expected, after), QString());
        QVERIFY2(!difference(before, after).isEmpty(), edited.name);
        for (auto other = others.cbegin(); other != others.cend(); ++other)
            QCOMPARE(
                difference(*other,
                           _sandbox.kernel().state(other.key().first, other.key().second).records.value(AccountId)),
                QString());
        ++written;
        const QList<FakeKernel::Call> writes = setCalls();
        QCOMPARE(writes.size(), written);
        QCOMPARE(writes.last().device, shown);
        QVERIFY(!editor->isContentChanged());
        QCOMPARE(box->currentText().toLatin1(), shown);
    }
}

KRA_SANDBOX_MAIN(TestLimitsRoundTrip)
#include "tst_limitsroundtrip.moc"
