// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editortest.h"
#include "limitform.h"
#include "madeupaccounts.h"

#include <amountdialog.h>
#include <userwidget.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

using namespace LimitForm;
using namespace MadeUpAccounts;

/// Limits as they are typed: nothing that is typed is dropped, and nothing else comes of it.
class TestTypedLimits : public QObject, private EditorTest<UserWidget>
{
    Q_OBJECT

private Q_SLOTS:
    void init() { openEditor(QStringLiteral("QuotaUserElement")); }
    void cleanup() { closeEditor(); }

    void numbersOfTheBox_data();
    void numbersOfTheBox();
    void numbersBeyondTheBox_data();
    void numbersBeyondTheBox();
    void countsBeyondTheBox_data();
    void countsBeyondTheBox();
    void aRefusedNumberIsAppliedByNoWay();
    void aRefusedNumberIsMendedByMoreKeys();
    void aRefusedNumberOfAnUntickedLimitDoesNotCount();
    void aLargerUnitKeepsTheNumber();
    void arrowKeysStopAtTheMaximum();
    void theSuffixIsNotTyped();
    void anAbandonedEditIsNone_data();
    void anAbandonedEditIsNone();
    void anotherAccountHasItsOwnRead();
    void decimalsOfOtherLanguages_data();
    void decimalsOfOtherLanguages();
    void theNotes_data();
    void theNotes();
    void theUsedFilesThatTheBoxCannotShow();
    void theDialogTakesAnySize_data();
    void theDialogTakesAnySize();
    void theDialogTakesAnyNumberOfFiles();
    void theDialogRefuses_data();
    void theDialogRefuses();
    void theDialogShowsWhatWillBeStored();
    void theDialogCanBeLeft();
    void theDialogGoesWithItsDevice();
    void whatIsTypedInTheDialogIsAnEdit();
    void whatTheDialogTookIsEditedInTheBoxes();

private:
    void show(const DeviceQuota &quota);
    DeviceQuota exported() const;
    void type(const char *box, const QString &text);
    void paste(const char *box, const QString &text);
    void leave(const char *box);
    QString note(const char *label) const { return find<QLabel>(label)->text(); }
    AmountDialog *openDialog(const char *button);

    const QString _device = QStringLiteral("/dev/vda1");
};

namespace
{
quint64 softBytes(const DeviceQuota &quota)
{
    return quota.softBlockLimit.bytes;
}

const char blocksNote[] = "_blocksNoteLabel";
const char inodesNote[] = "_inodesNoteLabel";
} // namespace

void TestTypedLimits::show(const DeviceQuota &quota)
{
    UserData record = account({{_device, quota}, {QStringLiteral("/dev/vdb1"), noLimits()}});
    _widget->afterSuccessfulRead(_element.get(), &record);
}

DeviceQuota TestTypedLimits::exported() const
{
    const std::unique_ptr<ElementData> record = _widget->exportElementData();
    return dynamic_cast<const UserData &>(*record).deviceQuotas.value(_device);
}

/// Over whatever is in the box.
void TestTypedLimits::type(const char *box, const QString &text)
{
    auto *number = find<QAbstractSpinBox>(box);
    number->setFocus();
    number->selectAll();
    QTest::keyClicks(number, text);
}

void TestTypedLimits::paste(const char *box, const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    type(box, QString());
    QTest::keyClick(find<QWidget>(box), Qt::Key_V, Qt::ControlModifier);
}

void TestTypedLimits::leave(const char *box)
{
    QTest::keyClick(find<QWidget>(box), Qt::Key_Tab);
    QVERIFY(!find<QWidget>(box)->hasFocus());
}

AmountDialog *TestTypedLimits::openDialog(const char *button)
{
    find<QToolButton>(button)->setFocus();
    QTest::keyClick(find<QToolButton>(button), Qt::Key_Space);
    return qobject_cast<AmountDialog *>(QApplication::activeModalWidget());
}

