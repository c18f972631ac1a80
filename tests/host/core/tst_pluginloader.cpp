// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <element.h>
#include <module.h>
#include <moduletree.h>
#include <plugin.h>
#include <pluginloader.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace
{

using State = PluginRecord::State;

QString sampleFile(const QString &name)
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../tests/sample/") + name);
}

QString hostileFile(const QString &name)
{
    return sampleFile(QStringLiteral("hostile/%1.so").arg(name));
}

const QString noteFile = QStringLiteral("note/sample-note.so");

/// The local computer as the console brings it.
class ComputerModule : public Module
{
public:
    ComputerModule()
        : Module(QStringLiteral("LocalComputerModule"), nullptr)
    {
        new OrdinaryElement(QStringLiteral("LocalComputer"), QString(), QStringLiteral("Computer"), this,
                            Module::isAdministratorHierarchy, Element::Place::Top);
    }
};

bool setMode(const QString &path, mode_t mode)
{
    return chmod(QFile::encodeName(path).constData(), mode) == 0;
}

} // namespace

Q_DECLARE_METATYPE(PluginRecord::State)

class TestPluginLoader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void saysWhyAPluginIsNotAttached_data();
    void saysWhyAPluginIsNotAttached();
    void runsNoCodeOfAForeignPlugin();
    void keepsTheOutputOfPrograms();
    void attachesAGoodPlugin();
    void loadsAFolderInTheOrderOfItsNames();
    void goesOnAfterEveryBadPlugin();
    void refusesATakenModuleName();
    void refusesTheNameOfAWaitingModule();
    void passesOverALinkToALoadedLibrary();
    void missingFolderIsEmpty();
    void fileAsFolderIsBroken();
    void deletesThePluginsWithItself();
    void rootLoadsNothingThatOthersCanWrite_data();
    void rootLoadsNothingThatOthersCanWrite();
    void rootFollowsLinksBeforeItTrustsThem();
    void rootTrustsItsOwnBuildTree();

private:
    const PluginRecord &load(const QString &fileName);

    std::unique_ptr<ModuleTree> _tree;
    std::unique_ptr<ComputerModule> _computer;
    std::unique_ptr<PluginLoader> _loader;
};

void TestPluginLoader::init()
{
    _tree = std::make_unique<ModuleTree>();
    _computer = std::make_unique<ComputerModule>();
    _tree->addModule(_computer.get());
    _loader = std::make_unique<PluginLoader>(*_tree);
}

void TestPluginLoader::cleanup()
{
    _loader.reset();
    _computer.reset();
    _tree.reset();
}

const PluginRecord &TestPluginLoader::load(const QString &fileName)
{
    _loader->loadFile(fileName);
    return _loader->records().back();
}

void TestPluginLoader::saysWhyAPluginIsNotAttached_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<State>("state");
    QTest::addColumn<QString>("why"); // with the file's name for %1
    QTest::newRow("missing") << QStringLiteral("nosuchfile") << State::Broken << QStringLiteral("There is no file %1.");
    QTest::newRow("no library") << QStringLiteral("broken") << State::Broken << QStringLiteral("%1 is no plug-in: ");
    QTest::newRow("no plug-in") << QStringLiteral("plain") << State::Broken << QStringLiteral("%1 is no plug-in: ");
    QTest::newRow("missing symbol") << QStringLiteral("unresolved") << State::Broken
                                    << QStringLiteral("%1 cannot be loaded: Cannot load library %1: (%1: "
                                                      "undefined symbol: _Z24kraSampleMissingFunctionv)");
    QTest::newRow("another base class") << QStringLiteral("noplugin") << State::Broken
                                        << QStringLiteral(
                                               "%1 exports the class NoPlugin, which is not derived from Plugin.");
    QTest::newRow("another identifier") << QStringLiteral("foreign") << State::Foreign
                                        << QStringLiteral(
                                               "%1 is a plug-in for \"org.example.player/2.1\"; plug-ins for "
                                               "\"zel-admin-kra/0.0\" are loaded here.");
    QTest::newRow("exception in the constructor")
        << QStringLiteral("throwsinconstructor") << State::Threw
        << QStringLiteral("The constructor of the plug-in %1 threw an exception: no memory left for me");
    QTest::newRow("a number as exception")
        << QStringLiteral("throwsnumber") << State::Threw
        << QStringLiteral("The constructor of the plug-in %1 threw an exception: an exception without a text");
    QTest::newRow("exception in isValid()")
        << QStringLiteral("throwsinisvalid") << State::Threw
        << QStringLiteral("The plug-in %1 threw an exception when it was asked whether it can work here: "
                          "kra-no-such-program: could not be started: ");
    QTest::newRow("isValid() says no") << QStringLiteral("invalid") << State::Invalid
                                       << QStringLiteral("The plug-in %1 cannot work here: not found");
    QTest::newRow("two modules of one name")
        << QStringLiteral("samenames") << State::Invalid
        << QStringLiteral("The plug-in %1 brings the module \"TwiceModule\", and there is one of that name already.");
}

