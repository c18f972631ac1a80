// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "moduletree.h"

#include "module.h"

#include <QLoggingCategory>

#include <algorithm>

namespace
{
Q_LOGGING_CATEGORY(logModuleTree, "kra.moduletree")

Element *firstElement(const Module &module)
{
    for (const NodePointer<Element> &element : module.topElements()) {
        if (element)
            return element.data();
    }
    return nullptr;
}

/// The first node of that type at or below `top`, in the order of the tree.
TreeNode *findType(TreeNode *top, const QString &type)
{
    if (top->id() == type)
        return top;
    const QVector<TreeNode *> below = top->allChildNodes();
    const auto found = std::find_if(below.cbegin(), below.cend(), [&](TreeNode *node) { return node->id() == type; });
    return found == below.cend() ? nullptr : *found;
}
} // namespace

/// The context of the connections to the modules: they may outlive the tree.
class ModuleTree::Private : public QObject
{
public:
    Module *placedModule(const QString &name) const;
    bool canPlace(const Module &module) const;
    void placeWhatCan();
    void place(Module *module);
    void hangElements(const Module &module);
    TreeNode *statedParent(const Module &module, const QString &type);
    TreeNode *ordinaryParent(const Module &module, const Element &element);
    void forget(QObject *module);

    std::vector<Module *> placed;
    std::vector<Module *> waiting;
    TreeNode root;
};

Module *ModuleTree::Private::placedModule(const QString &name) const
{
    const auto found =
        std::find_if(placed.cbegin(), placed.cend(), [&](Module *module) { return module->name() == name; });
    return found == placed.cend() ? nullptr : *found;
}

bool ModuleTree::Private::canPlace(const Module &module) const
{
    return module.attachName().isEmpty() || placedModule(module.attachName());
}

/// Each module that finds its place may be the one that others wait for.
void ModuleTree::Private::placeWhatCan()
{
    const auto next = [this] {
        return std::find_if(waiting.begin(), waiting.end(), [this](Module *module) { return canPlace(*module); });
    };
    for (auto it = next(); it != waiting.end(); it = next()) {
        Module *module = *it;
        waiting.erase(it);
        place(module);
    }
}

void ModuleTree::Private::place(Module *module)
{
    module->setAttachedTo(module->attachName().isEmpty() ? nullptr : placedModule(module->attachName()));
    placed.push_back(module);
    hangElements(*module);
}

void ModuleTree::Private::hangElements(const Module &module)
{
    std::vector<NodePointer<Element>> unhung = module.topElements();
    const auto hang = [&](const NodePointer<Element> &element, bool anywhere) {
        if (!element || element->parentNode())
            return true;
        TreeNode *parent = nullptr;
        if (!element->parentType().isEmpty())
            parent = statedParent(module, element->parentType());
        if (!parent && (anywhere || element->parentType().isEmpty()))
            parent = ordinaryParent(module, *element.data());
        if (parent)
            parent->append(element.data());
        return parent != nullptr;
    };

    // An element may belong under one that the same module made after it, so what was passed over is tried again.
    bool isAnyHung = true;
    while (isAnyHung) {
        const auto left = std::remove_if(unhung.begin(), unhung.end(),
                                         [&](const NodePointer<Element> &element) { return hang(element, false); });
        isAnyHung = left != unhung.end();
        unhung.erase(left, unhung.end());
    }
    for (const NodePointer<Element> &element : unhung) {
        qCWarning(logModuleTree).noquote() << module.name() << "has an element" << element->id() << "that belongs under"
                                           << element->parentType() << "but there is none";
        hang(element, true);
    }
}

TreeNode *ModuleTree::Private::statedParent(const Module &module, const QString &type)
{
    if (!module.attachedTo())
        return findType(&root, type);
    for (const NodePointer<Element> &top : module.attachedTo()->topElements()) {
        TreeNode *found = top ? findType(top.data(), type) : nullptr;
        if (found)
            return found;
    }
    return nullptr;
}

TreeNode *ModuleTree::Private::ordinaryParent(const Module &module, const Element &element)
{
    if (!module.attachedTo())
        return &root;
    TreeNode *parent = firstElement(module);
    if (parent == &element)
        parent = firstElement(*module.attachedTo());
    return parent ? parent : &root;
}

void ModuleTree::Private::forget(QObject *module)
{
    const auto drop = [module](std::vector<Module *> &modules) {
        modules.erase(std::remove(modules.begin(), modules.end(), module), modules.end());
    };
    drop(placed);
    drop(waiting);
    const auto homeless = std::stable_partition(placed.begin(), placed.end(), [](const Module *other) {
        return other->attachName().isEmpty() || other->attachedTo();
    });
    waiting.insert(waiting.end(), homeless, placed.end());
    placed.erase(homeless, placed.end());
    placeWhatCan();
}

ModuleTree::ModuleTree()
    : d(std::make_unique<Private>())
{}

ModuleTree::~ModuleTree() = default;

TreeNode *ModuleTree::rootNode()
{
    return &d->root;
}

void ModuleTree::addModule(Module *module)
{
    QObject::connect(module, &QObject::destroyed, d.get(), &Private::forget);
    d->waiting.push_back(module);
    d->placeWhatCan();
}

std::vector<Module *> ModuleTree::modules() const
{
    return d->placed;
}

Module *ModuleTree::module(const QString &name) const
{
    return d->placedModule(name);
}

std::vector<Module *> ModuleTree::waitingModules() const
{
    return d->waiting;
}