void TestTypedLimits::numbersOfTheBox_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<quint64>("bytes");
    QTest::newRow("whole") << 2 << QStringLiteral("4095") << 4095 * MiB;
    QTest::newRow("decimals") << 3 << QStringLiteral("1.5") << GiB + GiB / 2;
    QTest::newRow("a comma") << 3 << QStringLiteral("1,5") << GiB + GiB / 2;
    QTest::newRow("the most") << 3 << QStringLiteral("3") << 3 * GiB;
    QTest::newRow("the most bytes") << 0 << QStringLiteral("4294967294") << quint64(4294967294);
}

void TestTypedLimits::numbersOfTheBox()
{
    QFETCH(int, unit);
    QFETCH(QString, typed);
    show(limits(GiB, 2 * GiB));
    unitOf(*_widget, SoftBlocks)->setCurrentIndex(unit);
    type(SoftBlocks, typed);
    QTEST(softBytes(exported()), "bytes");
    leave(SoftBlocks);
    QTEST(softBytes(exported()), "bytes");
    QVERIFY(_widget->isContentValid());
    _module->asked.clear();
    _widget->applyContentChanges();
    QCOMPARE(_module->asked, std::vector<OperationType>({OperationType::Write}));
}

void TestTypedLimits::numbersBeyondTheBox_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("most");
    const auto row = [](int unit, const char *typed, const char *most) {
        QTest::addRow("%s in %d", typed, unit) << unit << QString::fromLatin1(typed) << QString::fromLatin1(most);
    };
    for (const char *typed : {"50", "20", "100", "9.5", "5000", "3.01", "50 GB", "2G", "1.234", "1.500", "1,500",
                              "1,50,0", "-1", "x", "1.5.", "99999999999999999999999"})
        row(3, typed, "3.00 Gb");
    for (const char *typed : {"5000", "4095.01", "1.000.0"})
        row(2, typed, "4095.00 Mb");
    row(1, "4194303.5", "4194303.00 Kb");
    row(0, "4294967295", "4294967294.00 Bytes");
}

void TestTypedLimits::numbersBeyondTheBox()
{
    QFETCH(int, unit);
    QFETCH(QString, typed);
    QFETCH(QString, most);
    show(limits(GiB, 2 * GiB));
    unitOf(*_widget, SoftBlocks)->setCurrentIndex(unit);
    type(SoftBlocks, typed);
    const auto *box = find<QDoubleSpinBox>(SoftBlocks);
    for (const bool hasLeft : {false, true}) {
        if (hasLeft)
            leave(SoftBlocks);
        QCOMPARE(box->text(), typed);
        QVERIFY(_widget->isContentChanged());
        QVERIFY(!_widget->isContentValid());
        QVERIFY2(_widget->whyInvalid().contains(most), qPrintable(_widget->whyInvalid()));
        QVERIFY(_widget->whyInvalid().contains(QStringLiteral("soft limit")));
        QVERIFY(_widget->whyInvalid().contains(QStringLiteral("button beside it")));
        QCOMPARE(note(blocksNote), _widget->whyInvalid());
        QCOMPARE(box->accessibleDescription(), _widget->whyInvalid());
        QCOMPARE(softBytes(exported()), GiB);
    }
}

void TestTypedLimits::countsBeyondTheBox_data()
{
    QTest::addColumn<QString>("typed");
    for (const char *typed : {"2147483648", "5000000000", "1.5", "10k", "-5", "1,000", "99999999999999999999999"})
        QTest::newRow(typed) << QString::fromLatin1(typed);
}

void TestTypedLimits::countsBeyondTheBox()
{
    QFETCH(QString, typed);
    show(limits(GiB, 2 * GiB, 100, 200));
    type(HardInodes, typed);
    for (const bool hasLeft : {false, true}) {
        if (hasLeft)
            leave(HardInodes);
        QVERIFY(find<QSpinBox>(HardInodes)->text().startsWith(typed));
        QVERIFY(!_widget->isContentValid());
        QVERIFY(_widget->whyInvalid().contains(QLocale().toString(2147483647)));
        QVERIFY(_widget->whyInvalid().contains(QStringLiteral("hard limit")));
        QCOMPARE(exported().hardInodeLimit, quint64(200));
    }
}

