// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "elementpages.h"

#include "changesquestion.h"
#include "currentelement.h"
#include "messagearea.h"
#include "pagebody.h"
#include "pageeditor.h"
#include "pageheader.h"
#include "taskmessages.h"
#include "vieweditelementwidget.h"

#include <taskobserver.h>

#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
constexpr int busyBarHeight = 3;
} // namespace

class ElementPages::Private
{
public:
    struct Shown
    {
        PageEditor page;
        bool wasRead = false;
    };

    explicit Private(ElementPages *pages);

    void show(Element *next);
    void syncEditors();
    void readFrontEditor();
    void updateHeader();
    void updateTaskState();
    void update();

    Element *frontElement() const;
    std::vector<ElementWidget *> changedEditors() const;
    ChangesAnswer ask();
    bool applyAll();
    void loseCurrent();
    void findAgain(Element *again);

    ElementPages *q;
    PageHeader *header;
    QProgressBar *busyBar;
    MessageArea *messageArea;
    PageBody *body;
    QTimer updateTimer; // one look however much changes in one turn of the event loop

    CurrentElement current;
    bool hasLostChanges = false;
    bool isAsking = false;
    std::vector<Shown> shown;
    TaskMessages messages;
};

ElementPages::Private::Private(ElementPages *pages)
    : q(pages)
    , header(new PageHeader(pages))
    , busyBar(new QProgressBar(pages))
    , messageArea(new MessageArea(pages))
    , body(new PageBody(pages))
{
    busyBar->setObjectName(QStringLiteral("pageBusyBar"));
    busyBar->setRange(0, 0);
    busyBar->setTextVisible(false);
    busyBar->setFixedHeight(busyBarHeight);
    busyBar->setAccessibleName(ElementPages::tr("A task is under way"));
    QSizePolicy keepsItsRoom = busyBar->sizePolicy();
    keepsItsRoom.setRetainSizeWhenHidden(true);
    busyBar->setSizePolicy(keepsItsRoom);

    auto *column = new QVBoxLayout(pages);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(header);
    column->addWidget(busyBar);
    column->addWidget(messageArea);
    column->addWidget(body, 1);

    updateTimer.setSingleShot(true);
    updateTimer.setInterval(0);
    QObject::connect(&updateTimer, &QTimer::timeout, pages, [this] {
        update();
        readFrontEditor();
    });
    QObject::connect(&current, &CurrentElement::lost, pages, [this] { loseCurrent(); });
    QObject::connect(&current, &CurrentElement::found, pages, [this](Element *again) { findAgain(again); });
    QObject::connect(&current, &CurrentElement::changed, pages, [this] { updateTimer.start(); });
}

void ElementPages::Private::show(Element *next)
{
    current.set(next);
    if (next)
        next->requestSupplements();
    update();
    Q_EMIT q->currentElementChanged(current.element());
    readFrontEditor();
}

void ElementPages::Private::update()
{
    syncEditors();
    updateHeader();
    updateTaskState();
    Q_EMIT q->actionsChanged();
}

void ElementPages::Private::syncEditors()
{
    Element *at = current.element();
    const std::vector<PageEditor> wanted = at ? pageEditorsOf(at) : std::vector<PageEditor>();
    std::vector<Shown> before;
    before.swap(shown);
    const auto find = [](auto &list, const PageEditor &page) {
        return std::find_if(list.begin(), list.end(),
                            [&page](const Shown &each) { return each.page.editor == page.editor; });
    };
    for (const PageEditor &page : wanted) {
        const auto known = find(before, page);
        const bool isKnown = known != before.end();
        shown.push_back({page, isKnown && known->wasRead && known->page.element.data() == page.element.data()});
        if (page.element.data() != at)
            current.watchSupplement(page.element.data());
        if (isKnown)
            continue;
        QObject::connect(page.editor, &ElementWidget::contentChanged, q, &ElementPages::actionsChanged);
        QObject::connect(page.editor, &ElementWidget::elementContextOperationChanged, q, &ElementPages::actionsChanged);
        QObject::connect(page.editor, &QObject::destroyed, q, [this] { updateTimer.start(); });
        if (const auto *form = qobject_cast<const ViewEditElementWidget *>(page.editor))
            QObject::connect(form, &ViewEditElementWidget::editableChanged, q, &ElementPages::actionsChanged);
    }
    for (const Shown &each : before)
        if (each.page.editor && find(shown, each.page) == shown.end())
            QObject::disconnect(each.page.editor, nullptr, q, nullptr);

    body->setEditors(wanted, emptyPageText(at));
}

