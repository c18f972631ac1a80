// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <elementicons.h>
#include <generaldata.h>
#include <generalelement.h>
#include <groupdata.h>
#include <groupqelement.h>
#include <groupselement.h>
#include <localgroupquotaelement.h>
#include <localuserquotaelement.h>
#include <memorysizetransfer.h>
#include <module.h>
#include <notificationselement.h>
#include <userdata.h>
#include <userelement.h>
#include <userselement.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

#include <vector>

namespace
{
bool everybodyMay(const Module & /*module*/)
{
    return true;
}

bool nobodyMay(const Module & /*module*/)
{
    return false;
}

/// Shows under which context and with which comment a text is looked up.
class Lookup : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *comment, int /*count*/) const override
    {
        return QStringLiteral("<%1/%2/%3>")
            .arg(QLatin1String(context), QLatin1String(text), QLatin1String(comment ? comment : ""));
    }
};

/// A module that notes what it is asked and does nothing.
class RecordingModule : public Module
{
public:
    RecordingModule()
        : Module(QStringLiteral("RecordingModule"), nullptr)
    {}

    void performOperation(ContextOperation * /*operation*/, OperationType type, ElementData * /*data*/,
                          int /*extra*/) override
    {
        asked.push_back(type);
    }

    std::vector<OperationType> asked;
};

const QString device = QStringLiteral("/dev/vda1");

DeviceQuota someQuota()
{
    const MemorySizeTransfer units;
    DeviceQuota quota;
    quota.quotaIsOn = true;
    quota.usedBlocks = MemorySize(units, 1536);
    quota.softBlockLimit = MemorySize(units, 10 * 1024 * 1024);
    quota.hardBlockLimit = MemorySize(units, Q_UINT64_C(20) * 1024 * 1024 * 1024);
    quota.blockGracePeriod = TimePeriod(604800 + 2 * 3600 + 5);
    quota.blocksTimeToForce = QDateTime(QDate(2026, 3, 9), QTime(7, 5));
    quota.usedInodes = 7;
    quota.softInodeLimit = 100;
    quota.hardInodeLimit = Q_UINT64_C(5000000000);
    quota.inodeGracePeriod = TimePeriod(3 * 86400 + 4 * 60);
    quota.inodesTimeToForce = QDateTime(QDate(2027, 12, 31), QTime(23, 59));
    return quota;
}

std::unique_ptr<UserData> userRecord(qint32 id)
{
    auto record = std::make_unique<UserData>();
    record->name = QStringLiteral("anna");
    record->id = id;
    record->deviceQuotas.insert(device, someQuota());
    return record;
}
} // namespace

/// How the elements are called, what can be asked of them, and what their cells show.
class TestElements : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void names();
    void captions();
    void operations();
    void theAccessCheckIsHandedOn();
    void iconsAreMadeOnce();
    void headers();
    void textsAreLookedUpWhereTheyAreWritten();
    void cells_data();
    void cells();
    void theFirstColumnIsTheTrees();
    void anAccountWithoutARecordShowsNothing();
    void aRecordOfAnotherKindShowsNothing();
    void aDeviceTheRecordLacks();
    void aDeviceThatCouldNotBeAsked();
    void countsOfNothingAreEmpty();
    void sizesAreSortedByTheirBytes();
    void variants_data();
    void variants();
    void noVariantWithoutRecordOrParent();
    void aContainerChangesItsVariantItself();
    void supplements();

private:
    RecordingModule _module;
    QTemporaryDir _themes;
};

void TestElements::initTestCase()
{
    // An icon theme that has the icons: a machine's own need not.
    const QString theme = _themes.filePath(QStringLiteral("test"));
    QVERIFY(QDir().mkpath(theme + QStringLiteral("/16")));
    QFile index(theme + QStringLiteral("/index.theme"));
    QVERIFY(index.open(QIODevice::WriteOnly));
    index.write("[Icon Theme]\nName=test\nDirectories=16\n[16]\nSize=16\n");
    index.close();
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(Qt::red);
    for (const char *name :
         {"drive-harddisk", "kra-users", "kra-user-groups", "kra-user", "kra-user-group", "mail-mark-important"})
        QVERIFY(image.save(QStringLiteral("%1/16/%2.png").arg(theme, QLatin1String(name))));
    QIcon::setThemeSearchPaths({_themes.path()});
    QIcon::setThemeName(QStringLiteral("test"));
}