void TestPluginLoader::saysWhyAPluginIsNotAttached()
{
    QFETCH(QString, name);
    QFETCH(State, state);
    QFETCH(QString, why);
    const QString fileName = hostileFile(name);
    why.replace(QLatin1String("%1"), fileName);
    const PluginRecord &record = load(fileName);
    QCOMPARE(record.fileName, fileName);
    QCOMPARE(record.state, state);
    QVERIFY2(record.explanation.contains(why), qPrintable(record.explanation));
    QCOMPARE(_tree->modules().size(), std::size_t(1));
}

void TestPluginLoader::runsNoCodeOfAForeignPlugin()
{
    load(hostileFile(QStringLiteral("foreign")));
    QVERIFY(!qEnvironmentVariableIsSet("KRA_FOREIGN_CODE_RAN"));
}

void TestPluginLoader::keepsTheOutputOfPrograms()
{
    const PluginRecord invalid = load(hostileFile(QStringLiteral("invalid")));
    QCOMPARE(invalid.title, QStringLiteral("Invalid"));
    QCOMPARE(invalid.description, QStringLiteral("Needs what is not here"));
    QCOMPARE(invalid.moduleNames, QStringList{QStringLiteral("InvalidModule")});
    QCOMPARE(invalid.programOutput,
             QStringList{QStringLiteral("sh -c \"echo looking; echo not found >&2; exit 1\": exit code 1\nlooking\n"
                                        "not found")});
    const PluginRecord threw = load(hostileFile(QStringLiteral("throwsinisvalid")));
    QCOMPARE(threw.title, QStringLiteral("Throwing"));
    QCOMPARE(threw.programOutput.size(), 1);
    QVERIFY(threw.programOutput.constFirst().startsWith(QLatin1String("kra-no-such-program: ")));
}

void TestPluginLoader::attachesAGoodPlugin()
{
    const PluginRecord &record = load(sampleFile(noteFile));
    QVERIFY2(record.state == State::Attached, qPrintable(record.explanation));
    QCOMPARE(record.explanation, QString());
    QCOMPARE(record.title, QStringLiteral("Note"));
    QCOMPARE(record.description, QStringLiteral("Keeps a note on this computer"));
    QCOMPARE(record.moduleNames, QStringList{QStringLiteral("SampleNoteModule")});
    QCOMPARE(record.programOutput, QStringList());
    const Module *module = _tree->module(QStringLiteral("SampleNoteModule"));
    QVERIFY(module);
    QCOMPARE(module->attachedTo(), _computer.get());
    const TreeNode *computer = _computer->topElements().front().data();
    QCOMPARE(computer->childNodes().size(), 1);
    QCOMPARE(computer->childNodes().constFirst()->id(), QStringLiteral("SampleNoteElement"));
}