void TestTypedLimits::aRefusedNumberIsAppliedByNoWay()
{
    show(limits(GiB, 2 * GiB));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp}) {
        type(SoftBlocks, QStringLiteral("50"));
        QTest::keyClick(find<QWidget>(SoftBlocks), key);
        QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->text(), QStringLiteral("50"));
    }
    find<QDoubleSpinBox>(SoftBlocks)->interpretText();
    QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->text(), QStringLiteral("50"));
    leave(SoftBlocks);
    _module->asked.clear();
    QSignalSpy refused(_widget.get(), &ViewEditElementWidget::refused);
    _widget->applyContentChanges();
    QVERIFY(_module->asked.empty());
    QCOMPARE(refused.size(), 1);
    QVERIFY(refused.first().first().toString().contains(QStringLiteral("3.00 Gb")));
    QVERIFY(find<QWidget>(SoftBlocks)->hasFocus());
    QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->text(), QStringLiteral("50"));
    QVERIFY(_widget->isContentChanged());
    // A new record puts its own number there.
    show(limits(GiB, 2 * GiB));
    QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->text(), QStringLiteral("1.00"));
    QVERIFY(_widget->isContentValid());
    QCOMPARE(note(blocksNote), QString());
}

void TestTypedLimits::aRefusedNumberIsMendedByMoreKeys()
{
    show(limits(GiB, 2 * GiB));
    type(SoftBlocks, QStringLiteral("50"));
    QTest::keyClick(find<QWidget>(SoftBlocks), Qt::Key_Home);
    QTest::keyClicks(find<QWidget>(SoftBlocks), QStringLiteral("1."));
    QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->text(), QStringLiteral("1.50"));
    QVERIFY(_widget->isContentValid());
    QCOMPARE(note(blocksNote), QString());
    QCOMPARE(softBytes(exported()), GiB + GiB / 2);
    // A number set by other means takes the place of a refused one.
    type(SoftBlocks, QStringLiteral("50"));
    find<QDoubleSpinBox>(SoftBlocks)->setValue(2.5);
    QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->text(), QStringLiteral("2.50"));
    QVERIFY(_widget->isContentValid());
}

void TestTypedLimits::aRefusedNumberOfAnUntickedLimitDoesNotCount()
{
    show(limits(GiB, 2 * GiB));
    type(SoftBlocks, QStringLiteral("50"));
    checkBoxOf(*_widget, SoftBlocks)->click();
    QVERIFY(_widget->isContentValid());
    QCOMPARE(softBytes(exported()), quint64(0));
    checkBoxOf(*_widget, SoftBlocks)->click();
    QVERIFY(!_widget->isContentValid());
    QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->text(), QStringLiteral("50"));
}

void TestTypedLimits::aLargerUnitKeepsTheNumber()
{
    show(limits(GiB, 2 * GiB));
    QComboBox *unit = unitOf(*_widget, SoftBlocks);
    unit->setCurrentIndex(MemorySizeTransfer::Mb);
    type(SoftBlocks, QStringLiteral("500"));
    unit->setCurrentIndex(MemorySizeTransfer::Gb);
    QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->maximum(), 3.0);
    QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->value(), 3.0);
    QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->text(), QStringLiteral("500"));
    QVERIFY(!_widget->isContentValid());
    unit->setCurrentIndex(MemorySizeTransfer::Kb);
    QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->text(), QStringLiteral("500.00"));
    QVERIFY(_widget->isContentValid());
    QCOMPARE(softBytes(exported()), 500 * KiB);
    // So does a number that was read.
    show(limits(900 * MiB, 0));
    unit->setCurrentIndex(MemorySizeTransfer::Gb);
    QVERIFY(!_widget->isContentValid());
    QCOMPARE(softBytes(exported()), 900 * MiB);
    unit->setCurrentIndex(MemorySizeTransfer::Mb);
    QVERIFY(_widget->isContentValid());
    QCOMPARE(softBytes(exported()), 900 * MiB);
}

void TestTypedLimits::arrowKeysStopAtTheMaximum()
{
    show(limits(2 * GiB + GiB / 2, 0, 2147483646, 0));
    auto *size = find<QDoubleSpinBox>(SoftBlocks);
    size->setFocus();
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(size, Qt::Key_Up);
    QCOMPARE(size->text(), QStringLiteral("3.00"));
    QCOMPARE(softBytes(exported()), 3 * GiB);
    auto *files = find<QSpinBox>(SoftInodes);
    files->setFocus();
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(files, Qt::Key_Up);
    QCOMPARE(exported().softInodeLimit, quint64(2147483647));
    QVERIFY(_widget->isContentValid());
}

