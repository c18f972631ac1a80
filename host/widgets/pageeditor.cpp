// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pageeditor.h"

#include "elementwidget.h"

#include <QCoreApplication>

#include <algorithm>

std::vector<PageEditor> pageEditorsOf(Element *element)
{
    std::vector<PageEditor> editors;
    const auto add = [&editors](Element *shown, const QString &owner, const QString &title) {
        auto *editor = dynamic_cast<ElementWidget *>(shown->elementWidget(ElementEditor::MainRole));
        if (editor && editor->ownerType() == owner)
            editors.push_back({editor, shown, title.isEmpty() ? editor->windowTitle() : title});
    };
    add(element, QString(), QCoreApplication::translate("ElementPages", "General"));
    const auto own = std::ptrdiff_t(editors.size());
    const QVector<TreeNode *> supplements = element->supplementNodes();
    for (TreeNode *node : supplements)
        if (auto *supplement = dynamic_cast<Element *>(node))
            add(supplement, element->elementType(), QString());
    std::stable_sort(editors.begin() + own, editors.end(), [](const PageEditor &left, const PageEditor &right) {
        return left.editor->order() > right.editor->order();
    });
    return editors;
}

QString emptyPageText(const Element *element)
{
    if (!element)
        return QCoreApplication::translate("ElementPages", "Choose an entry of the tree to see its page.");
    if (element->childNodes().isEmpty())
        return QCoreApplication::translate("ElementPages", "There is nothing to set here.");
    return QCoreApplication::translate(
        "ElementPages", "There is nothing to set here.\nChoose one of the entries below it in the tree.");
}
