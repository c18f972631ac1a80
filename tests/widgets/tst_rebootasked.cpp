// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editortest.h"
#include "madeuprecords.h"

#include <generalwidget.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QMessageBox>
#include <QtTest>

using namespace MadeUpRecords;

/// When the general settings editor asks for a reboot, and what becomes of the question.
class TestRebootAsked : public QObject, private EditorTest<GeneralWidget>
{
    Q_OBJECT

private Q_SLOTS:
    void init() { openEditor(QStringLiteral("QuotaGeneralElement")); }
    void cleanup() { closeEditor(); }

    void theRebootQuestion_data();
    void theRebootQuestion();
    void theRebootQuestionComesBackWithEveryRead();
    void showingAnOldRecordAsksNothing();
    void theRebootQuestionIsAskedOnceAtATime();
    void theSameElementAgainTakesNoQuestionAway();
    void theRebootQuestionDiesWithThePage();
    void theRebootQuestionGoesAndComesWithThePage();

private:
    QGroupBox *box(const char *name) const { return find<QGroupBox>(name); }
    QComboBox *devices() const { return find<QComboBox>("_filesystemsComboBox"); }
    QMessageBox *question() const { return _widget->findChild<QMessageBox *>(); }
    /// Whether the page asks; it does so a moment after the read.
    bool asks() const;

    void show(const QMap<QString, DeviceSettings> &settings);
    void show(const DeviceSettings &settings) { show({{QStringLiteral("/dev/vda1"), settings}}); }
    void answer(QMessageBox::StandardButton button);
};

bool TestRebootAsked::asks() const
{
    QCoreApplication::processEvents();
    return question() != nullptr;
}

void TestRebootAsked::show(const QMap<QString, DeviceSettings> &settings)
{
    GeneralData record;
    record.deviceSettings = settings;
    _widget->afterSuccessfulRead(_element.get(), &record);
}

void TestRebootAsked::answer(QMessageBox::StandardButton button)
{
    QTRY_VERIFY(question() && question()->isVisible());
    QTest::mouseClick(question()->button(button), Qt::LeftButton);
    QTRY_VERIFY(!question());
}

void TestRebootAsked::theRebootQuestion_data()
{
    QTest::addColumn<bool>("usersWait");
    QTest::addColumn<bool>("groupsWait");
    QTest::newRow("nobody") << false << false;
    QTest::newRow("users") << true << false;
    QTest::newRow("groups") << false << true;
    QTest::newRow("both") << true << true;
}

void TestRebootAsked::theRebootQuestion()
{
    QFETCH(bool, usersWait);
    QFETCH(bool, groupsWait);
    const KindSettings waits = kind(true, false, true, true);
    const KindSettings settled = kind(true, true, true, true);
    // The device that waits is not the one that is shown.
    show({{QStringLiteral("/dev/vda1"), fullQuota()},
          {QStringLiteral("/dev/vdb1"), device(usersWait ? waits : settled, groupsWait ? waits : settled)}});
    if (!usersWait && !groupsWait) {
        QVERIFY(!asks());
        return;
    }
    QVERIFY(asks());
    QCOMPARE(question()->windowTitle(), QStringLiteral("Warning"));
    QCOMPARE(question()->text(), QStringLiteral("To apply the settings you must reboot system.\nReboot now?"));
    QCOMPARE(question()->standardButtons(), QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(question()->icon(), QMessageBox::Warning);
    answer(QMessageBox::No);
    QVERIFY(!_widget->isContentChanged());
    QVERIFY(!_widget->isBlocked());
    QVERIFY(_module->asked.empty());
    QCOMPARE(devices()->currentText(), QStringLiteral("/dev/vda1"));
}

void TestRebootAsked::theRebootQuestionComesBackWithEveryRead()
{
    const DeviceSettings waits = device(kind(true, false, true, true), KindSettings());
    for (int read = 0; read < 3; ++read) {
        show(waits);
        answer(QMessageBox::No);
    }
    show(fullQuota());
    QVERIFY(!asks());
}

void TestRebootAsked::showingAnOldRecordAsksNothing()
{
    auto record = std::make_unique<GeneralData>();
    record->deviceSettings.insert(QStringLiteral("/dev/vda1"), device(kind(true, false, true, true), KindSettings()));
    GeneralData read = *record;
    _widget->setElement(nullptr);
    _element->setRecord(std::move(record));
    _widget->setElement(_element.get());
    QVERIFY(box("_usersSettingsGroupBox")->isChecked());
    QVERIFY(!asks());
    _widget->afterSuccessfulRead(_element.get(), &read);
    answer(QMessageBox::No);
}

void TestRebootAsked::theRebootQuestionIsAskedOnceAtATime()
{
    const DeviceSettings waits = device(kind(true, false, true, true), KindSettings());
    show(waits);
    show(waits);
    QVERIFY(asks());
    show(waits);
    QVERIFY(asks());
    QCOMPARE(_widget->findChildren<QMessageBox *>().size(), 1);
    answer(QMessageBox::No);
}

/// The pages set their editors' element again whenever one of the elements changes.
void TestRebootAsked::theSameElementAgainTakesNoQuestionAway()
{
    const DeviceSettings waits = device(kind(true, false, true, true), KindSettings());
    GeneralData record;
    record.deviceSettings.insert(QStringLiteral("/dev/vda1"), waits);
    _widget->afterSuccessfulRead(_element.get(), &record);
    _widget->setElement(_element.get()); // before the question comes
    QTRY_VERIFY(asks());
    _widget->setElement(_element.get()); // and while it stands
    _widget->hide();
    _widget->show();
    QTRY_VERIFY(asks());
    answer(QMessageBox::No);
}

void TestRebootAsked::theRebootQuestionDiesWithThePage()
{
    QWidget window;
    _widget->setParent(&window);
    window.show();
    _widget->show();
    show(device(kind(true, false, true, true), KindSettings()));
    QTRY_VERIFY(window.findChild<QMessageBox *>());
    _widget.reset();
    QVERIFY(!window.findChild<QMessageBox *>());
    QVERIFY(!QApplication::activeModalWidget());
}

/// It is the window's, so that it stands over it and blocks it; but only while its page is shown.
void TestRebootAsked::theRebootQuestionGoesAndComesWithThePage()
{
    QWidget window;
    _widget->setParent(&window);
    const auto keepingTheWidget = qScopeGuard([this] { _widget->setParent(nullptr); });
    window.show();
    _widget->hide();
    const auto asked = [&window] {
        QCoreApplication::processEvents();
        return window.findChild<QMessageBox *>(QString(), Qt::FindDirectChildrenOnly);
    };
    const DeviceSettings waits = device(kind(true, false, true, true), KindSettings());
    show(waits); // the page was left while it was read
    QVERIFY(!asked());
    _widget->show();
    QTRY_VERIFY(asked());
    QCOMPARE(asked()->windowModality(), Qt::WindowModal);
    _widget->hide();
    QVERIFY(!window.findChild<QMessageBox *>());
    _widget->show();
    QTRY_VERIFY(asked());
    QTest::mouseClick(asked()->button(QMessageBox::No), Qt::LeftButton);
    QTRY_VERIFY(!asked());
    _widget->hide();
    _widget->show(); // answered
    QVERIFY(!asked());
    show(waits);
    QTRY_VERIFY(asked());
    show(fullQuota()); // what it asked for is not needed any more
    QVERIFY(!asked());
}

QTEST_MAIN(TestRebootAsked)
#include "tst_rebootasked.moc"
