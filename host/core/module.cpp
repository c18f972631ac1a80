// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module.h"

#include "elementdata.h"
#include "elementeditor.h"

#include <QHash>
#include <QLoggingCategory>
#include <QPointer>

#include <algorithm>
#include <stdexcept>

#include <sys/capability.h>
#include <unistd.h>

namespace
{
Q_LOGGING_CATEGORY(logModule, "kra.module", QtWarningMsg)

bool hasSystemAdministrationCapability()
{
    const std::unique_ptr<std::remove_pointer_t<cap_t>, decltype(&cap_free)> capabilities(cap_get_proc(), cap_free);
    cap_flag_value_t value = CAP_CLEAR;
    return capabilities && cap_get_flag(capabilities.get(), CAP_SYS_ADMIN, CAP_EFFECTIVE, &value) == 0 &&
           value == CAP_SET;
}
} // namespace

class Module::Private
{
public:
    /// Type and role as they were at the insertion: what is asked of all editors need not wake each of them.
    struct Editor
    {
        ElementEditor *editor;
        QPointer<QObject> object; // null when the editor was deleted before its module
        QString elementType;
        int role;
    };

    QString name;
    QString attachName;
    Kind kind = RootKind;
    QHash<QString, QVariant> values;
    std::vector<Editor> editors;
    std::vector<NodePointer<Element>> topElements;
    Module *attachedTo = nullptr;
    std::vector<Module *> attachedModules;  // of all kinds
    std::vector<Module *> extendingModules; // those of kind 3 among them
};

Module::Module(const QString &name, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->name = name;
}

Module::~Module()
{
    // The derived part is gone: what asks this module from here on, like the supplements of its own elements, gets the
    // default handling, and the tree deletes them.
    if (d->kind == ExtendingKind && d->attachedTo)
        deleteSupplementsBelow(*d->attachedTo);
    for (const NodePointer<Element> &element : d->topElements)
        delete element.data();
    for (const Private::Editor &editor : d->editors) {
        if (editor.object)
            delete editor.editor;
    }
    setAttachedTo(nullptr);
    for (Module *module : d->attachedModules)
        module->d->attachedTo = nullptr;
}

void Module::deleteSupplementsBelow(const Module &extended) const
{
    std::vector<NodePointer<Element>> supplements;
    for (const NodePointer<Element> &top : extended.topElements()) {
        if (!top)
            continue;
        for (TreeNode *node : top->allChildNodes()) {
            auto *element = dynamic_cast<SupplementElement *>(node);
            if (element && element->module() == this)
                supplements.emplace_back(element);
        }
    }
    for (const NodePointer<Element> &supplement : supplements)
        delete supplement.data();
}

QString Module::name() const
{
    return d->name;
}

QString Module::attachName() const
{
    return d->attachName;
}

void Module::setAttachName(const QString &name)
{
    d->attachName = name;
}

Module::Kind Module::kind() const
{
    return d->kind;
}

void Module::setKind(Kind kind)
{
    d->kind = kind;
}

QVariant Module::getData(const QString &key) const
{
    return d->values.value(key);
}

void Module::setData(const QString &key, const QVariant &value)
{
    d->values.insert(key, value);
}

void Module::insertElementWidget(ElementEditor *editor)
{
    std::unique_ptr<ElementEditor> owned(editor); // until it has its place
    const QString type = editor->elementType();
    const int role = editor->role();
    if (elementWidget(type, role)) {
        const QString text = QStringLiteral("%1 has an editor of role %2 for %3 already");
        throw std::logic_error(text.arg(d->name, QString::number(role), type).toStdString());
    }
    d->editors.push_back({owned.release(), editor->object(), type, role});
}

void Module::connectElementWidgets()
{
    for (ElementEditor *editor : elementWidgets())
        editor->connectToModule(this);
}

std::vector<ElementEditor *> Module::elementWidgets() const
{
    std::vector<ElementEditor *> living;
    for (const Private::Editor &editor : d->editors) {
        if (editor.object)
            living.push_back(editor.editor);
    }
    return living;
}

ElementEditor *Module::elementWidget(const QString &elementType, int role) const
{
    const auto found = std::find_if(d->editors.cbegin(), d->editors.cend(), [&](const Private::Editor &editor) {
        return editor.object && editor.role == role && editor.elementType == elementType;
    });
    return found == d->editors.cend() ? nullptr : found->editor;
}

const std::vector<NodePointer<Element>> &Module::topElements() const
{
    return d->topElements;
}

void Module::registerTopElement(Element *element)
{
    d->topElements.emplace_back(element);
}

void Module::setAttachedTo(Module *module)
{
    const auto leave = [this](std::vector<Module *> &modules) {
        modules.erase(std::remove(modules.begin(), modules.end(), this), modules.end());
    };
    if (d->attachedTo) {
        leave(d->attachedTo->d->attachedModules);
        leave(d->attachedTo->d->extendingModules);
    }
    d->attachedTo = module;
    if (!module)
        return;
    module->d->attachedModules.push_back(this);
    if (d->kind == ExtendingKind)
        module->d->extendingModules.push_back(this);
}

Module *Module::attachedTo() const
{
    return d->attachedTo;
}

const std::vector<Module *> &Module::extendingModules() const
{
    return d->extendingModules;
}

bool Module::isAdministrator(const Module & /*module*/)
{
    return geteuid() == 0 || hasSystemAdministrationCapability();
}

bool Module::isAdministratorHierarchy(const Module &module)
{
    for (const Module *checked = &module; checked; checked = checked->attachedTo()) {
        if (!isAdministrator(*checked))
            return false;
    }
    return true;
}

void Module::performOperation(ContextOperation *operation, OperationType type, ElementData *data, int /*extra*/)
{
    const std::unique_ptr<ElementData> owned(type == OperationType::Write ? data : nullptr);
    qCInfo(logModule).noquote() << d->name << "is asked for operation" << static_cast<int>(type) << "on"
                                << operation->elementType();
}