void TestPluginLoader::loadsAFolderInTheOrderOfItsNames()
{
    const QString folder = sampleFile(QStringLiteral("hostile"));
    _loader->loadFolder(folder);
    QStringList names;
    for (const PluginRecord &record : _loader->records()) {
        QCOMPARE(QFileInfo(record.fileName).path(), folder);
        names.append(QFileInfo(record.fileName).completeBaseName());
    }
    QCOMPARE(names, (QStringList{QStringLiteral("broken"), QStringLiteral("foreign"), QStringLiteral("invalid"),
                                 QStringLiteral("noplugin"), QStringLiteral("plain"), QStringLiteral("samenames"),
                                 QStringLiteral("throwsinconstructor"), QStringLiteral("throwsinisvalid"),
                                 QStringLiteral("throwsnumber"), QStringLiteral("unresolved")}));
}

void TestPluginLoader::goesOnAfterEveryBadPlugin()
{
    _loader->loadFolder(sampleFile(QStringLiteral("hostile")));
    QCOMPARE(_loader->records().size(), std::size_t(10));
    for (const PluginRecord &record : _loader->records())
        QVERIFY2(record.state != State::Attached, qPrintable(record.fileName));
    QCOMPARE(load(sampleFile(noteFile)).state, State::Attached);
}

void TestPluginLoader::refusesATakenModuleName()
{
    QCOMPARE(load(sampleFile(noteFile)).state, State::Attached);
    const Module *first = _tree->module(QStringLiteral("SampleNoteModule"));
    const QString twin = sampleFile(QStringLiteral("twin/sample-twin.so"));
    const PluginRecord &record = load(twin);
    QCOMPARE(record.state, State::Invalid);
    QCOMPARE(record.explanation, QStringLiteral("The plug-in %1 brings the module \"SampleNoteModule\", and there is "
                                                "one of that name already.")
                                     .arg(twin));
    QCOMPARE(_tree->module(QStringLiteral("SampleNoteModule")), first);
}

void TestPluginLoader::refusesTheNameOfAWaitingModule()
{
    _computer.reset();
    QCOMPARE(load(sampleFile(noteFile)).state, State::Attached);
    QCOMPARE(_tree->waitingModules().size(), std::size_t(1));
    QCOMPARE(load(sampleFile(QStringLiteral("twin/sample-twin.so"))).state, State::Invalid);
}

void TestPluginLoader::passesOverALinkToALoadedLibrary()
{
    QCOMPARE(load(sampleFile(noteFile)).state, State::Attached);
    const QTemporaryDir folder(sampleFile(QStringLiteral("links-XXXXXX")));
    QVERIFY(QFile::link(sampleFile(noteFile), folder.filePath(QStringLiteral("again.so"))));
    _loader->loadFolder(folder.path());
    QCOMPARE(_loader->records().size(), std::size_t(1));
    QVERIFY(_tree->module(QStringLiteral("SampleNoteModule")));
}

void TestPluginLoader::missingFolderIsEmpty()
{
    _loader->loadFolder(sampleFile(QStringLiteral("nosuchfolder")));
    QVERIFY(_loader->records().empty());
}

void TestPluginLoader::fileAsFolderIsBroken()
{
    const QString fileName = hostileFile(QStringLiteral("broken"));
    _loader->loadFolder(fileName);
    QCOMPARE(_loader->records().size(), std::size_t(1));
    QCOMPARE(_loader->records().front().state, State::Broken);
    QCOMPARE(_loader->records().front().explanation,
             QStringLiteral("%1 is not a folder that can be read.").arg(fileName));
}

void TestPluginLoader::deletesThePluginsWithItself()
{
    QCOMPARE(load(sampleFile(noteFile)).state, State::Attached);
    _loader.reset();
    QVERIFY(!_tree->module(QStringLiteral("SampleNoteModule")));
    QCOMPARE(_computer->topElements().front()->childNodes().size(), 0);
}

