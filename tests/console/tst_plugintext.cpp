// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <pluginsdialog.h>
#include <plugintext.h>

#include <module.h>
#include <moduletree.h>

#include <QLabel>
#include <QListWidget>
#include <QTextBrowser>
#include <QtTest>

/// What the page of plug-ins tells of each outcome.
class PluginTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyStateIsTold_data();
    void everyStateIsTold();
    void textsOfOthersAreShownAsTheyStand();
    void signaturesAreLeftOut();
    void moduleWithoutPlaceIsNamed();
    void dialogShowsThePluginThatIsChosen();
    void dialogSaysThatThereAreNone();

private:
    static PluginRecord record(PluginRecord::State state);
};

PluginRecord PluginTextTest::record(PluginRecord::State state)
{
    PluginRecord made;
    made.fileName = QStringLiteral("/usr/lib/kra/plugins/libany.so");
    made.state = state;
    made.explanation = QStringLiteral("because");
    return made;
}

void PluginTextTest::everyStateIsTold_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("text");
    const auto row = [](PluginRecord::State state, const char *text) {
        QTest::newRow(text) << int(state) << QString::fromLatin1(text);
    };
    row(PluginRecord::State::Refused, "Refused: not safe to load");
    row(PluginRecord::State::Broken, "Broken: not a plug-in that loads");
    row(PluginRecord::State::Foreign, "Made for another program");
    row(PluginRecord::State::Threw, "Failed while it was started");
    row(PluginRecord::State::Invalid, "Cannot work on this computer");
    row(PluginRecord::State::Attached, "At work");
}

void PluginTextTest::everyStateIsTold()
{
    QFETCH(int, state);
    QFETCH(QString, text);
    const ModuleTree tree;
    const PluginRecord told = record(PluginRecord::State(state));
    QCOMPARE(pluginState(told, tree), text);
    const QString details = pluginDetails(told, tree);
    QVERIFY(details.contains(text));
    QVERIFY(details.contains(told.explanation));
    QVERIFY(details.contains(told.fileName));
    QCOMPARE(pluginTitle(told), QStringLiteral("libany.so"));
}

void PluginTextTest::textsOfOthersAreShownAsTheyStand()
{
    const ModuleTree tree;
    PluginRecord told = record(PluginRecord::State::Invalid);
    told.title = QStringLiteral("<b>Any</b>");
    told.description = QStringLiteral("<i>all</i>");
    told.programOutput = QStringList{QStringLiteral("modinfo x: exit code 1\n<error>")};
    told.explanation = QStringLiteral("<u>");
    const QString details = pluginDetails(told, tree);
    for (const char *raw : {"<b>Any", "<i>", "<error>", "<u>"})
        QVERIFY2(!details.contains(QLatin1String(raw)), raw);
    QVERIFY(details.contains(QLatin1String("&lt;error&gt;")));
    QVERIFY(details.contains(QLatin1String("modinfo x: exit code 1")));
}

void PluginTextTest::signaturesAreLeftOut()
{
    const ModuleTree tree;
    PluginRecord told = record(PluginRecord::State::Attached);
    told.programOutput = QStringList{QStringLiteral("modinfo x: exit code 0\nfilename: /x\nlicense: GPL\na\nb\nc\nd\n"
                                                    "e\nsignature: AA:BB\n\t\tCC:DD"),
                                     QStringLiteral("other: exit code 1\nwhy")};
    const QString details = pluginDetails(told, tree);
    QVERIFY(details.contains(QLatin1String("license: GPL")));
    QVERIFY(!details.contains(QLatin1String("signature")));
    QVERIFY(!details.contains(QLatin1String("CC:DD")));
    QVERIFY(details.contains(QChar(0x2026)));
    QVERIFY(details.contains(QLatin1String("why")));
}

void PluginTextTest::moduleWithoutPlaceIsNamed()
{
    QObject owner;
    auto *module = new Module(QStringLiteral("AnyModule"), &owner);
    module->setAttachName(QStringLiteral("MissingModule"));
    module->setKind(Module::BranchKind);
    ModuleTree tree;
    tree.addModule(module);
    PluginRecord told = record(PluginRecord::State::Attached);
    told.explanation.clear();
    told.moduleNames = QStringList{QStringLiteral("AnyModule")};
    QCOMPARE(pluginState(told, tree), QStringLiteral("At work in part"));
    QVERIFY(pluginDetails(told, tree).contains(QLatin1String("AnyModule: there is no module MissingModule")));
}

void PluginTextTest::dialogShowsThePluginThatIsChosen()
{
    const ModuleTree tree;
    PluginRecord second = record(PluginRecord::State::Attached);
    second.title = QStringLiteral("Second");
    PluginsDialog dialog({record(PluginRecord::State::Broken), second}, tree);
    auto *list = dialog.findChild<QListWidget *>();
    auto *details = dialog.findChild<QTextBrowser *>();
    QCOMPARE(list->count(), 2);
    QVERIFY(details->toPlainText().contains(QLatin1String("Broken")));
    list->setCurrentRow(1);
    QVERIFY(details->toPlainText().contains(QLatin1String("Second")));
    QVERIFY(details->toPlainText().contains(QLatin1String("At work")));
}

void PluginTextTest::dialogSaysThatThereAreNone()
{
    const ModuleTree tree;
    const PluginsDialog dialog({}, tree);
    QCOMPARE(dialog.findChild<QTextBrowser *>()->toPlainText(), QStringLiteral("No plug-in was found."));
}

QTEST_MAIN(PluginTextTest)
#include "tst_plugintext.moc"
