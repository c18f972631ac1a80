// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <element.h>
#include <module.h>
#include <moduletree.h>
#include <pluginloader.h>
#include <taskobserver.h>
#include <vieweditelementwidget.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

/// The sample plug-in's road from the library to the file, as a console takes it: through the framework alone.
class TestSamplePlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void hangsItsElementUnderTheComputer();
    void readsAndShows();
    void appliesWhatWasTyped();
    void saysWhatFailed();

private:
    void writeFile(const QByteArray &bytes) const;
    QByteArray fileBytes() const;
    void showNote();

    QTemporaryDir _dataFolder;
    std::unique_ptr<ModuleTree> _tree;
    std::unique_ptr<Module> _computer;
    std::unique_ptr<PluginLoader> _loader;
    Element *_note = nullptr;                 // owned by the tree
    ViewEditElementWidget *_editor = nullptr; // owned by the plug-in's module
    QPlainTextEdit *_edit = nullptr;          // owned by the editor
};

void TestSamplePlugin::initTestCase()
{
    QVERIFY(_dataFolder.isValid());
    qputenv("XDG_DATA_HOME", QFile::encodeName(_dataFolder.filePath(QStringLiteral("data"))));
}

void TestSamplePlugin::init()
{
    _tree = std::make_unique<ModuleTree>();
    _computer = std::make_unique<Module>(QStringLiteral("LocalComputerModule"), nullptr);
    new OrdinaryElement(QStringLiteral("LocalComputer"), QString(), QStringLiteral("Computer"), _computer.get(),
                        Module::isAdministratorHierarchy, Element::Place::Top);
    _tree->addModule(_computer.get());
    _loader = std::make_unique<PluginLoader>(*_tree);
    const QString samples = QCoreApplication::applicationDirPath() + QStringLiteral("/../tests/sample/");
    _loader->loadFolder(samples + QStringLiteral("hostile"));
    _loader->loadFolder(samples + QStringLiteral("note"));
    const PluginRecord &record = _loader->records().back(); // after all those that failed
    QVERIFY2(record.state == PluginRecord::State::Attached, qPrintable(record.explanation));

    const Module *module = _tree->module(QStringLiteral("SampleNoteModule"));
    _note = module->topElements().front().data();
    _editor = dynamic_cast<ViewEditElementWidget *>(_note->elementWidget(ElementEditor::MainRole));
    QVERIFY(_editor);
    _edit = _editor->findChild<QPlainTextEdit *>();
    QVERIFY(_edit);
}

void TestSamplePlugin::cleanup()
{
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    _loader.reset();
    _computer.reset();
    _tree.reset();
    QVERIFY(QDir(_dataFolder.filePath(QStringLiteral("data"))).removeRecursively());
}

void TestSamplePlugin::writeFile(const QByteArray &bytes) const
{
    QVERIFY(QDir().mkpath(_dataFolder.filePath(QStringLiteral("data"))));
    QFile file(_dataFolder.filePath(QStringLiteral("data/kra-sample-note.txt")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QByteArray TestSamplePlugin::fileBytes() const
{
    QFile file(_dataFolder.filePath(QStringLiteral("data/kra-sample-note.txt")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

void TestSamplePlugin::showNote()
{
    _editor->setElement(_note);
    _editor->show();
    QVERIFY(QTest::qWaitForWindowExposed(_editor));
    _editor->read();
    QVERIFY(_editor->isBlocked());
    QTRY_VERIFY(!_editor->isBlocked());
}

void TestSamplePlugin::hangsItsElementUnderTheComputer()
{
    QCOMPARE(_note->title(), QStringLiteral("Note"));
    QCOMPARE(_note->parentNode(), _computer->topElements().front().data());
}

void TestSamplePlugin::readsAndShows()
{
    writeFile("Grüße\nfrom here");
    const QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    showNote();
    QCOMPARE(_edit->toPlainText(), QStringLiteral("Grüße\nfrom here"));
    QVERIFY(!_editor->isContentChanged());
    QVERIFY(_note->record());
    const auto report = finished.first().first().value<TaskReport>();
    QCOMPARE(report.description, QStringLiteral("Read the note"));
    QCOMPARE(report.status, TaskDescription::Succeeded);
}

void TestSamplePlugin::appliesWhatWasTyped()
{
    showNote();
    QCOMPARE(_edit->toPlainText(), QString());
    QTest::keyClicks(_edit, QStringLiteral("remember"));
    QVERIFY(_editor->isContentChanged());
    const QSignalSpy details(TaskObserver::instance(), &TaskObserver::taskDetail);
    _editor->applyContentChanges();
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    QCOMPARE(fileBytes(), QByteArray("remember"));
    QVERIFY(!_editor->isContentChanged());
    QVERIFY(!_editor->isBlocked());
    QCOMPARE(details.size(), 1);
}

void TestSamplePlugin::saysWhatFailed()
{
    showNote();
    QVERIFY(QDir().mkpath(_dataFolder.filePath(QStringLiteral("data/kra-sample-note.txt")))); // no file can replace it
    QTest::keyClicks(_edit, QStringLiteral("lost"));
    const QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
    _editor->applyContentChanges();
    QTRY_VERIFY(!TaskObserver::instance()->isBusy());
    const auto report = finished.first().first().value<TaskReport>();
    QCOMPARE(report.status, TaskDescription::Failed);
    QVERIFY2(report.message.contains(QLatin1String("kra-sample-note.txt cannot be written: ")),
             qPrintable(report.message));
}

QTEST_MAIN(TestSamplePlugin)
#include "tst_sampleplugin.moc"