void ElementPages::Private::readFrontEditor()
{
    // Showing a record may open a dialog, during which all this changes.
    const Element *at = current.element();
    const std::vector<Shown> present = shown;
    for (const Shown &each : present) {
        if (each.page.editor && each.page.element)
            each.page.editor->setElement(each.page.element.data());
        if (current.element() != at)
            return;
    }
    ElementWidget *front = body->frontEditor();
    const auto toRead = std::find_if(shown.begin(), shown.end(), [front](const Shown &each) {
        return front && each.page.editor == front && each.page.element && !each.wasRead;
    });
    if (toRead == shown.end())
        return;
    toRead->wasRead = true;
    if (!hasChanges(front))
        front->read();
}

void ElementPages::Private::updateHeader()
{
    const Element *element = current.element();
    header->setVisible(element != nullptr);
    if (!element)
        return;
    const ElementWidget *front = body->frontEditor();
    header->setContent(element->icon(), element->title(),
                       front && front->element() == frontElement() ? front->caption() : element->caption());
}

void ElementPages::Private::updateTaskState()
{
    const TaskObserver *observer = TaskObserver::instance();
    const auto isBusyWith = [observer](const Element *element) { return element && observer->isBusyWith(element); };
    const auto isBusy = [&isBusyWith](const Shown &each) { return isBusyWith(each.page.element.data()); };
    busyBar->setVisible(isBusyWith(current.element()) || std::any_of(shown.cbegin(), shown.cend(), isBusy));
    messageArea->setText(messages.text(frontElement()));
}

Element *ElementPages::Private::frontElement() const
{
    const ElementWidget *front = body->frontEditor();
    for (const Shown &each : shown)
        if (front && each.page.editor == front)
            return each.page.element.data();
    return current.element();
}

std::vector<ElementWidget *> ElementPages::Private::changedEditors() const
{
    std::vector<ElementWidget *> changed;
    for (const Shown &each : shown)
        if (hasChanges(each.page.editor))
            changed.push_back(each.page.editor);
    return changed;
}

ChangesAnswer ElementPages::Private::ask()
{
    isAsking = true;
    current.setHeld(true);
    const ChangesAnswer answer = askAboutChanges(q, current.element()->title());
    isAsking = false;
    current.setHeld(false);
    Q_EMIT q->answered(answer == ChangesAnswer::Stay);
    return answer;
}

bool ElementPages::Private::applyAll()
{
    for (ElementWidget *editor : changedEditors()) {
        const QPointer<ElementWidget> alive(editor);
        qobject_cast<ViewEditElementWidget *>(editor)->applyContentChanges();
        if (alive && hasChanges(alive)) { // refused: the administrator has something to correct
            body->bringToFront(alive);
            return false;
        }
    }
    return true;
}

void ElementPages::Private::loseCurrent()
{
    hasLostChanges = std::any_of(shown.cbegin(), shown.cend(), [](const Shown &each) {
        const auto *form = qobject_cast<const ViewEditElementWidget *>(each.page.editor);
        return form && form->isContentChanged() && !form->isBlocked();
    });
    update();
}

void ElementPages::Private::findAgain(Element *again)
{
    if (again && hasLostChanges)
        messages.add(again, false,
                     ElementPages::tr("This was read again while it was being edited. What had been typed is lost."));
    hasLostChanges = false;
    if (!again && !current.element())
        Q_EMIT q->currentElementChanged(nullptr);
    else
        q->setCurrentElement(again);
}

