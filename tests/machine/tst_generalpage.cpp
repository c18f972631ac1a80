// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generalpage.h"
#include "machinefacts.h"
#include "realconsole.h"

#include <startup.h>

#include <QApplication>
#include <QMessageBox>
#include <QTest>

/// The page "Quota management" of the real console with the real plug-in, against what the machine's programs say.
class TestGeneralPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void listsTheDevices();
    void showsADevice_data();
    void showsADevice();
    void asksNoQuestion();

private:
    void compare(QuotaKind kind, const MachineFacts::Kind &facts, bool hasFeature) const;

    std::unique_ptr<RealConsole> _console;
    std::unique_ptr<GeneralPage> _page;
};

void TestGeneralPage::initTestCase()
{
    _console = std::make_unique<RealConsole>();
    _page = std::make_unique<GeneralPage>(*_console);
    QVERIFY(_page->open());
}

void TestGeneralPage::cleanupTestCase()
{
    _page.reset();
    _console.reset();
}

void TestGeneralPage::listsTheDevices()
{
    QStringList expected = MachineFacts::quotaDevices();
    expected.sort();
    QCOMPARE(_page->devices(), expected);
}

void TestGeneralPage::showsADevice_data()
{
    QTest::addColumn<QString>("device");
    for (const QString &device : MachineFacts::quotaDevices())
        QTest::newRow(qPrintable(device)) << device;
}

void TestGeneralPage::showsADevice()
{
    QFETCH(const QString, device);
    QVERIFY(_page->choose(device));
    const MachineFacts::Device facts = MachineFacts::device(device);
    QCOMPARE(_page->filesystem(), facts.type);
    // Quotas that are on though no option asks for them are the file system's own.
    const bool hasFeature = facts.user.on && !facts.user.inForce;
    const QStringList deviceFacts = _page->deviceFacts();
    QVERIFY2(facts.type.isEmpty() || deviceFacts.first().startsWith(QLatin1String("Mounted on /")),
             qPrintable(deviceFacts.join(QLatin1Char('\n'))));
    QCOMPARE(deviceFacts.join(QLatin1Char('\n')).contains(QLatin1String("keeps its quotas in itself")), hasFeature);
    compare(UserQuota, facts.user, hasFeature);
    compare(GroupQuota, facts.group, hasFeature);
}

/// One half of the page.
void TestGeneralPage::compare(QuotaKind kind, const MachineFacts::Kind &facts, bool hasFeature) const
{
    QCOMPARE(_page->isOn(kind), facts.on);
    QCOMPARE(_page->canSwitch(kind), !hasFeature);
    QCOMPARE(_page->graceSeconds(kind, Counted::Space), facts.blockGrace);
    QCOMPARE(_page->graceSeconds(kind, Counted::Files), facts.inodeGrace);

    const QString said = _page->facts(kind).join(QLatin1Char('\n'));
    const auto says = [&said](const char *text) { return said.contains(QLatin1String(text)); };
    QVERIFY2(says(facts.on ? "quota is on" : "quota is off"), qPrintable(said));
    QVERIFY2(hasFeature || says(facts.configured ? "Configured: " : "Not configured: "), qPrintable(said));
    QVERIFY2(hasFeature || says(facts.inForce ? "In force: " : "Not in force: "), qPrintable(said));
    QVERIFY2(hasFeature || says(facts.hasFile ? "is present" : "is missing"), qPrintable(said));
}

/// Nothing on this machine waits for a reboot, least of all the file system that keeps its quotas itself.
void TestGeneralPage::asksNoQuestion()
{
    QVERIFY(!_console->window().findChild<QMessageBox *>());
    QCOMPARE(_page->takeBoxes(), QStringList());
}

int main(int argc, char *argv[])
{
    Startup::prepareProcess();
    QApplication application(argc, argv);
    TestGeneralPage test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_generalpage.moc"
