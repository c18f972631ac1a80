// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "elementpages.h"

#include "elementpages_p.h"
#include "messagearea.h"
#include "pagebody.h"
#include "pageheader.h"
#include "vieweditelementwidget.h"

#include <taskobserver.h>

#include <QProgressBar>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
constexpr int busyBarHeight = 3;
} // namespace

ElementPages::Private::Private(ElementPages *pages)
    : q(pages)
    , header(new PageHeader(pages))
    , busyBar(new QProgressBar(pages))
    , messageArea(new MessageArea(pages))
    , body(new PageBody(pages))
    , editors(body)
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
        editors.read();
        goOnLeaving();
    });
    QObject::connect(&editors, &ShownEditors::stateChanged, pages, [this] {
        updateTaskState();
        Q_EMIT q->actionsChanged();
    });
    QObject::connect(&editors, &ShownEditors::editorDestroyed, pages, [this] { updateTimer.start(); });
    QObject::connect(&current, &CurrentElement::lost, pages, [this] { loseCurrent(); });
    QObject::connect(&current, &CurrentElement::found, pages, [this](Element *again) { findAgain(again); });
    QObject::connect(&current, &CurrentElement::changed, pages, [this] { updateTimer.start(); });
}

void ElementPages::Private::show(Element *next)
{
    leaving.reset();
    current.set(next);
    if (next)
        next->requestSupplements();
    update();
    if (editors.takeLost() && current.element())
        messages.add(current.element(), false,
                     ElementPages::tr("What was being edited is not there any more. What had been typed is lost."));
    updateTaskState();
    Q_EMIT q->currentElementChanged(current.element());
    editors.read();
}

void ElementPages::Private::update()
{
    Element *at = current.element();
    editors.set(at);
    for (Element *shown : editors.elements())
        if (shown != at)
            current.watchSupplement(shown);
    updateHeader();
    updateTaskState();
    Q_EMIT q->actionsChanged();
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
    const std::vector<Element *> shown = editors.elements();
    busyBar->setVisible(observer->isBusyWith(current.element()) ||
                        std::any_of(shown.begin(), shown.end(),
                                    [observer](const Element *each) { return observer->isBusyWith(each); }));
    const bool isNote = !messages.hasFailure(frontElement()) && editors.refusal().isEmpty();
    messageArea->setText(messageText(), isNote ? MessageArea::Kind::Note : MessageArea::Kind::Warning);
}

QString ElementPages::Private::messageText() const
{
    const Element *front = frontElement();
    QStringList texts = {messages.text(front), editors.refusal()};
    const auto isFront = [front](const ElementWidget *editor) { return editor->element() == front; };
    const std::vector<ViewEditElementWidget *> edited = editors.edited();
    if (messages.hasFailedUpdate(front) && std::any_of(edited.begin(), edited.end(), isFront))
        texts += ElementPages::tr("What was typed is still here and can be applied again. The computer may differ from "
                                  "it by now: Revert shows what the computer has.");
    if (leaving && leaving->next)
        texts +=
            ElementPages::tr("The changes are being applied. \"%1\" is shown after that.").arg(leaving->next->title());
    texts.removeAll(QString());
    return texts.join(QLatin1Char('\n'));
}

Element *ElementPages::Private::frontElement() const
{
    return body->frontEditor() ? editors.frontElement() : current.element();
}

ElementPages::ElementPages(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    connect(d->messageArea, &MessageArea::dismissed, this, [this] {
        for (const Element *shown : d->editors.elements())
            d->messages.forget(shown);
        d->messages.forget(d->current.element());
        d->editors.clearRefusals();
        d->updateTaskState();
    });
    connect(d->body, &PageBody::frontEditorChanged, this, [this] {
        d->editors.read();
        d->updateHeader();
        d->updateTaskState();
        Q_EMIT actionsChanged();
    });
    const TaskObserver *observer = TaskObserver::instance();
    connect(observer, &TaskObserver::taskQueued, this, [this] { d->updateTaskState(); });
    connect(observer, &TaskObserver::taskFinished, this, [this](const TaskReport &task) { d->noteEnd(task); });
    d->update();
}

ElementPages::~ElementPages()
{
    disconnect(d->body, nullptr, this, nullptr);
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
    return d->editors.all();
}

bool ElementPages::setCurrentElement(Element *element)
{
    if (element == d->current.element()) {
        d->leaving.reset();
        d->updateTaskState();
        return true;
    }
    if (d->isAsking)
        return false;
    if (!d->editors.edited().empty())
        return d->leaveFor(element);
    d->show(element);
    return true;
}

bool ElementPages::mayLeave()
{
    if (d->isAsking)
        return false;
    if (d->unappliedEditors().empty())
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
    const std::vector<ViewEditElementWidget *> edited = d->unappliedEditors();
    return std::any_of(edited.begin(), edited.end(),
                       [](const ViewEditElementWidget *editor) { return editor->isEditable(); });
}

bool ElementPages::canRefresh() const
{
    const Element *front = d->frontElement();
    return front && front->availableOperations() & (OperationType::Read | OperationType::ReadContent);
}

void ElementPages::apply()
{
    if (canApply() && !d->isAsking)
        d->applyAll();
}

void ElementPages::revert()
{
    d->leaving.reset();
    for (ViewEditElementWidget *editor : d->unappliedEditors()) {
        d->messages.forget(editor->element());
        editor->reset();
    }
    d->updateTaskState();
}

void ElementPages::refresh()
{
    if (!canRefresh() || d->isAsking)
        return;
    if (!d->unappliedEditors().empty()) {
        const QPointer<ElementPages> alive(this);
        const bool isFrontEdited = currentEditor() && currentEditor()->isContentChanged();
        const ChangesAnswer answer = d->ask();
        if (answer == ChangesAnswer::Stay || (answer == ChangesAnswer::Apply && !d->applyAll()) || !alive)
            return;
        if (answer == ChangesAnswer::Discard)
            revert();
        // What is reverted or written is read again by itself.
        if (answer == ChangesAnswer::Discard ? isFrontEdited : TaskObserver::instance()->isWriting(d->frontElement()))
            return;
    }
    Element *front = d->frontElement();
    d->messages.forget(front);
    d->editors.clearRefusals();
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
