// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pluginloader.h"

#include "module.h"
#include "moduletree.h"
#include "plugin.h"
#include "pluginplace.h"
#include "process.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QSet>

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>

#include <unistd.h>

namespace
{

using State = PluginRecord::State;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(PluginLoader)
};

/// Why a step went wrong, and what the plug-in is then.
struct Failure
{
    State state;
    QString why;
};
using Outcome = std::optional<Failure>;

void note(PluginRecord &record, const Failure &failure)
{
    record.state = failure.state;
    record.explanation = failure.why;
}

/// The text of the exception that leaves a step of the plug-in's own code. It is copied while the library that may hold
/// the exception's class is loaded; libraries are never unloaded.
std::optional<QString> thrownBy(const std::function<void()> &step)
{
    try {
        step();
    } catch (const std::exception &exception) {
        return QString::fromUtf8(exception.what());
    } catch (...) {
        return Texts::tr("an exception without a text");
    }
    return std::nullopt;
}

/// Of a library, or of a folder of them.
Outcome checkPlace(const QString &fileName, const QString &canonicalPath)
{
    if (geteuid() != 0 || PluginPlace::isInOwnBuildTree(canonicalPath))
        return std::nullopt;
    const QString why = PluginPlace::whyUnsafe(canonicalPath);
    if (why.isEmpty())
        return std::nullopt;
    return Failure{State::Refused, Texts::tr("Nothing is loaded from %1 with administrator rights, since another user "
                                             "could have changed it: %2.")
                                       .arg(fileName, why)};
}

/// One library on its way into the tree, by the steps that docs/writing-a-plugin.md names.
class Candidate
{
public:
    Candidate(PluginRecord &record, const QString &canonicalPath, const ModuleTree &tree)
        : _record(record)
        , _path(canonicalPath)
        , _library(canonicalPath)
        , _tree(tree)
    {}

    /// The plug-in, with all behind it but being attached; null where a step went wrong, which the record says then.
    std::unique_ptr<Plugin> goThrough();

private:
    Outcome checkPlace() { return ::checkPlace(_record.fileName, _path); }
    Outcome lookInto();
    Outcome load();
    Outcome construct();
    Outcome ask();
    Outcome compareNames();

    PluginRecord &_record;
    const QString _path;
    QPluginLoader _library;
    const ModuleTree &_tree;
    std::unique_ptr<Plugin> _plugin;
};

std::unique_ptr<Plugin> Candidate::goThrough()
{
    constexpr Outcome (Candidate::*steps[])() = {&Candidate::checkPlace, &Candidate::lookInto,
                                                 &Candidate::load,       &Candidate::construct,
                                                 &Candidate::ask,        &Candidate::compareNames};
    const ProcessRecorder recorder;
    Outcome failure;
    for (auto step = std::begin(steps); step != std::end(steps) && !failure; ++step)
        failure = (this->**step)();
    _record.programOutput = recorder.texts();
    if (!failure)
        return std::move(_plugin);
    note(_record, *failure);
    return nullptr;
}

/// Runs no line of it.
Outcome Candidate::lookInto()
{
    const QJsonObject metaData = _library.metaData();
    if (metaData.isEmpty())
        return Failure{State::Broken, Texts::tr("%1 is no plug-in: %2").arg(_record.fileName, _library.errorString())};
    const QString identifier = metaData.value(QLatin1String("IID")).toString();
    if (identifier == QLatin1String(KRA_PLUGIN_IID))
        return std::nullopt;
    return Failure{State::Foreign, Texts::tr("%1 is a plug-in for \"%2\"; plug-ins for \"%3\" are loaded here.")
                                       .arg(_record.fileName, identifier, QLatin1String(KRA_PLUGIN_IID))};
}

/// What the library lacks is found here, as a text, and not when the missing function is called.
Outcome Candidate::load()
{
    _library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (_library.load())
        return std::nullopt;
    return Failure{State::Broken, Texts::tr("%1 cannot be loaded: %2").arg(_record.fileName, _library.errorString())};
}