void TestElements::names()
{
    RecordingModule module;
    auto *general = new GeneralElement(&module, &everybodyMay);
    QCOMPARE(module.topElements().size(), std::size_t(1));
    QCOMPARE(general->elementType(), QStringLiteral("QuotaGeneralElement"));
    QCOMPARE(general->parentType(), QStringLiteral("LocalComputer"));
    QCOMPARE(general->title(), QStringLiteral("Quota management"));

    const auto *notifications = new NotificationsElement(&module, &everybodyMay);
    QCOMPARE(notifications->elementType(), QStringLiteral("QuotaNotificationsElement"));
    QCOMPARE(notifications->parentType(), QStringLiteral("QuotaGeneralElement"));
    QCOMPARE(notifications->title(), QStringLiteral("Notifications"));

    const auto *users = new UsersElement(&module, &everybodyMay);
    QCOMPARE(users->elementType(), QStringLiteral("QuotaUsersElement"));
    QCOMPARE(users->parentType(), QString());
    QCOMPARE(users->title(), QStringLiteral("Users"));

    const auto *groups = new GroupsElement(&module, &everybodyMay);
    QCOMPARE(groups->elementType(), QStringLiteral("QuotaGroupsElement"));
    QCOMPARE(groups->title(), QStringLiteral("Groups"));
    QCOMPARE(module.topElements().size(), std::size_t(4));

    const UserElement user(QStringLiteral("anna"), &module, &everybodyMay);
    QCOMPARE(user.elementType(), QStringLiteral("QuotaUserElement"));
    QCOMPARE(user.title(), QStringLiteral("anna"));
    const GroupQElement group(QStringLiteral("staff"), &module, &everybodyMay);
    QCOMPARE(group.elementType(), QStringLiteral("QuotaGroupElement"));
    QCOMPARE(module.topElements().size(), std::size_t(4));
}

void TestElements::captions()
{
    RecordingModule module;
    QCOMPARE((new GeneralElement(&module, &everybodyMay))->caption(),
             QStringLiteral("General quota management settings"));
    QCOMPARE((new NotificationsElement(&module, &everybodyMay))->caption(), QStringLiteral("Notifications settings"));
    QCOMPARE((new UsersElement(&module, &everybodyMay))->caption(), QStringLiteral("Users quota management"));
    QCOMPARE((new GroupsElement(&module, &everybodyMay))->caption(), QStringLiteral("Groups quota management"));
    QCOMPARE(UserElement(QStringLiteral("100%1"), &module, &everybodyMay).caption(),
             QStringLiteral("User quota settings: 100%1"));
    QCOMPARE(GroupQElement(QStringLiteral("staff"), &module, &everybodyMay).caption(),
             QStringLiteral("Group quota settings: staff"));
}

void TestElements::operations()
{
    RecordingModule module;
    QCOMPARE(int((new GeneralElement(&module, &everybodyMay))->availableOperations()), 96);
    QCOMPARE(int((new NotificationsElement(&module, &everybodyMay))->availableOperations()), 96);
    QCOMPARE(int((new UsersElement(&module, &everybodyMay))->availableOperations()), 2088);
    QCOMPARE(int((new GroupsElement(&module, &everybodyMay))->availableOperations()), 2088);
    QCOMPARE(int(UserElement(QString(), &module, &everybodyMay).availableOperations()), 96);
    QCOMPARE(int(GroupQElement(QString(), &module, &everybodyMay).availableOperations()), 96);
}

void TestElements::theAccessCheckIsHandedOn()
{
    RecordingModule module;
    const auto elements = [&module](Element::AccessCheck access) {
        return std::vector<const Element *>{new GeneralElement(&module, access),
                                            new NotificationsElement(&module, access),
                                            new UsersElement(&module, access), new GroupsElement(&module, access)};
    };
    for (const Element *element : elements(&everybodyMay))
        QVERIFY2(element->isAccessible(), qPrintable(element->elementType()));
    for (const Element *element : elements(&nobodyMay))
        QVERIFY2(!element->isAccessible(), qPrintable(element->elementType()));
    QVERIFY(!UserElement(QString(), &module, &nobodyMay).isAccessible());
    QVERIFY(!GroupQElement(QString(), &module, &nobodyMay).isAccessible());
    QVERIFY(!LocalUserQuotaElement(&module, &nobodyMay).isAccessible());
    QVERIFY(!LocalGroupQuotaElement(&module, &nobodyMay).isAccessible());
    QVERIFY(UserElement(QString(), &module, &everybodyMay).isAccessible());
    QVERIFY(GroupQElement(QString(), &module, &everybodyMay).isAccessible());
    QVERIFY(LocalUserQuotaElement(&module, &everybodyMay).isAccessible());
    QVERIFY(LocalGroupQuotaElement(&module, &everybodyMay).isAccessible());
}