void TestTypedLimits::theSuffixIsNotTyped()
{
    show(limits(GiB, 2 * GiB, 100, 200));
    auto *files = find<QSpinBox>(SoftInodes);
    files->setFocus();
    auto *line = files->findChild<QLineEdit *>();
    line->setCursorPosition(3);
    QTest::keyClick(files, Qt::Key_Delete); // would take the blank before the word
    QCOMPARE(files->text(), QStringLiteral("100 files"));
    QTest::keyClick(files, Qt::Key_Backspace);
    QCOMPARE(files->text(), QStringLiteral("10 files"));
    QCOMPARE(exported().softInodeLimit, quint64(10));
}

void TestTypedLimits::anAbandonedEditIsNone_data()
{
    QTest::addColumn<QVector<int>>("keys");
    const int undo = int(Qt::ControlModifier) | Qt::Key_Z;
    QTest::newRow("deleted and left") << QVector<int>{Qt::Key_Delete, Qt::Key_Tab};
    QTest::newRow("deleted and entered") << QVector<int>{Qt::Key_Delete, Qt::Key_Return};
    QTest::newRow("deleted and undone") << QVector<int>{Qt::Key_Delete, undo};
    QTest::newRow("a digit and undone") << QVector<int>{Qt::Key_End, Qt::Key_5, undo};
    QTest::newRow("a digit and taken back") << QVector<int>{Qt::Key_End, Qt::Key_5, Qt::Key_Backspace, Qt::Key_Tab};
    QTest::newRow("another number and undone") << QVector<int>{Qt::Key_1, undo, Qt::Key_Tab};
    QTest::newRow("stepped away and back") << QVector<int>{Qt::Key_Down, Qt::Key_Up};
}

void TestTypedLimits::anAbandonedEditIsNone()
{
    QFETCH(QVector<int>, keys);
    const DeviceQuota stored = limits(100 * GiB, 1234567 * KiB, 5000000000, 6000000000);
    for (const char *name : {SoftBlocks, HardBlocks, SoftInodes, HardInodes}) {
        show(stored);
        const QString notes = note(blocksNote) + note(inodesNote);
        QVERIFY(notes.contains(QStringLiteral("107,374,182,400 bytes (100 GB)")));
        auto *box = find<QAbstractSpinBox>(name);
        const QString text = box->text();
        box->setFocus();
        box->selectAll();
        for (const int key : keys) {
            if (name == SoftInodes || name == HardInodes)
                if (key == Qt::Key_End) { // behind the number, not behind the word
                    box->findChild<QLineEdit *>()->setCursorPosition(text.indexOf(QLatin1Char(' ')));
                    continue;
                }
            QTest::keyClick(box, Qt::Key(key & ~int(Qt::ControlModifier)),
                            Qt::KeyboardModifiers(key & Qt::ControlModifier));
        }
        QCOMPARE(box->text(), text);
        QCOMPARE(note(blocksNote) + note(inodesNote), notes);
        QVERIFY(_widget->isContentValid());
        const DeviceQuota now = exported();
        QCOMPARE(now.softBlockLimit.bytes, 100 * GiB);
        QCOMPARE(now.softBlockLimit.value, 100.0);
        QCOMPARE(now.hardBlockLimit.bytes, 1234567 * KiB);
        QCOMPARE(now.softInodeLimit, quint64(5000000000));
        QCOMPARE(now.hardInodeLimit, quint64(6000000000));
    }
}

/// What was typed for one account says nothing of the next.
void TestTypedLimits::anotherAccountHasItsOwnRead()
{
    for (const char *name : {SoftBlocks, SoftInodes}) {
        show(limits(GiB, 0, 5, 0));
        type(name, QStringLiteral("2"));
        leave(name);
        show(limits(100 * GiB, 0, 5000000000, 0));
        QCOMPARE(softBytes(exported()), 100 * GiB);
        QCOMPARE(exported().softInodeLimit, quint64(5000000000));
    }
}

