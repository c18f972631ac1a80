// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "consolekeyboard.h"

#include <elementtreeview.h>
#include <formwidget.h>
#include <listelementwidget.h>
#include <sandbox.h>
#include <vieweditelementwidget.h>

#include <QAccessible>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QSettings>
#include <QTabBar>

#include <algorithm>
#include <cerrno>

/// The lists and pages of accounts in the console's own window, with nothing but a keyboard, from the tree to the
/// kernel.
class TestAccountPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void aLimitIsSetFromTheList();
    void aLimitIsSetOnTheTabOfALocalAccount_data();
    void aLimitIsSetOnTheTabOfALocalAccount();
    void theTabFollowsARenamedAccount();
    void theTabGoesWithARemovedAccount();
    void whatWentWrongIsSaid_data();
    void whatWentWrongIsSaid();
    void columnsSurviveARestart_data();
    void columnsSurviveARestart();
    void whatTakesTheFocusHasAName();

private:
    void useAccounts(const QByteArray &passwd);
    static dqblk limits(const char *device, int kind = USRQUOTA);
    ElementTreeView *tree();
    QString currentTitle();
    QString message();
    template<typename Editor>
    Editor *page();
    void walkTo(const QString &titles);
    void chooseQuotaTab();
    void setSoftLimitToTwelveMb();

    Sandbox _sandbox;
    ConsoleKeyboard _console;
};

namespace
{
constexpr quint32 AnnasId = 1000;
constexpr quint64 OldLimit = 5000;
constexpr quint64 TwelveMb = 12 * 1024; // in the kernel's blocks
const QByteArray root = "root:x:0:0:root:/root:/bin/sh\n";
const QByteArray anna = "anna:x:1000:1000:Anna:/home/anna:/bin/sh\n";
} // namespace

void TestAccountPages::initTestCase()
{
    ConsoleKeyboard::useOwnSettings(QStringLiteral("tst_accountpages"));
}

/// Two devices with quotas of both kinds, where the user and the group anna have the old limit.
void TestAccountPages::init()
{
    QSettings().clear();
    _sandbox.reset();
    _sandbox.standIn(QStringLiteral("modinfo"));
    _sandbox.standIn(QStringLiteral("blkid")).prints("/dev/vda: TYPE=\"ext4\"\n/dev/vdb: TYPE=\"ext4\"\n");
    QByteArray table;
    FakeKernel::State state;
    dqblk record = {};
    record.dqb_bsoftlimit = OldLimit;
    record.dqb_curinodes = 3;
    state.records.insert(AnnasId, record);
    for (const char *name : {"vda", "vdb"}) {
        const QString folder = _sandbox.folder(QString::fromLatin1(name));
        table += QByteArray("/dev/") + name + ' ' + folder.toUtf8() + " ext4 rw,usrquota,grpquota 0 0\n";
        for (const char *file : {"/aquota.user", "/aquota.group"})
            QVERIFY(QFile(folder + QLatin1String(file)).open(QIODevice::WriteOnly));
        for (const int kind : {USRQUOTA, GRPQUOTA})
            _sandbox.kernel().setState(QByteArray("/dev/") + name, kind, state);
    }
    _sandbox.writeEtc(QStringLiteral("fstab"), table);
    _sandbox.writeEtc(QStringLiteral("mtab"), table);
    useAccounts(root + anna);
    _sandbox.writeEtc(QStringLiteral("group"), "root:x:0:\nanna:x:1000:\n");
    _console.open();
}

void TestAccountPages::cleanup()
{
    _console.close();
}

void TestAccountPages::useAccounts(const QByteArray &passwd)
{
    _sandbox.writeEtc(QStringLiteral("passwd"), passwd);
}

dqblk TestAccountPages::limits(const char *device, int kind)
{
    return FakeKernel::instance().state(device, kind).records.value(AnnasId);
}

ElementTreeView *TestAccountPages::tree()
{
    return formWidget<ElementTreeView>(_console.window(), "treeView");
}

QString TestAccountPages::currentTitle()
{
    return tree()->currentIndex().data().toString();
}

QString TestAccountPages::message()
{
    return formWidget<QLabel>(_console.window(), "pageMessage")->text();
}

/// The editor in front.
template<typename Editor>
Editor *TestAccountPages::page()
{
    const QList<Editor *> editors = _console.window().findChildren<Editor *>();
    const auto inFront = std::find_if(editors.begin(), editors.end(), [](Editor *each) { return each->isVisible(); });
    if (inFront == editors.end())
        qFatal("No such page is in front");
    return *inFront;
}