void TestElements::iconsAreMadeOnce()
{
    RecordingModule module;
    const UserElement one(QString(), &module, &everybodyMay);
    const GroupQElement group(QString(), &module, &everybodyMay);
    const std::pair<const Element *, const char *> names[] = {
        {new GeneralElement(&module, &everybodyMay), "drive-harddisk"},
        {new NotificationsElement(&module, &everybodyMay), "mail-mark-important"},
        {new UsersElement(&module, &everybodyMay), "kra-users"},
        {new GroupsElement(&module, &everybodyMay), "kra-user-groups"},
        {&one, "kra-user"},
        {&group, "kra-user-group"},
    };
    const auto keys = [&names] {
        std::vector<qint64> all;
        for (const auto &named : names)
            all.push_back(named.first->icon().cacheKey());
        return all;
    };
    for (const auto &[element, name] : names)
        QCOMPARE(element->icon().name(), QString::fromLatin1(name));
    const std::vector<qint64> made = keys();
    QIcon::setThemeName(QStringLiteral("none")); // and what Qt remembered of the other one is gone
    QCOMPARE(keys(), made);
    QIcon::setThemeName(QStringLiteral("test"));
}

void TestElements::headers()
{
    UsersElement users(&_module, &everybodyMay);
    QCOMPARE(users.columnCount(), 13);
    const QStringList expected = {
        QStringLiteral("Name"),
        QStringLiteral("Quota is on"),
        QStringLiteral("Used blocks"),
        QStringLiteral("Soft block limit"),
        QStringLiteral("Hard block limit"),
        QStringLiteral("Grace block period"),
        QStringLiteral("Blocks time to force"),
        QStringLiteral("Used inodes"),
        QStringLiteral("Soft inode limit"),
        QStringLiteral("Hard inode limit"),
        QStringLiteral("Grace inode period"),
        QStringLiteral("Inodes time to force"),
    };
    for (int section = 1; section < users.columnCount(); ++section)
        QCOMPARE(users.headerData(section, Qt::Horizontal, Qt::DisplayRole).toString(), expected.at(section - 1));

    const TreeNode plain;
    for (const int section : {0, 13, -1})
        QCOMPARE(users.headerData(section, Qt::Horizontal, Qt::DisplayRole),
                 users.Element::headerData(section, Qt::Horizontal, Qt::DisplayRole));
    QCOMPARE(users.headerData(1, Qt::Vertical, Qt::DisplayRole),
             users.Element::headerData(1, Qt::Vertical, Qt::DisplayRole));
    QCOMPARE(users.headerData(1, Qt::Horizontal, Qt::DecorationRole), QVariant());
}

void TestElements::textsAreLookedUpWhereTheyAreWritten()
{
    Lookup lookup;
    QVERIFY(QCoreApplication::installTranslator(&lookup));
    UsersElement users(&_module, &everybodyMay);
    GroupsElement groups(&_module, &everybodyMay);
    auto *user = new UserElement(QStringLiteral("anna"), &_module, &everybodyMay);
    users.append(user);
    auto record = userRecord(1000);
    DeviceQuota &quota = record->deviceQuotas[device];
    quota.blockGracePeriod = TimePeriod(604800 + 86400 + 3600 + 60 + 1);
    user->setRecord(std::move(record));
    user->setDeviceForData(device);
    const auto cell = [user](int column) { return user->data(column, Qt::DisplayRole).toString(); };

    QCOMPARE(users.title(), QStringLiteral("<UsersElement/Users/>"));
    QCOMPARE(groups.title(), QStringLiteral("<GroupsElement/Groups/>"));
    for (const AbstractContainerElement *container :
         {static_cast<AbstractContainerElement *>(&users), static_cast<AbstractContainerElement *>(&groups)}) {
        QCOMPARE(container->displayChildrenVariants(),
                 (QStringList{QStringLiteral("<AbstractContainerElement/System/plural>"),
                              QStringLiteral("<AbstractContainerElement/Ordinary/>")}));
        QCOMPARE(container->headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(),
                 QStringLiteral("<AbstractContainerElement/Quota is on/>"));
    }
    QCOMPARE(cell(2), QStringLiteral("<AbstractElement/on/>"));
    QCOMPARE(cell(6), QStringLiteral("1<QObject/w/> 1<QObject/d/> 1<QObject/h/> 1<QObject/min/> 1<QObject/sec/>"));
    user->setDeviceForData(QStringLiteral("/dev/none"));
    QCOMPARE(cell(2), QStringLiteral("<AbstractElement/off/>"));
}

