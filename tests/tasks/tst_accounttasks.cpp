// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <elementeditor.h>
#include <generaldata.h>
#include <groupdata.h>
#include <groupqelement.h>
#include <groupselement.h>
#include <module.h>
#include <readallgroups.h>
#include <readallusers.h>
#include <readgroupdata.h>
#include <readuserdata.h>
#include <sandbox.h>
#include <taskobserver.h>
#include <treenodemodel.h>
#include <updategroupdata.h>
#include <updateuserdata.h>
#include <userdata.h>
#include <userelement.h>
#include <userselement.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

#include <vector>

namespace
{

const QString Vda = QStringLiteral("/dev/vda");
const QString Vdb = QStringLiteral("/dev/vdb");

/// An operation that was asked for, and whether of the editor or of an element.
struct Asked
{
    bool ofEditor = false;
    OperationType type = OperationType::Read;
    QStringList devices; ///< that the record carried

    bool operator==(const Asked &other) const
    {
        return ofEditor == other.ofEditor && type == other.type && devices == other.devices;
    }
};

/// A module that notes what it is asked and does nothing.
class RecordingModule : public Module
{
public:
    RecordingModule()
        : Module(QStringLiteral("RecordingModule"), nullptr)
    {}

    void performOperation(ContextOperation *operation, OperationType type, ElementData *data, int /*extra*/) override
    {
        const QStringList devices = data ? data->params.value(QStringLiteral("devices")).toStringList() : QStringList();
        asked.push_back({operation->contextType() == ContextOperation::ElementWidgetContext, type, devices});
    }

    std::vector<Asked> asked;
};

template<typename Record>
std::unique_ptr<Record> recordOf(const QString &name, qint32 id)
{
    auto record = std::make_unique<Record>();
    record->name = name;
    record->id = id;
    record->deviceQuotas[Vda].hardInodeLimit = 40;
    return record;
}

QStringList titles(const Element &list)
{
    QStringList all;
    for (const TreeNode *node : list.childNodes())
        all += static_cast<const Element *>(node)->title();
    return all;
}

} // namespace

/// Reading and applying the quotas of accounts, from the machine to the elements.
class TestAccountTasks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void descriptions();

    void aUserIsReadByTheElementsTitle();
    void aGroupIsReadByTheElementsTitle();
    void aFailedReadHandsItsRecordOver();

    void anUpdateWithoutARecordTouchesNothing();
    void anUpdateWithARecordOfAnotherKindTouchesNothing();
    void aUserIsUpdatedAndReadAgain();
    void aGroupIsUpdatedAsAGroup();
    void whatWasAppliedIsReported();
    void whatFailsOnTwoDevicesIsOneMessage();

    void theListOfUsersIsFilledWithRecords();
    void theListOfGroupsIsFilledWithRecords();
    void anotherReadReplacesTheRows();
    void aListWithoutDevices();
    void aListThatFailedShowsWhatCouldBeRead();
    void theEditorHearsOfTheDevices();
    void aListThatDiedMeanwhile();
    void theWayOverTheObserver();

private:
    void mountDevices();
    Sandbox _sandbox;
    RecordingModule _module;
    std::unique_ptr<UserElement> _anna;
    std::unique_ptr<GroupQElement> _staff;
};

/// Two devices; both kinds are on on the first, none on the second.
void TestAccountTasks::init()
{
    _sandbox.reset();
    _sandbox.standIn(QStringLiteral("blkid")).prints("/dev/vda: TYPE=\"ext4\"\n/dev/vdb: TYPE=\"ext4\"\n");
    _sandbox.writeEtc(QStringLiteral("passwd"), "root:x:0:0::/:/bin/sh\nanna:x:1000:1000::/:/bin/sh\n");
    _sandbox.writeEtc(QStringLiteral("group"), "root:x:0:\nstaff:x:50:anna\n");
    mountDevices();
    FakeKernel::State off;
    off.on = false;
    for (const int kind : {USRQUOTA, GRPQUOTA}) {
        _sandbox.kernel().setState("/dev/vda", kind, FakeKernel::State());
        _sandbox.kernel().setState("/dev/vdb", kind, off);
    }
    _module.asked.clear();
    _anna = std::make_unique<UserElement>(QStringLiteral("anna"), &_module, &Module::isAdministratorHierarchy);
    _staff = std::make_unique<GroupQElement>(QStringLiteral("staff"), &_module, &Module::isAdministratorHierarchy);
}