/// Goes down the tree, from its first row, to what these titles lead to; each but the last is opened.
void TestAccountPages::walkTo(const QString &titles)
{
    tree()->setFocus();
    _console.press(Qt::Key_Home);
    const QStringList path = titles.split(QLatin1Char('/'));
    for (const QString &title : path) {
        for (int row = 0; row < 20 && currentTitle() != title; ++row)
            _console.press(Qt::Key_Down);
        QCOMPARE(currentTitle(), title);
        QTRY_COMPARE(formWidget<QLabel>(_console.window(), "pageTitle")->text(), title);
        ConsoleKeyboard::settle();
        if (title != path.last())
            _console.press(Qt::Key_Right);
        ConsoleKeyboard::settle();
    }
}

/// On the page of a local account.
void TestAccountPages::chooseQuotaTab()
{
    _console.press(Qt::Key_F6);
    _console.tabTo("qt_tabwidget_tabbar");
    const auto *bar = qobject_cast<QTabBar *>(QApplication::focusWidget());
    QVERIFY(bar);
    for (int i = 0; i < bar->count() && bar->tabText(bar->currentIndex()) != QLatin1String("Quota"); ++i)
        _console.press(Qt::Key_Right);
    QCOMPARE(bar->tabText(bar->currentIndex()), QStringLiteral("Quota"));
    ConsoleKeyboard::settle();
}

void TestAccountPages::setSoftLimitToTwelveMb()
{
    _console.tabTo("_softLimitBlocksDoubleSpinBox");
    _console.type(QStringLiteral("12"));
    QVERIFY(page<ViewEditElementWidget>()->isContentChanged());
    _console.press(Qt::Key_S, Qt::ControlModifier);
    ConsoleKeyboard::settle();
}

void TestAccountPages::aLimitIsSetFromTheList()
{
    walkTo(QStringLiteral("Quota management/Users"));
    _console.press(Qt::Key_F6);
    _console.tabTo("_devicesComboBox");
    _console.press(Qt::Key_Down); // the second device
    _console.press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    _console.type(QStringLiteral("ANN"));
    const auto *rows = page<ListElementWidget>()->findChild<ElementTreeView *>()->model();
    QTRY_COMPARE(rows->rowCount(), 1);
    _console.press(Qt::Key_Down);
    QCOMPARE(ConsoleKeyboard::focus(), QStringLiteral("_elementTreeView"));
    _console.press(Qt::Key_Down);
    _console.press(Qt::Key_Return);
    QTRY_COMPARE(currentTitle(), QStringLiteral("anna"));
    ConsoleKeyboard::settle();
    setSoftLimitToTwelveMb();
    QCOMPARE(limits("/dev/vdb").dqb_bsoftlimit, TwelveMb);
    QCOMPARE(limits("/dev/vda").dqb_bsoftlimit, OldLimit);
    QCOMPARE(limits("/dev/vdb", GRPQUOTA).dqb_bsoftlimit, OldLimit);
    QCOMPARE(message(), QString());
}

void TestAccountPages::aLimitIsSetOnTheTabOfALocalAccount_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("otherKind");
    QTest::newRow("Local users") << int(USRQUOTA) << int(GRPQUOTA);
    QTest::newRow("Local groups") << int(GRPQUOTA) << int(USRQUOTA);
}

void TestAccountPages::aLimitIsSetOnTheTabOfALocalAccount()
{
    QFETCH(int, kind);
    QFETCH(int, otherKind);
    walkTo(QString::fromLatin1(QTest::currentDataTag()) + QStringLiteral("/anna"));
    chooseQuotaTab();
    setSoftLimitToTwelveMb();
    QCOMPARE(limits("/dev/vda", kind).dqb_bsoftlimit, TwelveMb);
    QCOMPARE(limits("/dev/vda", otherKind).dqb_bsoftlimit, OldLimit);
    QCOMPARE(limits("/dev/vdb", kind).dqb_bsoftlimit, OldLimit);
}

void TestAccountPages::theTabFollowsARenamedAccount()
{
    walkTo(QStringLiteral("Local users/anna"));
    chooseQuotaTab();
    useAccounts(root + QByteArray(anna).replace("anna", "annika"));
    walkTo(QStringLiteral("Local users"));
    _console.press(Qt::Key_F5);
    ConsoleKeyboard::settle();
    walkTo(QStringLiteral("Local users/annika"));
    chooseQuotaTab();
    QCOMPARE(page<ViewEditElementWidget>()->caption(), QStringLiteral("User quota settings: annika"));
    QCOMPARE(message(), QString());
    setSoftLimitToTwelveMb();
    QCOMPARE(limits("/dev/vda").dqb_bsoftlimit, TwelveMb);
}

void TestAccountPages::theTabGoesWithARemovedAccount()
{
    walkTo(QStringLiteral("Local users/anna"));
    chooseQuotaTab();
    auto *users = dynamic_cast<Element *>(tree()->node(tree()->currentIndex())->parentNode());
    useAccounts(root);
    users->performOperation(OperationType::ReadContent, nullptr, 0);
    ConsoleKeyboard::settle();
    QTRY_COMPARE(currentTitle(), QStringLiteral("Local users"));
    QVERIFY(page<ListElementWidget>());
    QCOMPARE(users->childNodes().size(), 1);
}