void TestElements::cells_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("shown");
    QTest::addColumn<QVariant>("value");

    const DeviceQuota quota = someQuota();
    QTest::newRow("name") << 1 << QVariant(QStringLiteral("anna")) << QVariant(QStringLiteral("anna"));
    QTest::newRow("on") << 2 << QVariant(QStringLiteral("on")) << QVariant(QStringLiteral("on"));
    QTest::newRow("used space") << 3 << QVariant(QStringLiteral("1.5 Kb")) << QVariant(Q_UINT64_C(1536));
    QTest::newRow("soft space") << 4 << QVariant(QStringLiteral("10 Mb")) << QVariant(Q_UINT64_C(10485760));
    QTest::newRow("hard space") << 5 << QVariant(QStringLiteral("20 Gb")) << QVariant(Q_UINT64_C(21474836480));
    QTest::newRow("space grace") << 6 << QVariant(QStringLiteral("1w 2h 5sec")) << QVariant(Q_INT64_C(612005));
    QTest::newRow("space time") << 7 << QVariant(QStringLiteral("09.03.2026 07:05"))
                                << QVariant(quota.blocksTimeToForce);
    QTest::newRow("used files") << 8 << QVariant(Q_UINT64_C(7)) << QVariant(Q_UINT64_C(7));
    QTest::newRow("soft files") << 9 << QVariant(Q_UINT64_C(100)) << QVariant(Q_UINT64_C(100));
    QTest::newRow("hard files") << 10 << QVariant(Q_UINT64_C(5000000000)) << QVariant(Q_UINT64_C(5000000000));
    QTest::newRow("file grace") << 11 << QVariant(QStringLiteral("3d 4min")) << QVariant(Q_INT64_C(259440));
    QTest::newRow("file time") << 12 << QVariant(QStringLiteral("31.12.2027 23:59"))
                               << QVariant(quota.inodesTimeToForce);
}

void TestElements::cells()
{
    QFETCH(int, column);
    QFETCH(QVariant, shown);
    QFETCH(QVariant, value);

    const UsersElement users(&_module, &everybodyMay);
    UserElement user(QStringLiteral("a title"), &_module, &everybodyMay);
    user.setRecord(userRecord(1000));
    user.setDeviceForData(device);
    GroupQElement group(QStringLiteral("a title"), &_module, &everybodyMay);
    auto record = std::make_unique<GroupData>();
    record->name = QStringLiteral("anna");
    record->deviceQuotas.insert(device, someQuota());
    group.setRecord(std::move(record));
    group.setDeviceForData(device);

    for (const AbstractElement *element :
         {static_cast<AbstractElement *>(&user), static_cast<AbstractElement *>(&group)}) {
        for (const int role : {Qt::DisplayRole, Qt::ToolTipRole}) {
            QCOMPARE(element->data(column, role), shown);
            QCOMPARE(element->data(column, role).userType(), shown.userType());
        }
        QCOMPARE(element->data(column, SortRole), value);
        const bool isNumber = value.type() == QVariant::ULongLong || value.type() == QVariant::LongLong;
        const QVariant alignment = isNumber ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter)) : QVariant();
        QCOMPARE(element->data(column, Qt::TextAlignmentRole), alignment);
        QCOMPARE(users.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole), alignment);
        QCOMPARE(element->data(column, Qt::ForegroundRole), QVariant());
    }
}

void TestElements::theFirstColumnIsTheTrees()
{
    UserElement user(QStringLiteral("anna (login)"), &_module, &everybodyMay);
    user.setRecord(userRecord(1000));
    QCOMPARE(user.data(0, Qt::DisplayRole).toString(), QStringLiteral("anna (login)"));
    for (const int role : {int(Qt::DecorationRole), int(IconRole)})
        QCOMPARE(user.data(0, role).value<QIcon>().cacheKey(), ElementIcons::instance().user.cacheKey());
    QCOMPARE(int(IconRole), 263);
}