void TestTypedLimits::decimalsOfOtherLanguages_data()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"C", "en_US", "de_DE", "fr_FR", "ar_EG"})
        QTest::newRow(language) << QString::fromLatin1(language);
}

void TestTypedLimits::decimalsOfOtherLanguages()
{
    QFETCH(QString, language);
    const QLocale before;
    QLocale::setDefault(QLocale(language));
    openEditor(&everybodyMay);
    for (const char *typed : {"1.5", "1,5", "1.50", "1,50"}) {
        show(limits(2 * GiB, 0));
        type(SoftBlocks, QString::fromLatin1(typed));
        leave(SoftBlocks);
        QVERIFY(_widget->isContentValid());
        QCOMPARE(softBytes(exported()), GiB + GiB / 2);
        show(limits(GiB + GiB / 2, 0));
        QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->value(), 1.5);
        // As its language writes it, the box takes it again.
        paste(SoftBlocks, find<QDoubleSpinBox>(SoftBlocks)->text());
        QVERIFY(_widget->isContentValid());
        QCOMPARE(softBytes(exported()), GiB + GiB / 2);
    }
    for (const char *typed : {"1.500", "1,500", "15 00"}) {
        show(limits(2 * GiB, 0));
        type(SoftBlocks, QString::fromLatin1(typed));
        leave(SoftBlocks);
        QVERIFY(!_widget->isContentValid());
        QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->text(), QString::fromLatin1(typed));
    }
    // Pasted as a whole.
    show(limits(2 * GiB, 0));
    paste(SoftBlocks, QStringLiteral("50 GB"));
    QCOMPARE(find<QDoubleSpinBox>(SoftBlocks)->text(), QStringLiteral("50 GB"));
    QVERIFY(!_widget->isContentValid());
    QLocale::setDefault(before);
}

void TestTypedLimits::theNotes_data()
{
    QTest::addColumn<quint64>("soft");
    QTest::addColumn<quint64>("hard");
    QTest::addColumn<quint64>("softFiles");
    QTest::addColumn<quint64>("hardFiles");
    QTest::addColumn<QString>("blocks");
    QTest::addColumn<QString>("files");
    const auto row = [](const char *name, const std::array<quint64, 4> &limits, const char *blocks, const char *files) {
        QTest::newRow(name) << limits[0] << limits[1] << limits[2] << limits[3] << QString::fromLatin1(blocks)
                            << QString::fromLatin1(files);
    };
    row("nothing odd", {GiB, 2 * GiB, 100, 200}, "", "");
    row("equal", {2 * GiB, 2 * GiB, 200, 200}, "", "");
    row("no limits", {0, 0, 0, 0}, "", "");
    row("only soft ones", {GiB, 0, 100, 0}, "", "");
    row("as much as is used", {3 * MiB / 2, 3 * MiB / 2, 17, 17}, "", "");
    row("below what is used", {MiB, MiB, 16, 16},
        "The soft limit is below what is used.\n"
        "The hard limit is below what is used: nothing can be added until enough is removed.",
        "The soft limit is below what is used.\n"
        "The hard limit is below what is used: nothing can be added until enough is removed.");
    row("hard below soft", {2 * GiB, GiB, 200, 100},
        "The hard limit is below the soft limit, which therefore never counts.",
        "The hard limit is below the soft limit, which therefore never counts.");
    row("rounded", {1264 * MiB, 0, 0, 0},
        "The soft limit is exactly 1,325,400,064 bytes (1264 MB). The box shows it rounded.", "");
    row("beyond", {0, 50 * GiB, 0, 5000000000},
        "The hard limit is 53,687,091,200 bytes (50 GB), which is more than the box can show.",
        "The hard limit is 5,000,000,000 files, which is more than the box can show.");
}