void TestAccountTasks::mountDevices()
{
    QByteArray table;
    for (const char *name : {"a", "b"})
        table += QByteArray("/dev/vd") + name + ' ' + _sandbox.folder(QString::fromLatin1(name)).toUtf8() +
                 " ext4 rw,usrquota,grpquota 0 0\n";
    _sandbox.writeEtc(QStringLiteral("fstab"), table);
    _sandbox.writeEtc(QStringLiteral("mtab"), table);
}

void TestAccountTasks::descriptions()
{
    UsersElement users(&_module, &Module::isAdministratorHierarchy);
    GroupsElement groups(&_module, &Module::isAdministratorHierarchy);
    QCOMPARE(ReadUserData(_anna.get()).description(), QStringLiteral("Read user quota settings"));
    QCOMPARE(ReadGroupData(_staff.get()).description(), QStringLiteral("Read group quota settings"));
    QCOMPARE(UpdateUserData(_anna.get(), nullptr).description(), QStringLiteral("Update user settings"));
    QCOMPARE(UpdateGroupData(_staff.get(), nullptr).description(), QStringLiteral("Update user settings"));
    QCOMPARE(ReadAllUsers(&users).description(), QStringLiteral("Read all users list"));
    QCOMPARE(ReadAllGroups(&groups).description(), QStringLiteral("Read all groups list"));
}

void TestAccountTasks::aUserIsReadByTheElementsTitle()
{
    ReadUserData task(_anna.get());
    task.run();
    QVERIFY2(task.status() == TaskDescription::Succeeded, qPrintable(task.message()));
    QVERIFY(!_anna->record()); // run() touches no element
    task.afterRun();
    const auto *user = dynamic_cast<const UserData *>(_anna->record());
    QVERIFY(user);
    QCOMPARE(user->name, QStringLiteral("anna"));
    QCOMPARE(user->id, 1000);
    QCOMPARE(user->deviceQuotas.keys(), QList<QString>({Vda, Vdb}));
    QVERIFY(user->deviceQuotas.value(Vda).kindIsOn);
    QVERIFY(!user->deviceQuotas.value(Vdb).kindIsOn);
}

void TestAccountTasks::aGroupIsReadByTheElementsTitle()
{
    ReadGroupData task(_staff.get());
    task.run();
    task.afterRun();
    const auto *group = dynamic_cast<const GroupData *>(_staff->record());
    QVERIFY(group);
    QCOMPARE(group->id, 50);
}

void TestAccountTasks::aFailedReadHandsItsRecordOver()
{
    _sandbox.writeEtc(QStringLiteral("mtab"), "");
    ReadUserData task(_anna.get());
    task.run();
    QCOMPARE(task.afterRun(), TaskDescription::Failed);
    QCOMPARE(task.message(), QStringLiteral("Device /dev/vda not mounted\nDevice /dev/vdb not mounted"));
    QVERIFY(_anna->record());
}

void TestAccountTasks::anUpdateWithoutARecordTouchesNothing()
{
    UpdateUserData task(_anna.get(), nullptr);
    task.run();
    QCOMPARE(task.status(), TaskDescription::Failed);
    QCOMPARE(task.message(), QString());
    QVERIFY(_sandbox.kernel().calls().isEmpty());
}

void TestAccountTasks::anUpdateWithARecordOfAnotherKindTouchesNothing()
{
    std::vector<std::unique_ptr<UpdateTask>> tasks;
    tasks.push_back(std::make_unique<UpdateUserData>(_anna.get(), recordOf<GroupData>(QStringLiteral("staff"), 50)));
    tasks.push_back(std::make_unique<UpdateUserData>(_anna.get(), std::make_unique<GeneralData>()));
    tasks.push_back(std::make_unique<UpdateGroupData>(_staff.get(), recordOf<UserData>(QStringLiteral("anna"), 1000)));
    for (const auto &task : tasks) {
        task->run();
        QCOMPARE(task->status(), TaskDescription::Failed);
        QCOMPARE(task->message(), QString());
    }
    QVERIFY(_sandbox.kernel().calls().isEmpty());
    QVERIFY(_sandbox.calls().isEmpty());
}

void TestAccountTasks::aUserIsUpdatedAndReadAgain()
{
    UpdateUserData task(_anna.get(), recordOf<UserData>(QStringLiteral("anna"), 1000));
    QVERIFY(task.changesMachine());
    task.run();
    QVERIFY2(task.status() == TaskDescription::Succeeded, qPrintable(task.message()));
    QCOMPARE(_sandbox.kernel().state("/dev/vda", USRQUOTA).records.value(1000).dqb_ihardlimit, quint64(40));
    QVERIFY(_module.asked.empty());
    QCOMPARE(task.afterRun(), TaskDescription::Succeeded);
    QCOMPARE(_module.asked, std::vector<Asked>{Asked()});
}