Outcome Candidate::construct()
{
    QObject *root = nullptr;
    if (const auto thrown = thrownBy([&] { root = _library.instance(); }))
        return Failure{
            State::Threw,
            Texts::tr("The constructor of the plug-in %1 threw an exception: %2").arg(_record.fileName, *thrown)};
    if (!root)
        return Failure{State::Broken, Texts::tr("%1 exports no class.").arg(_record.fileName)};
    _plugin.reset(qobject_cast<Plugin *>(root));
    if (!_plugin) {
        const std::unique_ptr<QObject> stranger(root);
        return Failure{State::Broken, Texts::tr("%1 exports the class %2, which is not derived from Plugin.")
                                          .arg(_record.fileName, QLatin1String(stranger->metaObject()->className()))};
    }
    _record.title = _plugin->title();
    _record.description = _plugin->description();
    for (const Module *module : _plugin->modules())
        _record.moduleNames.append(module->name());
    return std::nullopt;
}

Outcome Candidate::ask()
{
    bool isValid = false;
    if (const auto thrown = thrownBy([&] { isValid = _plugin->isValid(); }))
        return Failure{State::Threw,
                       Texts::tr("The plug-in %1 threw an exception when it was asked whether it can work here: %2")
                           .arg(_record.fileName, *thrown)};
    if (isValid)
        return std::nullopt;
    const QString why = _plugin->whyInvalid();
    return Failure{State::Invalid, why.isEmpty()
                                       ? Texts::tr("The plug-in %1 cannot work here.").arg(_record.fileName)
                                       : Texts::tr("The plug-in %1 cannot work here: %2").arg(_record.fileName, why)};
}

Outcome Candidate::compareNames()
{
    QSet<QString> taken;
    for (const std::vector<Module *> &modules : {_tree.modules(), _tree.waitingModules()}) {
        for (const Module *module : modules)
            taken.insert(module->name());
    }
    for (const QString &name : qAsConst(_record.moduleNames)) {
        if (taken.contains(name))
            return Failure{State::Invalid,
                           Texts::tr("The plug-in %1 brings the module \"%2\", and there is one of that name already.")
                               .arg(_record.fileName, name)};
        taken.insert(name);
    }
    return std::nullopt;
}

} // namespace

class PluginLoader::Private
{
public:
    explicit Private(ModuleTree &moduleTree)
        : tree(moduleTree)
    {}
    void load(PluginRecord &record, const QString &canonicalPath);

    ModuleTree &tree;
    std::vector<PluginRecord> records;
    std::vector<std::unique_ptr<Plugin>> plugins; // those attached
    QSet<QString> loadedPaths;                    // canonical, so that a link to a library is not a second one
};

void PluginLoader::Private::load(PluginRecord &record, const QString &canonicalPath)
{
    std::unique_ptr<Plugin> plugin = Candidate(record, canonicalPath, tree).goThrough();
    if (!plugin)
        return;
    for (Module *module : plugin->modules())
        tree.addModule(module);
    plugins.push_back(std::move(plugin));
    record.state = State::Attached;
}

PluginLoader::PluginLoader(ModuleTree &tree)
    : d(std::make_unique<Private>(tree))
{}

PluginLoader::~PluginLoader()
{
    while (!d->plugins.empty())
        d->plugins.pop_back(); // the last one first: it may rest on those before it
}

void PluginLoader::loadFolder(const QString &folder)
{
    const QFileInfo info(folder);
    if (!info.exists())
        return;
    PluginRecord refusal;
    refusal.fileName = folder;
    if (const Outcome failure = checkPlace(folder, info.canonicalFilePath())) {
        note(refusal, *failure);
        d->records.push_back(refusal);
        return;
    }
    const QDir dir(folder);
    if (!info.isDir() || !dir.isReadable()) {
        note(refusal, {State::Broken, Texts::tr("%1 is not a folder that can be read.").arg(folder)});
        d->records.push_back(refusal);
        return;
    }
    QStringList names = dir.entryList(QDir::Files, QDir::Unsorted);
    std::sort(names.begin(), names.end()); // the same order whatever the language
    for (const QString &name : qAsConst(names)) {
        if (QLibrary::isLibrary(name))
            loadFile(dir.filePath(name));
    }
}

void PluginLoader::loadFile(const QString &fileName)
{
    PluginRecord record;
    record.fileName = fileName;
    const QString canonicalPath = QFileInfo(fileName).canonicalFilePath();
    if (d->loadedPaths.contains(canonicalPath))
        return;
    if (canonicalPath.isEmpty()) {
        note(record, {State::Broken, Texts::tr("There is no file %1.").arg(fileName)});
    } else {
        d->loadedPaths.insert(canonicalPath);
        d->load(record, canonicalPath);
    }
    d->records.push_back(record);
}

const std::vector<PluginRecord> &PluginLoader::records() const
{
    return d->records;
}