ElementPages::ElementPages(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    connect(d->messageArea, &MessageArea::dismissed, this, [this] {
        for (const Private::Shown &each : d->shown)
            d->messages.forget(each.page.element.data());
        d->messages.forget(d->current.element());
        d->updateTaskState();
    });
    connect(d->body, &PageBody::frontEditorChanged, this, [this] {
        d->readFrontEditor();
        d->updateHeader();
        d->updateTaskState();
        Q_EMIT actionsChanged();
    });
    const TaskObserver *observer = TaskObserver::instance();
    connect(observer, &TaskObserver::taskQueued, this, [this] { d->updateTaskState(); });
    connect(observer, &TaskObserver::taskFinished, this, [this](const TaskReport &task) {
        d->messages.note(task);
        d->updateTaskState();
        d->updateTimer.start();
        d->current.lookAgain();
    });
    d->update();
}

ElementPages::~ElementPages()
{
    disconnect(d->body, nullptr, this, nullptr);
    for (const Private::Shown &each : d->shown)
        if (each.page.editor)
            disconnect(each.page.editor, nullptr, this, nullptr);
}

Element *ElementPages::currentElement() const
{
    return d->current.element();
}

ElementWidget *ElementPages::currentEditor() const
{
    return d->body->frontEditor();
}

std::vector<ElementWidget *> ElementPages::editors() const
{
    std::vector<ElementWidget *> editors;
    for (const Private::Shown &each : d->shown)
        if (each.page.editor)
            editors.push_back(each.page.editor);
    return editors;
}

bool ElementPages::setCurrentElement(Element *element)
{
    if (element == d->current.element())
        return true;
    if (d->isAsking)
        return false;
    const NodePointer<Element> next(element);
    if (!d->changedEditors().empty()) {
        const ChangesAnswer answer = d->ask();
        if (answer == ChangesAnswer::Stay || (answer == ChangesAnswer::Apply && !d->applyAll()))
            return false;
        // What was typed must not be there when the editor is next seen.
        for (ElementWidget *editor : d->changedEditors())
            editor->setElement(nullptr);
        if (element && !next)
            return false; // it went while the question stood
    }
    d->show(element);
    return true;
}

bool ElementPages::mayLeave()
{
    if (d->isAsking)
        return false;
    if (d->changedEditors().empty())
        return true;
    const ChangesAnswer answer = d->ask();
    if (answer == ChangesAnswer::Discard)
        revert();
    return answer == ChangesAnswer::Discard || (answer == ChangesAnswer::Apply && d->applyAll());
}

bool ElementPages::isAsking() const
{
    return d->isAsking;
}

bool ElementPages::canApply() const
{
    return !d->changedEditors().empty();
}

bool ElementPages::canRefresh() const
{
    const Element *front = d->frontElement();
    return front && front->availableOperations() & (OperationType::Read | OperationType::ReadContent);
}

void ElementPages::apply()
{
    d->applyAll();
}

void ElementPages::revert()
{
    for (ElementWidget *editor : d->changedEditors()) {
        d->messages.forget(editor->element());
        qobject_cast<ViewEditElementWidget *>(editor)->reset();
    }
    d->updateTaskState();
}

void ElementPages::refresh()
{
    if (!canRefresh() || d->isAsking)
        return;
    if (!d->changedEditors().empty()) {
        const ChangesAnswer answer = d->ask();
        if (answer == ChangesAnswer::Apply)
            d->applyAll(); // what was written is read again by itself
        if (answer != ChangesAnswer::Discard)
            return;
        for (ElementWidget *editor : d->changedEditors())
            editor->setUnchanged();
    }
    Element *front = d->frontElement();
    d->messages.forget(front);
    d->updateTaskState();
    if (ElementWidget *editor = currentEditor()) {
        editor->refresh();
    } else if (front && front->availableOperations().testFlag(OperationType::ReadContent)) {
        if (auto *container = dynamic_cast<ContainerElement *>(front))
            container->setContent(ContainerElement::Content::Stale);
        front->performOperation(OperationType::ReadContent, nullptr, 0);
    } else if (front) {
        front->performOperation(OperationType::Read, nullptr, 0);
    }
}