void TestAccountPages::whatWentWrongIsSaid_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("failure");
    QTest::addColumn<QString>("said");
    QTest::newRow("not allowed")
        << int(Q_SETQUOTA) << EPERM
        << QStringLiteral("The caller does not have the necessary rights (CAP_SYS_ADMIN) to perform the specified "
                          "operation");
    QTest::newRow("no room") << int(Q_SETQUOTA) << ENOSPC << QStringLiteral("Unknown error while executing quotactl");
    QTest::newRow("the device vanished") << int(Q_GETFMT) << ENOENT
                                         << QStringLiteral("File specified in special or addr not exist");
    // The kind is off when its format is asked for, and still off when the limits come.
    QTest::newRow("switched off meanwhile")
        << int(Q_GETFMT) << ESRCH
        << QStringLiteral("No disk map was found for the specified user. Quota turned off in file system");
    QTest::newRow("the account was deleted") << 0 << 0 << QStringLiteral("There is no user anna");
}

void TestAccountPages::whatWentWrongIsSaid()
{
    QFETCH(int, command);
    QFETCH(int, failure);
    QFETCH(QString, said);
    walkTo(QStringLiteral("Quota management/Users/anna"));
    FakeKernel::State state = FakeKernel::instance().state("/dev/vda", USRQUOTA);
    state.failures.insert(command, failure);
    if (failure == ESRCH)
        state.failures.insert(Q_SETQUOTA, failure);
    FakeKernel::instance().setState("/dev/vda", USRQUOTA, state);
    _sandbox.standIn(QStringLiteral("quotaon"));
    if (command == 0)
        useAccounts(root);
    _console.press(Qt::Key_F6);
    setSoftLimitToTwelveMb();
    QVERIFY2(message().contains(said), qPrintable(message()));
    QVERIFY2(page<ViewEditElementWidget>()->isContentChanged(), "what was typed stays until it is reverted");
    QCOMPARE(limits("/dev/vda").dqb_bsoftlimit, OldLimit);
    QCOMPARE(_sandbox.calls(QStringLiteral("quotaon")).size(), failure == ESRCH ? 1 : 0);
    if (command == 0)
        return;
    // The other device is there as before.
    page<ViewEditElementWidget>()->reset();
    ConsoleKeyboard::settle();
    const auto *devices = formWidget<QComboBox>(*page<ViewEditElementWidget>(), "_devicesComboBox");
    QCOMPARE(devices->count(), 2);
    QCOMPARE(devices->currentText(), QStringLiteral("/dev/vda"));
    _console.tabTo("_devicesComboBox");
    _console.press(devices->currentIndex() == 0 ? Qt::Key_Down : Qt::Key_Up);
    setSoftLimitToTwelveMb();
    QVERIFY(!page<ViewEditElementWidget>()->isContentChanged());
    QCOMPARE(limits("/dev/vdb").dqb_bsoftlimit, TwelveMb);
}

void TestAccountPages::columnsSurviveARestart_data()
{
    QTest::addColumn<QString>("titles");
    for (const char *titles : {"Local users", "Local groups", "Quota management/Users", "Quota management/Groups"})
        QTest::newRow(titles) << QString::fromLatin1(titles);
}

void TestAccountPages::columnsSurviveARestart()
{
    QFETCH(QString, titles);
    const auto header = [this] { return page<ListElementWidget>()->findChild<QHeaderView *>(); };
    walkTo(titles);
    QTRY_VERIFY(header()->sectionSize(2) != header()->defaultSectionSize());
    header()->moveSection(3, 1);
    header()->resizeSection(2, 187);
    for (int restart = 0; restart < 2; ++restart) {
        _console.close();
        _console.open();
        walkTo(titles);
        QCOMPARE(header()->visualIndex(3), 1);
        QCOMPARE(header()->sectionSize(2), 187);
    }
}

void TestAccountPages::whatTakesTheFocusHasAName()
{
    QStringList nameless;
    for (const char *titles : {"Local users", "Local users/anna", "Quota management", "Quota management/Notifications",
                               "Quota management/Users", "Quota management/Users/anna"}) {
        walkTo(QString::fromLatin1(titles));
        const QList<QWidget *> widgets = _console.window().findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            if (!(widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy() || !widget->isVisible())
                continue;
            QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(widget);
            if (accessible && accessible->text(QAccessible::Name).isEmpty())
                nameless += QStringLiteral("%1: %2 %3")
                                .arg(QLatin1String(titles), QLatin1String(widget->metaObject()->className()),
                                     widget->objectName());
        }
    }
    nameless.removeDuplicates();
    QCOMPARE(nameless.join(QLatin1Char('\n')), QString());
}

KRA_SANDBOX_MAIN(TestAccountPages)
#include "tst_accountpages.moc"