void TestTypedLimits::theNotes()
{
    QFETCH(quint64, soft);
    QFETCH(quint64, hard);
    QFETCH(quint64, softFiles);
    QFETCH(quint64, hardFiles);
    const auto isMarked = [this](const char *box) {
        const QList<QAction *> actions = find<QAbstractSpinBox>(box)->findChild<QLineEdit *>()->actions();
        return !actions.isEmpty() && actions.last()->isVisible();
    };
    show(limits(soft, hard, softFiles, hardFiles));
    QTEST(note(blocksNote), "blocks");
    QTEST(note(inodesNote), "files");
    QCOMPARE(find<QWidget>(blocksNote)->isVisible(), !note(blocksNote).isEmpty());
    QCOMPARE(isMarked(HardBlocks), note(blocksNote).contains(QStringLiteral("The hard limit is below")));

    // Numbers that are typed: no limits, and what becomes another number.
    show(limits(GiB, 0));
    unitOf(*_widget, SoftBlocks)->setCurrentIndex(MemorySizeTransfer::Bytes);
    const std::pair<const char *, const char *> typed[] = {
        {"0", "A soft limit of 0 is no limit."},
        {"500", "The soft limit is below 1024 bytes, the size of a block: that is no limit."},
        {"1023", "The soft limit is below 1024 bytes, the size of a block: that is no limit."},
        {"1024", "The soft limit is below what is used."},
        {"5000", "The soft limit is stored as 4,096 bytes (4 KB): in whole blocks of 1024 bytes."},
        {"4194304", ""}};
    for (const auto &[number, expected] : typed) {
        type(SoftBlocks, QString::fromLatin1(number));
        QCOMPARE(note(blocksNote), QString::fromLatin1(expected));
        QCOMPARE(isMarked(SoftBlocks), *expected != '\0');
        QVERIFY(_widget->isContentValid());
    }
}

void TestTypedLimits::theUsedFilesThatTheBoxCannotShow()
{
    DeviceQuota quota = limits(GiB, 2 * GiB);
    quota.usedInodes = 5000000000;
    show(quota);
    QCOMPARE(note(inodesNote), QStringLiteral("Used are 5,000,000,000 files, which is more than the box can show."));
    quota.usedInodes = 2147483647;
    show(quota);
    QCOMPARE(note(inodesNote), QString());
}

void TestTypedLimits::theDialogTakesAnySize_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<quint64>("bytes");
    QTest::addColumn<QString>("blocks");
    QTest::newRow("50 GB") << QStringLiteral("50 GB") << 50 * GiB
                           << QStringLiteral("53,687,091,200 bytes (50 GB), which is more than the box can show.");
    QTest::newRow("1.5 TiB") << QStringLiteral("1.5 TiB") << 1536 * GiB << QStringLiteral("(1536 GB)");
    QTest::newRow("500M") << QStringLiteral("500M") << 500 * MiB << QString();
    QTest::newRow("a block more") << QStringLiteral("1048577 KB") << GiB + KiB
                                  << QStringLiteral("1,073,742,848 bytes (1048577 KB). The box shows it rounded.");
    QTest::newRow("the most") << QStringLiteral("9007199254740991 KB") << Q_UINT64_C(9223372036854774784)
                              << QStringLiteral("9,223,372,036,854,774,784 bytes");
    QTest::newRow("none") << QStringLiteral("0") << quint64(0) << QString();
}

void TestTypedLimits::theDialogTakesAnySize()
{
    QFETCH(QString, typed);
    QFETCH(quint64, bytes);
    QFETCH(QString, blocks);
    show(limits(0, 0));
    AmountDialog *dialog = openDialog("_hardLimitBlocksAnyButton");
    QVERIFY(dialog);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Hard limit on space"));
    auto *line = dialog->findChild<QLineEdit *>();
    QCOMPARE(line->text(), QStringLiteral("0 B"));
    QCOMPARE(line->accessibleName(), QStringLiteral("Hard limit on space"));
    QTest::keyClicks(line, typed);
    QTest::keyClick(line, Qt::Key_Return);
    QTRY_VERIFY(!QApplication::activeModalWidget());

    QVERIFY(_widget->isContentChanged());
    QVERIFY(_widget->isContentValid());
    QCOMPARE(exported().hardBlockLimit.bytes, bytes);
    QCOMPARE(exported().hardBlockLimit.toBytes(), bytes);
    QCOMPARE(exported().softBlockLimit.bytes, quint64(0));
    QCOMPARE(checkBoxOf(*_widget, HardBlocks)->isChecked(), bytes != 0);
    QCOMPARE(find<QWidget>(HardBlocks)->isEnabled(), bytes != 0);
    QVERIFY2(note(blocksNote).contains(blocks), qPrintable(note(blocksNote)));
    QCOMPARE(note(blocksNote).isEmpty(), blocks.isEmpty());
    if (bytes == 50 * GiB)
        QCOMPARE(find<QDoubleSpinBox>(HardBlocks)->text(), QStringLiteral("3.00"));
}

