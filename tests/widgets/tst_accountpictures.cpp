// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountlist.h"
#include "picture.h"

#include <elementtreeview.h>
#include <groupwidget.h>
#include <userswidget.h>
#include <userwidget.h>

#include <QComboBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QtTest>

using namespace MadeUpAccounts;

/// What the account pages look like, kept as pictures for a person to judge; what a machine can judge is checked.
class TestAccountPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void editor_data();
    void editor();
    void list_data();
    void list();

private:
    QTemporaryDir _settings;
};

namespace
{
const QString longDevice = QStringLiteral("/dev/mapper/vg--storage--fileserver--2026-lv--home--of--all--staff");

void addScaledRow(const char *name, const char *state, const QSize &size)
{
    Picture::forEachScale([&](int percent, const char *suffix) {
        QTest::addRow("%s%s", name, suffix) << QString::fromLatin1(state) << size * percent / 100 << percent;
    });
}

QMap<QString, DeviceQuota> quotas(const QString &state)
{
    if (state == QLatin1String("none"))
        return {};
    DeviceQuota quota = limits(1536 * MiB, 2 * GiB, 10000, 20000);
    if (state == QLatin1String("off"))
        quota = DeviceQuota();
    quota.filesystemType = QStringLiteral("ext4");
    if (state == QLatin1String("running") || state == QLatin1String("hidden"))
        quota.blocksTimeToForce = QDateTime(QDate(2026, 11, 28), QTime(9, 30));
    if (state == QLatin1String("hidden")) {
        quota.softBlockLimit = size(1234567 * KiB);
        quota.hardBlockLimit = size(100 * GiB);
        quota.hardInodeLimit = 5000000000;
    }
    return {{state == QLatin1String("hidden") ? longDevice : QStringLiteral("/dev/vdb1"), quota}};
}
} // namespace

void TestAccountPictures::initTestCase()
{
    QVERIFY(_settings.isValid());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, _settings.path());
    QCoreApplication::setOrganizationName(QStringLiteral("kra"));
}

void TestAccountPictures::editor_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("percent");
    const QSize usual(771, 577);
    addScaledRow("on", "on", usual);
    addScaledRow("off", "off", usual);
    addScaledRow("running", "running", usual);
    addScaledRow("hidden", "hidden", usual);
    addScaledRow("no-device", "none", usual);
    addScaledRow("narrow", "hidden", QSize(460, 560));
}

void TestAccountPictures::editor()
{
    QFETCH(QString, state);
    QFETCH(QSize, size);
    QFETCH(int, percent);
    const Picture::Scale scale(percent);
    RecordingModule module;
    EditedElement element(QStringLiteral("QuotaUserElement"), &module);
    auto *widget = new UserWidget(&module, &everybodyMay);
    QScrollArea page; // as the console shows it
    page.setFrameShape(QFrame::NoFrame);
    page.setWidgetResizable(true);
    page.setWidget(widget);
    page.resize(size);
    widget->setElement(&element);
    page.show();
    UserData record = account(quotas(state));
    widget->afterSuccessfulRead(&element, &record);
    QVERIFY(QTest::qWaitForWindowExposed(&page));
    Picture::keep(page, "quotawidget");
    // Neither a long device name nor a narrow window makes the page wider than the window it is in.
    QCOMPARE(page.horizontalScrollBar()->maximum(), 0);
}

void TestAccountPictures::list_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("percent");
    const QSize usual(1000, 480);
    addScaledRow("many", "many", usual);
    addScaledRow("long-names", "long", usual);
    addScaledRow("filters", "filters", usual);
    addScaledRow("no-accounts", "none", usual);
    addScaledRow("off", "off", usual);
}

void TestAccountPictures::list()
{
    QFETCH(QString, state);
    QFETCH(QSize, size);
    QFETCH(int, percent);
    QSettings().clear();
    const Picture::Scale scale(percent);
    RecordingModule module;
    UsersElement users(&module, &everybodyMay);
    UsersWidget widget(&module, &everybodyMay);
    widget.resize(size);
    widget.setElement(&users);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    widget.read();
    QVector<TreeNode *> accounts;
    const QMap<QString, int> counts = {
        {QStringLiteral("none"), 0}, {QStringLiteral("long"), 3}, {QStringLiteral("many"), 100000}};
    const int count = counts.value(state, 2000);
    const bool isLong = state == QLatin1String("long");
    for (int i = 0; i < count; ++i) {
        QString name = i == 0 ? QStringLiteral("root") : QStringLiteral("user%1").arg(i);
        if (isLong)
            name = QStringLiteral("firstname.lastname-department%1.").arg(i).leftJustified(32, QLatin1Char('m'));
        accounts += AccountList::user(&module, name, i,
                                      quotas(i % 5 == 0 && !isLong ? QStringLiteral("running") : QStringLiteral("on")));
    }
    if (state == QLatin1String("off"))
        for (TreeNode *node : qAsConst(accounts)) {
            auto *user = dynamic_cast<UserElement *>(node);
            user->setRecord(std::make_unique<UserData>(account(quotas(state), user->title())));
        }
    AccountList::replace(users, accounts);
    AccountList::tellDevices(widget, {QStringLiteral("/dev/vdb1"), longDevice});
    if (state == QLatin1String("filters"))
        widget.showHideFiltersWidget();
    QCoreApplication::processEvents();
    auto *view = widget.findChild<ElementTreeView *>();
    if (state == QLatin1String("many")) // its end, where the names are longest
        view->setCurrentIndex(view->model()->index(count - 1, 0));
    Picture::keep(widget, "userslist");
    QCOMPARE(widget.size(), size);
}

QTEST_MAIN(TestAccountPictures)
#include "tst_accountpictures.moc"