void TestElements::anAccountWithoutARecordShowsNothing()
{
    const UserElement user(QStringLiteral("anna"), &_module, &everybodyMay);
    for (int column = 0; column < 13; ++column)
        for (const int role : {int(Qt::DisplayRole), int(Qt::DecorationRole), int(SortRole)})
            QCOMPARE(user.data(column, role), QVariant());
}

void TestElements::aRecordOfAnotherKindShowsNothing()
{
    UserElement user(QStringLiteral("anna"), &_module, &everybodyMay);
    user.setDeviceForData(device);
    auto group = std::make_unique<GroupData>();
    group->name = QStringLiteral("anna");
    user.setRecord(std::move(group));
    QCOMPARE(user.data(1, Qt::DisplayRole), QVariant());
    user.setRecord(std::make_unique<GeneralData>());
    QCOMPARE(user.data(2, Qt::DisplayRole), QVariant());
    GroupQElement other(QStringLiteral("anna"), &_module, &everybodyMay);
    other.setDeviceForData(device);
    other.setRecord(userRecord(1000));
    for (const int column : {1, 2, 3})
        QCOMPARE(other.data(column, Qt::DisplayRole), QVariant());
}

void TestElements::aDeviceTheRecordLacks()
{
    UserElement user(QStringLiteral("anna"), &_module, &everybodyMay);
    user.setRecord(userRecord(1000));
    user.setDeviceForData(QStringLiteral("/dev/vda")); // comes before the record's one, and is its beginning
    QCOMPARE(user.data(1, Qt::DisplayRole), QVariant(QStringLiteral("anna")));
    QCOMPARE(user.data(2, Qt::DisplayRole), QVariant(QStringLiteral("off")));
    for (int column = 3; column < 13; ++column) {
        QVERIFY(user.data(column, Qt::DisplayRole).toString().isEmpty());
        QCOMPARE(user.data(column, SortRole), QVariant());
    }
    QCOMPARE(static_cast<const UserData *>(user.record())->deviceQuotas.size(), 1);
}

/// Nobody knows whether its quota is on: what the kernel refused to say is no "off".
void TestElements::aDeviceThatCouldNotBeAsked()
{
    UserElement user(QStringLiteral("anna"), &_module, &everybodyMay);
    const QString refusing = QStringLiteral("/dev/vdb1");
    auto record = userRecord(1000);
    record->failures.insert(refusing, QStringLiteral("Input/output error"));
    user.setRecord(std::move(record));
    user.setDeviceForData(refusing);
    QCOMPARE(user.data(1, Qt::DisplayRole), QVariant(QStringLiteral("anna")));
    for (int column = 2; column < 13; ++column) {
        for (const int role : {int(Qt::DisplayRole), int(Qt::ToolTipRole), int(SortRole)})
            QCOMPARE(user.data(column, role), QVariant());
    }
    user.setDeviceForData(device);
    QCOMPARE(user.data(2, Qt::DisplayRole), QVariant(QStringLiteral("on")));
}

void TestElements::countsOfNothingAreEmpty()
{
    UserElement user(QStringLiteral("anna"), &_module, &everybodyMay);
    auto record = userRecord(1000);
    DeviceQuota &quota = record->deviceQuotas[device];
    quota.usedInodes = 0;
    quota.softInodeLimit = 0;
    quota.hardInodeLimit = 0;
    user.setRecord(std::move(record));
    user.setDeviceForData(device);
    for (const int column : {8, 9, 10})
        QCOMPARE(user.data(column, Qt::DisplayRole), QVariant());
    QVERIFY(user.data(11, Qt::DisplayRole).isValid());
}

void TestElements::sizesAreSortedByTheirBytes()
{
    const MemorySizeTransfer units;
    const auto keyFor = [&](quint64 bytes) {
        UserElement user(QStringLiteral("anna"), &_module, &everybodyMay);
        auto record = userRecord(1000);
        record->deviceQuotas[device].usedBlocks = MemorySize(units, bytes);
        user.setRecord(std::move(record));
        user.setDeviceForData(device);
        return user.data(3, SortRole).toULongLong();
    };
    QVERIFY(keyFor(9 * 1024) < keyFor(1024 * 1024 * 1024));
}

