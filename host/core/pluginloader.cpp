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
#include <optional>

#include <unistd.h>

namespace
{

using State = PluginRecord::State;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(PluginLoader)
};

bool stop(PluginRecord &record, State state, const QString &why)
{
    record.state = state;
    record.explanation = why;
    return false;
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

bool isPlaceSafe(PluginRecord &record, const QString &canonicalPath)
{
    if (geteuid() != 0 || PluginPlace::isInOwnBuildTree(canonicalPath))
        return true;
    const QString why = PluginPlace::whyUnsafe(canonicalPath);
    if (why.isEmpty())
        return true;
    return stop(record, State::Refused,
                Texts::tr("Nothing is loaded from %1 with administrator rights, since another user could have changed "
                          "it: %2.")
                    .arg(record.fileName, why));
}

bool isForThisFramework(PluginRecord &record, const QPluginLoader &library)
{
    const QJsonObject metaData = library.metaData();
    if (metaData.isEmpty())
        return stop(record, State::Broken,
                    Texts::tr("%1 is no plug-in: %2").arg(record.fileName, library.errorString()));
    const QString identifier = metaData.value(QLatin1String("IID")).toString();
    if (identifier == QLatin1String(KRA_PLUGIN_IID))
        return true;
    return stop(record, State::Foreign,
                Texts::tr("%1 is a plug-in for \"%2\"; plug-ins for \"%3\" are loaded here.")
                    .arg(record.fileName, identifier, QLatin1String(KRA_PLUGIN_IID)));
}

std::unique_ptr<Plugin> construct(PluginRecord &record, QPluginLoader &library)
{
    QObject *root = nullptr;
    if (const auto thrown = thrownBy([&] { root = library.instance(); })) {
        stop(record, State::Threw,
             Texts::tr("The constructor of the plug-in %1 threw an exception: %2").arg(record.fileName, *thrown));
        return nullptr;
    }
    if (!root) {
        stop(record, State::Broken, Texts::tr("%1 exports no class.").arg(record.fileName));
        return nullptr;
    }
    std::unique_ptr<Plugin> plugin(qobject_cast<Plugin *>(root));
    if (!plugin) {
        stop(record, State::Broken,
             Texts::tr("%1 exports the class %2, which is not derived from Plugin.")
                 .arg(record.fileName, QLatin1String(root->metaObject()->className())));
        delete root;
        return nullptr;
    }
    record.title = plugin->title();
    record.description = plugin->description();
    for (const Module *module : plugin->modules())
        record.moduleNames.append(module->name());
    return plugin;
}

bool isValid(PluginRecord &record, Plugin &plugin)
{
    bool valid = false;
    if (const auto thrown = thrownBy([&] { valid = plugin.isValid(); }))
        return stop(record, State::Threw,
                    Texts::tr("The plug-in %1 threw an exception when it was asked whether it can work here: %2")
                        .arg(record.fileName, *thrown));
    if (!valid)
        return stop(record, State::Invalid, Texts::tr("The plug-in %1 cannot work here.").arg(record.fileName));
    return true;
}

bool areNamesFree(PluginRecord &record, const ModuleTree &tree)
{
    QSet<QString> taken;
    for (const std::vector<Module *> &modules : {tree.modules(), tree.waitingModules()}) {
        for (const Module *module : modules)
            taken.insert(module->name());
    }
    for (const QString &name : qAsConst(record.moduleNames)) {
        if (taken.contains(name))
            return stop(record, State::Invalid,
                        Texts::tr("The plug-in %1 brings the module \"%2\", and there is one of that name already.")
                            .arg(record.fileName, name));
        taken.insert(name);
    }
    return true;
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
    if (!isPlaceSafe(record, canonicalPath))
        return;
    QPluginLoader library(canonicalPath);
    // What the library lacks is found here, as a text, and not when the missing function is called.
    library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (!isForThisFramework(record, library))
        return;
    if (!library.load()) {
        stop(record, State::Broken, Texts::tr("%1 cannot be loaded: %2").arg(record.fileName, library.errorString()));
        return;
    }

    const ProcessRecorder recorder;
    std::unique_ptr<Plugin> plugin = construct(record, library);
    const bool isUsable = plugin && isValid(record, *plugin) && areNamesFree(record, tree);
    record.programOutput = recorder.texts();
    if (!isUsable)
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
    if (!isPlaceSafe(refusal, info.canonicalFilePath())) {
        d->records.push_back(refusal);
        return;
    }
    const QDir dir(folder);
    if (!info.isDir() || !dir.isReadable()) {
        stop(refusal, State::Broken, Texts::tr("%1 is not a folder that can be read.").arg(folder));
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
        stop(record, State::Broken, Texts::tr("There is no file %1.").arg(fileName));
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
