// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "showneditors.h"

#include "pagebody.h"
#include "vieweditelementwidget.h"

#include <algorithm>
#include <utility>

ShownEditors::ShownEditors(PageBody *body)
    : _body(body)
{}

ShownEditors::~ShownEditors()
{
    for (const Shown &each : _shown)
        if (each.page.editor)
            disconnect(each.page.editor, nullptr, this, nullptr);
}

void ShownEditors::set(Element *element)
{
    const std::vector<PageEditor> wanted = element ? pageEditorsOf(element) : std::vector<PageEditor>();
    std::vector<Shown> before;
    before.swap(_shown);
    const auto find = [](auto &list, const PageEditor &page) {
        return std::find_if(list.begin(), list.end(),
                            [&page](const Shown &each) { return each.page.editor == page.editor; });
    };
    for (const PageEditor &page : wanted) {
        const auto known = find(before, page);
        const bool isKnown = known != before.end();
        Shown shown{page, page.element->title(), false, QString()};
        if (isKnown && known->page.element == page.element) {
            shown.wasRead = known->wasRead;
            shown.refusal = known->refusal;
        }
        _shown.push_back(shown);
        if (!isKnown)
            connectTo(page.editor);
    }
    for (const Shown &each : before)
        if (each.page.editor && find(_shown, each.page) == _shown.end())
            disconnect(each.page.editor, nullptr, this, nullptr);
    if (element)
        restoreEdits(); // before the body brings an editor to the front, which shows it its element
    _body->setEditors(wanted, emptyPageText(element));
}

void ShownEditors::connectTo(ElementWidget *editor)
{
    connect(editor, &ElementWidget::contentChanged, this, [this, editor](bool changed) {
        if (!changed)
            noteRefusal(editor, QString());
        Q_EMIT stateChanged();
    });
    connect(editor, &ElementWidget::elementContextOperationChanged, this, &ShownEditors::stateChanged);
    connect(editor, &QObject::destroyed, this, &ShownEditors::editorDestroyed);
    if (const auto *form = qobject_cast<const ViewEditElementWidget *>(editor)) {
        connect(form, &ViewEditElementWidget::editableChanged, this, &ShownEditors::stateChanged);
        connect(form, &ViewEditElementWidget::refused, this, [this, editor](const QString &why) {
            noteRefusal(editor, why);
            Q_EMIT stateChanged();
        });
    }
}

void ShownEditors::read()
{
    const auto isSame = [](const std::vector<Shown> &left, const std::vector<Shown> &right) {
        return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                          [](const Shown &one, const Shown &other) {
                              return one.page.editor == other.page.editor && one.page.element == other.page.element;
                          });
    };
    const std::vector<Shown> present = _shown;
    for (const Shown &each : present) {
        if (each.page.editor && each.page.element)
            each.page.editor->setElement(each.page.element.data());
        if (!isSame(present, _shown))
            return;
    }
    const Shown *shown = front();
    if (!shown || !shown->page.element || shown->wasRead)
        return;
    _shown[std::size_t(shown - _shown.data())].wasRead = true;
    if (!shown->page.editor->isContentChanged())
        shown->page.editor->read();
}

std::vector<ElementWidget *> ShownEditors::all() const
{
    std::vector<ElementWidget *> editors;
    for (const Shown &each : _shown)
        if (each.page.editor)
            editors.push_back(each.page.editor);
    return editors;
}

std::vector<Element *> ShownEditors::elements() const
{
    std::vector<Element *> elements;
    for (const Shown &each : _shown)
        if (each.page.element)
            elements.push_back(each.page.element.data());
    return elements;
}

const ShownEditors::Shown *ShownEditors::front() const
{
    const ElementWidget *editor = _body->frontEditor();
    const auto found = std::find_if(_shown.begin(), _shown.end(),
                                    [editor](const Shown &each) { return editor && each.page.editor == editor; });
    return found == _shown.end() ? nullptr : &*found;
}

Element *ShownEditors::frontElement() const
{
    const Shown *shown = front();
    return shown ? shown->page.element.data() : nullptr;
}

std::vector<ViewEditElementWidget *> ShownEditors::edited() const
{
    std::vector<ViewEditElementWidget *> edited;
    for (const Shown &each : _shown) {
        auto *form = qobject_cast<ViewEditElementWidget *>(each.page.editor);
        if (form && form->isContentChanged() && form->element())
            edited.push_back(form);
    }
    return edited;
}

void ShownEditors::keepEdits()
{
    for (const Shown &each : _shown) {
        const auto *form = qobject_cast<const ViewEditElementWidget *>(each.page.editor);
        if (form && form->isBeingEdited())
            _kept.push_back({each.page.editor, each.elementTitle});
    }
}

void ShownEditors::restoreEdits()
{
    const std::vector<Kept> kept = std::exchange(_kept, {});
    for (const Kept &each : kept) {
        if (!each.editor)
            continue;
        const auto again = std::find_if(_shown.begin(), _shown.end(), [&each](const Shown &shown) {
            return shown.page.editor == each.editor && shown.page.element && shown.elementTitle == each.elementTitle;
        });
        if (again == _shown.end()) {
            each.editor->setElement(nullptr);
            _isLost = true;
        } else {
            each.editor->followTo(again->page.element.data());
        }
    }
}

void ShownEditors::dropKeptEdits()
{
    for (const Kept &each : std::exchange(_kept, {}))
        if (each.editor)
            each.editor->setElement(nullptr);
}

QString ShownEditors::refusal() const
{
    const Shown *shown = front();
    return shown ? shown->refusal : QString();
}

void ShownEditors::clearRefusals()
{
    for (Shown &each : _shown)
        each.refusal.clear();
}

void ShownEditors::noteRefusal(const ElementWidget *editor, const QString &why)
{
    for (Shown &each : _shown)
        if (each.page.editor == editor)
            each.refusal = why;
}