void TestElements::variants_data()
{
    QTest::addColumn<qint32>("id");
    QTest::addColumn<int>("ownVariant");
    QTest::newRow("0") << 0 << 1;
    QTest::newRow("999") << 999 << 1;
    QTest::newRow("1000") << 1000 << 2;
    QTest::newRow("65533") << 65533 << 2;
    QTest::newRow("65534") << 65534 << 1;
    QTest::newRow("65535") << 65535 << 2;
    QTest::newRow("4294967294") << -2 << 2;
}

void TestElements::variants()
{
    QFETCH(qint32, id);
    QFETCH(int, ownVariant);
    UsersElement users(&_module, &everybodyMay);
    QCOMPARE(users.displayChildrenVariants(), QStringList({QStringLiteral("System"), QStringLiteral("Ordinary")}));
    auto *user = new UserElement(QStringLiteral("anna"), &_module, &everybodyMay);
    users.append(user);
    user->setRecord(userRecord(id));
    for (const int variant : {0, 1, 2}) {
        users.setDisplayChildrenVariant(variant);
        QCOMPARE(user->treeNodeSpecialFlags(), variant == ownVariant ? int(NodeFlag::InChosenVariant) : 0);
    }
}

void TestElements::noVariantWithoutRecordOrParent()
{
    UserElement alone(QStringLiteral("anna"), &_module, &everybodyMay);
    alone.setRecord(userRecord(1000));
    QCOMPARE(alone.treeNodeSpecialFlags(), 0);

    UsersElement users(&_module, &everybodyMay);
    users.setDisplayChildrenVariant(2);
    auto *user = new UserElement(QStringLiteral("anna"), &_module, &everybodyMay);
    users.append(user);
    QCOMPARE(user->treeNodeSpecialFlags(), 0);
    user->setRecord(std::make_unique<GeneralData>());
    QCOMPARE(user->treeNodeSpecialFlags(), 0);
    auto group = std::make_unique<GroupData>(); // an account all the same
    group->id = 1000;
    user->setRecord(std::move(group));
    QCOMPARE(user->treeNodeSpecialFlags(), int(NodeFlag::InChosenVariant));
}

void TestElements::aContainerChangesItsVariantItself()
{
    RecordingModule module;
    UsersElement users(&module, &everybodyMay);
    ChangeDisplayElementData ordinary(2);
    users.performOperation(OperationType::ChangeDisplay, &ordinary, 0);
    QCOMPARE(users.displayChildrenVariant(), 2);
    QVERIFY(module.asked.empty());

    users.performOperation(OperationType::Read, nullptr, 0);
    users.performOperation(OperationType::Read, &ordinary, 0);
    ElementData other;
    users.performOperation(OperationType::ChangeDisplay, &other, 0);
    QCOMPARE(module.asked,
             std::vector<OperationType>({OperationType::Read, OperationType::Read, OperationType::ChangeDisplay}));
    QCOMPARE(users.displayChildrenVariant(), 2);
}

void TestElements::supplements()
{
    RecordingModule module;
    LocalUserQuotaElement user(&module, &everybodyMay);
    QCOMPARE(user.elementType(), QStringLiteral("LocalUserQuotaElement"));
    QCOMPARE(user.parentType(), QStringLiteral("LocalUser"));
    LocalGroupQuotaElement group(&module, &everybodyMay);
    QCOMPARE(group.elementType(), QStringLiteral("LocalGroupQuotaElement"));
    QCOMPARE(group.parentType(), QStringLiteral("LocalGroup"));
    QVERIFY(module.topElements().empty());

    for (SupplementElement *element :
         {static_cast<SupplementElement *>(&user), static_cast<SupplementElement *>(&group)}) {
        QCOMPARE(element->title(), QStringLiteral("Quota"));
        QCOMPARE(int(element->availableOperations()), 96);
        QVERIFY(!element->isTreeRow());
        QCOMPARE(element->icon().name(), QStringLiteral("drive-harddisk"));
        element->setTitle(QStringLiteral("100%1"));
    }
    QCOMPARE(user.caption(), QStringLiteral("User quota settings: 100%1"));
    QCOMPARE(group.caption(), QStringLiteral("Group quota settings: 100%1"));
}

QTEST_MAIN(TestElements)
#include "tst_elements.moc"