void TestAccountTasks::aGroupIsUpdatedAsAGroup()
{
    UpdateGroupData task(_staff.get(), recordOf<GroupData>(QStringLiteral("staff"), 50));
    task.run();
    QVERIFY2(task.status() == TaskDescription::Succeeded, qPrintable(task.message()));
    QCOMPARE(_sandbox.kernel().state("/dev/vda", GRPQUOTA).records.value(50).dqb_ihardlimit, quint64(40));
    QVERIFY(_sandbox.kernel().state("/dev/vda", USRQUOTA).records.isEmpty());
}

void TestAccountTasks::whatWasAppliedIsReported()
{
    const auto touched = [] {
        auto record = recordOf<UserData>(QStringLiteral("anna"), 1000);
        record->touched = std::make_shared<TouchedQuota>(TouchedQuota{Vda, DeviceQuota()});
        return record;
    };
    QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    TaskObserver::instance()->performTask(new UpdateUserData(_anna.get(), touched()));
    QTRY_COMPARE(finished.size(), 1);
    const auto succeeded = finished.takeFirst().first().value<TaskReport>();
    QCOMPARE(succeeded.result, QStringLiteral("anna, /dev/vda: hard limit on files: 40, before: none"));
    QCOMPARE(succeeded.message, QString());

    FakeKernel::State refusing;
    refusing.failures.insert(Q_SETQUOTA, EPERM);
    _sandbox.kernel().setState("/dev/vda", USRQUOTA, refusing);
    TaskObserver::instance()->performTask(new UpdateUserData(_anna.get(), touched()));
    QTRY_COMPARE(finished.size(), 1);
    const auto failed = finished.takeFirst().first().value<TaskReport>();
    QCOMPARE(failed.status, TaskDescription::Failed);
    QCOMPARE(failed.result, QString());
}

void TestAccountTasks::whatFailsOnTwoDevicesIsOneMessage()
{
    FakeKernel::State state;
    state.failures.insert(Q_SETQUOTA, EPERM);
    _sandbox.kernel().setState("/dev/vda", USRQUOTA, state);
    state.failures.insert(Q_SETQUOTA, ENODEV);
    _sandbox.kernel().setState("/dev/vdb", USRQUOTA, state);
    auto record = recordOf<UserData>(QStringLiteral("anna"), 1000);
    record->deviceQuotas[Vdb].softInodeLimit = 1;
    UpdateUserData task(_anna.get(), std::move(record));
    task.run();
    QCOMPARE(task.status(), TaskDescription::Failed);
    QCOMPARE(task.message().split(QLatin1Char('\n')),
             (QStringList{QStringLiteral("The caller does not have the necessary rights (CAP_SYS_ADMIN) to perform the "
                                         "specified operation"),
                          Vda + QStringLiteral(": ") + qt_error_string(EPERM),
                          QStringLiteral("Unknown error while executing quotactl"),
                          Vdb + QStringLiteral(": ") + qt_error_string(ENODEV)}));
    QCOMPARE(task.afterRun(), TaskDescription::Failed);
    QCOMPARE(_module.asked, std::vector<Asked>{Asked()}); // read again all the same
}

void TestAccountTasks::theListOfUsersIsFilledWithRecords()
{
    UsersElement users(&_module, &Module::isAdministratorHierarchy);
    TreeNodeModel model;
    model.setRootNode(&users);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    ReadAllUsers task(&users);
    task.run();
    QVERIFY2(task.status() == TaskDescription::Succeeded, qPrintable(task.message()));
    QVERIFY(users.childNodes().isEmpty());
    QCOMPARE(task.afterRun(), TaskDescription::Succeeded);

    QCOMPARE(titles(users), QStringList({QStringLiteral("root"), QStringLiteral("anna")}));
    auto *anna = dynamic_cast<UserElement *>(users.childNodes().last());
    QVERIFY(anna);
    QCOMPARE(anna->module(), &_module);
    const auto *record = dynamic_cast<const UserData *>(anna->record());
    QVERIFY(record);
    QCOMPARE(record->id, 1000);
    anna->setDeviceForData(Vda);
    QCOMPARE(model.index(1, 1).data().toString(), QStringLiteral("anna"));
    QCOMPARE(model.index(1, 2).data().toString(), QStringLiteral("off"));
    QCOMPARE(_sandbox.calls(QStringLiteral("blkid")).size(), 1);
}