void TestTypedLimits::theDialogTakesAnyNumberOfFiles()
{
    show(limits(0, 0, 7, 0));
    for (const auto &[typed, files] : {std::pair<const char *, quint64>{"10k", 10000},
                                       {"2.5M", 2500000},
                                       {"5000000000", 5000000000},
                                       {"9223372036854775807", Q_UINT64_C(9223372036854775807)}}) {
        AmountDialog *dialog = openDialog("_softLimitInodesAnyButton");
        QVERIFY(dialog);
        QTest::keyClicks(dialog->findChild<QLineEdit *>(), QString::fromLatin1(typed));
        QTest::keyClick(dialog, Qt::Key_Return);
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(exported().softInodeLimit, files);
    }
    QVERIFY(note(inodesNote).contains(QStringLiteral("9,223,372,036,854,775,807 files")));
}

void TestTypedLimits::theDialogRefuses_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("why");
    const auto row = [](const char *button, const char *typed, const char *why) {
        QTest::addRow("%s: %s", button, typed) << QStringLiteral("_softLimit%1AnyButton").arg(QLatin1String(button))
                                               << QString::fromLatin1(typed) << QString::fromLatin1(why);
    };
    row("Blocks", "", "Please type a size.");
    row("Blocks", "x", "Please type a size.");
    row("Blocks", "-1 GB", "This is no size.");
    row("Blocks", "1.500 GB", "This can be read as two numbers.");
    row("Blocks", "50 QB", "There is no such unit.");
    row("Blocks", "8 EB", "The kernel stores 9,223,372,036,854,774,784 bytes (9007199254740991 KB) at most.");
    row("Blocks", "9223372036854774785", "The kernel stores 9,223,372,036,854,774,784 bytes");
    row("Blocks", "99999999999999999999 EB", "The kernel stores 9,223,372,036,854,774,784 bytes");
    row("Blocks", "1023", "Less than one is no limit.");
    row("Blocks", "1", "Less than one is no limit.");
    row("Inodes", "", "Please type a number.");
    row("Inodes", "1 GB", "There is no such unit.");
    row("Inodes", "2.7", "This is no whole number of files.");
    row("Inodes", "9223372036854775808", "The kernel stores 9,223,372,036,854,775,807 files at most.");
}

void TestTypedLimits::theDialogRefuses()
{
    QFETCH(QString, button);
    QFETCH(QString, typed);
    QFETCH(QString, why);
    show(limits(GiB, 2 * GiB, 3, 4));
    AmountDialog *dialog = openDialog(qPrintable(button));
    QVERIFY(dialog);
    auto *line = dialog->findChild<QLineEdit *>();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, typed);
    const QString result = dialog->findChild<QLabel *>(QStringLiteral("_resultLabel"))->text();
    QVERIFY2(result.contains(why), qPrintable(result));
    QVERIFY(!dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->isEnabled());
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(QApplication::activeModalWidget(), dialog);
    QTest::keyClick(line, Qt::Key_Escape);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QVERIFY(!_widget->isContentChanged());
}

void TestTypedLimits::theDialogShowsWhatWillBeStored()
{
    show(limits(100 * GiB, 0));
    AmountDialog *dialog = openDialog("_softLimitBlocksAnyButton");
    QVERIFY(dialog);
    auto *line = dialog->findChild<QLineEdit *>();
    const auto *result = dialog->findChild<QLabel *>(QStringLiteral("_resultLabel"));
    QCOMPARE(line->text(), QStringLiteral("100 GB"));
    QCOMPARE(result->text(), QStringLiteral("107,374,182,400 bytes (100 GB)"));
    QTest::keyClicks(line, QStringLiteral("1500"));
    QCOMPARE(result->text(), QStringLiteral("Stored as 1,024 bytes (1 KB): a limit is a number of whole blocks of 1024 "
                                            "bytes."));
    QTest::keyClick(line, Qt::Key_Return);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QCOMPARE(softBytes(exported()), KiB);
}