void TestPluginLoader::rootLoadsNothingThatOthersCanWrite_data()
{
    QTest::addColumn<int>("what"); // 0 the folder above, 1 the folder, 2 the file, 3 the file's owner
    QTest::addColumn<uint>("mode");
    QTest::addColumn<bool>("refused");
    QTest::addColumn<QString>("why");
    const QString everybody = QStringLiteral("can be written by everybody");
    const QString group = QStringLiteral("can be written by its group");
    QTest::newRow("nobody else") << 1 << 0755U << false << QString();
    QTest::newRow("folder, everybody") << 1 << 0777U << true << everybody;
    QTest::newRow("folder, group") << 1 << 0775U << true << group;
    QTest::newRow("folder, sticky") << 1 << 01777U << true << everybody;
    QTest::newRow("folder above, everybody") << 0 << 0777U << true << everybody;
    QTest::newRow("folder above, sticky") << 0 << 01777U << false << QString();
    QTest::newRow("file, everybody") << 2 << 0666U << true << everybody;
    QTest::newRow("file, group") << 2 << 0664U << true << group;
    QTest::newRow("file, owner") << 3 << 0644U << true << QStringLiteral("belongs to the user with the id 4711");
}

/// A plug-in that would be foreign, so that nothing is loaded by the test itself. As an ordinary user everything may be
/// loaded that can be read.
void TestPluginLoader::rootLoadsNothingThatOthersCanWrite()
{
    QFETCH(int, what);
    QFETCH(uint, mode);
    QFETCH(bool, refused);
    QFETCH(QString, why);
    const QTemporaryDir top;
    const QString folder = top.filePath(QStringLiteral("plugins"));
    QVERIFY(QDir().mkdir(folder) && setMode(folder, 0755));
    const QString file = folder + QStringLiteral("/foreign.so");
    QVERIFY(QFile::copy(hostileFile(QStringLiteral("foreign")), file) && setMode(file, 0644));
    const QStringList paths{top.path(), folder, file, file};
    QVERIFY(setMode(paths.at(what), mode));
    const bool isRoot = geteuid() == 0;
    if (isRoot && what == 3)
        QCOMPARE(chown(QFile::encodeName(file).constData(), 4711, 0), 0);

    _loader->loadFolder(folder);
    QCOMPARE(_loader->records().size(), std::size_t(1));
    const PluginRecord &record = _loader->records().front();
    QCOMPARE(record.state, isRoot && refused ? State::Refused : State::Foreign);
    if (record.state == State::Refused)
        QVERIFY2(record.explanation.contains(paths.at(what) + QLatin1Char(' ') + why), qPrintable(record.explanation));
}

void TestPluginLoader::rootFollowsLinksBeforeItTrustsThem()
{
    const QTemporaryDir open;
    QVERIFY(QFile::copy(hostileFile(QStringLiteral("foreign")), open.filePath(QStringLiteral("foreign.so"))));
    QVERIFY(setMode(open.path(), 0777));
    const QTemporaryDir closed;
    const QString link = closed.filePath(QStringLiteral("plugins"));
    QVERIFY(QFile::link(open.path(), link));
    _loader->loadFolder(link);
    QCOMPARE(_loader->records().size(), std::size_t(1));
    QCOMPARE(_loader->records().front().state, geteuid() == 0 ? State::Refused : State::Foreign);
}

void TestPluginLoader::rootTrustsItsOwnBuildTree()
{
    const QTemporaryDir open(sampleFile(QStringLiteral("open-XXXXXX")));
    QVERIFY(open.isValid());
    QVERIFY(QFile::copy(hostileFile(QStringLiteral("foreign")), open.filePath(QStringLiteral("foreign.so"))));
    QVERIFY(setMode(open.path(), 0777));
    _loader->loadFolder(open.path());
    QCOMPARE(_loader->records().size(), std::size_t(1));
    QCOMPARE(_loader->records().front().state, State::Foreign);
}

QTEST_MAIN(TestPluginLoader)
#include "tst_pluginloader.moc"