void TestAccountTasks::theListOfGroupsIsFilledWithRecords()
{
    GroupsElement groups(&_module, &Module::isAdministratorHierarchy);
    ReadAllGroups task(&groups);
    task.run();
    task.afterRun();
    QCOMPARE(titles(groups), QStringList({QStringLiteral("root"), QStringLiteral("staff")}));
    const auto *staff = dynamic_cast<GroupQElement *>(groups.childNodes().last());
    QVERIFY(staff);
    QVERIFY(dynamic_cast<const GroupData *>(staff->record()));
}

void TestAccountTasks::anotherReadReplacesTheRows()
{
    UsersElement users(&_module, &Module::isAdministratorHierarchy);
    TreeNodeModel model;
    model.setRootNode(&users);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    for (const QByteArray &name : {QByteArray("anna"), QByteArray("otto")}) {
        _sandbox.writeEtc(QStringLiteral("passwd"), name + ":x:1000:1::/:/bin/sh\n");
        ReadAllUsers task(&users);
        task.run();
        task.afterRun();
        QCOMPARE(titles(users), QStringList(QString::fromLatin1(name)));
    }
    QCOMPARE(model.rowCount(), 1);
}

void TestAccountTasks::aListWithoutDevices()
{
    _sandbox.writeEtc(QStringLiteral("fstab"), "");
    UsersElement users(&_module, &Module::isAdministratorHierarchy);
    ReadAllUsers task(&users);
    task.run();
    QCOMPARE(task.status(), TaskDescription::Succeeded);
    QVERIFY(task.elementData()->params.contains(QStringLiteral("devices")));
    QCOMPARE(task.elementData()->params.value(QStringLiteral("devices")).toStringList(), QStringList());
    task.afterRun();
    QCOMPARE(users.childNodes().size(), 2);
}

void TestAccountTasks::aListThatFailedShowsWhatCouldBeRead()
{
    FakeKernel::State state;
    state.failures.insert(Q_GETQUOTA, EPERM);
    _sandbox.kernel().setState("/dev/vda", USRQUOTA, state);
    UsersElement users(&_module, &Module::isAdministratorHierarchy);
    ReadAllUsers task(&users);
    task.run();
    QCOMPARE(task.afterRun(), TaskDescription::Failed);
    QCOMPARE(task.message().count(QLatin1String("CAP_SYS_ADMIN")), 1); // once, not for each user
    QCOMPARE(users.childNodes().size(), 2);
    const auto *record = static_cast<const UserData *>(static_cast<Element *>(users.childNodes().last())->record());
    QCOMPARE(record->deviceQuotas.keys(), QList<QString>{Vdb});
}

namespace
{

/// The editor of the list, as far as the core knows editors.
class ListEditor : public QObject, public ElementEditor
{
public:
    explicit ListEditor(Module *module)
        : _module(module)
    {}
    QString elementType() const override { return QStringLiteral("QuotaUsersElement"); }
    Module *module() const override { return _module; }
    OperationTypes availableOperations() const override { return {}; }
    int role() const override { return MainRole; }
    Element *element() const override { return nullptr; }
    QObject *object() override { return this; }
    void connectToModule(Module * /*module*/) override {}
    void afterSuccessfulRead(Element * /*element*/, ElementData * /*data*/) override {}
    void afterSuccessfulUpdate() override {}
    void setUnchanged() override {}

private:
    Module *_module;
};

} // namespace

void TestAccountTasks::theEditorHearsOfTheDevices()
{
    RecordingModule module;
    module.insertElementWidget(new ListEditor(&module));
    UsersElement users(&module, &Module::isAdministratorHierarchy);
    ReadAllUsers task(&users);
    task.run();
    QVERIFY(module.asked.empty());
    task.afterRun();
    // First of the element, then of the editor, which finds the new rows in the list.
    QCOMPARE(module.asked,
             (std::vector<Asked>{{false, OperationType::Read, {}}, {true, OperationType::Read, {Vda, Vdb}}}));
}

void TestAccountTasks::aListThatDiedMeanwhile()
{
    auto users = std::make_unique<UsersElement>(&_module, &Module::isAdministratorHierarchy);
    ReadAllUsers task(users.get());
    users.reset();
    task.run();
    QCOMPARE(task.afterRun(), TaskDescription::Succeeded);
    QVERIFY(_module.asked.empty());
}

void TestAccountTasks::theWayOverTheObserver()
{
    UsersElement users(&_module, &Module::isAdministratorHierarchy);
    QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    users.setContent(ContainerElement::Content::Reading);
    TaskObserver::instance()->performTask(new ReadAllUsers(&users));
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(users.content(), ContainerElement::Content::Read);
    QCOMPARE(users.childNodes().size(), 2);
}

KRA_SANDBOX_MAIN(TestAccountTasks)
#include "tst_accounttasks.moc"