void TestTypedLimits::theDialogCanBeLeft()
{
    show(limits(100 * GiB, 0));
    AmountDialog *dialog = openDialog("_softLimitBlocksAnyButton");
    QVERIFY(dialog);
    QTest::keyClicks(dialog->findChild<QLineEdit *>(), QStringLiteral("7 GB"));
    QTest::keyClick(dialog, Qt::Key_Escape);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QVERIFY(!_widget->isContentChanged());
    QCOMPARE(softBytes(exported()), 100 * GiB);
    // Closed to edits meanwhile, the page takes nothing.
    dialog = openDialog("_softLimitBlocksAnyButton");
    QTest::keyClicks(dialog->findChild<QLineEdit *>(), QStringLiteral("7 GB"));
    _widget->blockEditWidget(true);
    QSignalSpy refused(_widget.get(), &ViewEditElementWidget::refused);
    QTest::keyClick(dialog, Qt::Key_Return);
    QCOMPARE(softBytes(exported()), 100 * GiB);
    QCOMPARE(refused.size(), 1);
    QVERIFY(!refused.first().first().toString().isEmpty());
}

void TestTypedLimits::theDialogGoesWithItsDevice()
{
    show(limits(100 * GiB, 0));
    QVERIFY(openDialog("_softLimitBlocksAnyButton"));
    show(limits(90 * GiB, 0));
    QVERIFY2(QApplication::activeModalWidget(), "the same device was read again");
    _widget->currentDeviceChanged(QStringLiteral("/dev/vdb1"));
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(openDialog("_softLimitBlocksAnyButton"));
    _widget->setElement(nullptr);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestTypedLimits::whatIsTypedInTheDialogIsAnEdit()
{
    show(limits(100 * GiB, 0));
    QVERIFY(!_widget->isBeingEdited());
    AmountDialog *dialog = openDialog("_softLimitBlocksAnyButton");
    QTest::keyClicks(dialog->findChild<QLineEdit *>(), QStringLiteral("7 GB"));
    QVERIFY(_widget->isBeingEdited());
    // The list is read anew, and the account has another element.
    EditedElement again(_element->elementType(), _module.get());
    _widget->followTo(&again);
    QCOMPARE(QApplication::activeModalWidget(), dialog);
    UserData record = account({{QStringLiteral("/dev/vda1"), limits(90 * GiB, 0)}});
    _widget->afterSuccessfulRead(&again, &record);
    QTest::keyClick(dialog, Qt::Key_Return);
    QCOMPARE(softBytes(exported()), 7 * GiB);
    QVERIFY(_widget->isContentChanged());
    _widget->setElement(nullptr);
}

void TestTypedLimits::whatTheDialogTookIsEditedInTheBoxes()
{
    show(limits(GiB, 0));
    AmountDialog *dialog = openDialog("_softLimitBlocksAnyButton");
    QVERIFY(dialog);
    QTest::keyClicks(dialog->findChild<QLineEdit *>(), QStringLiteral("50 GB"));
    QTest::keyClick(dialog, Qt::Key_Return);
    QCOMPARE(softBytes(exported()), 50 * GiB);
    auto *box = find<QDoubleSpinBox>(SoftBlocks);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(softBytes(exported()), 2 * GiB);
    QCOMPARE(note(blocksNote), QString());
    QTest::keyClick(box, Qt::Key_Up);
    QCOMPARE(softBytes(exported()), 50 * GiB);
    QVERIFY(note(blocksNote).contains(QStringLiteral("(50 GB)")));
    type(SoftBlocks, QStringLiteral("1"));
    leave(SoftBlocks);
    QCOMPARE(softBytes(exported()), GiB);
}

int main(int argc, char *argv[])
{
    qputenv("LC_ALL", "en_US.UTF-8"); // numbers in groups
    const QApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    TestTypedLimits test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_typedlimits.moc"
