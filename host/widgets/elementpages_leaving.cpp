// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "elementpages_p.h"
#include "pagebody.h"
#include "vieweditelementwidget.h"

#include <taskobserver.h>

#include <algorithm>
#include <utility>

ElementPages::Private::Question::Question(Private *of)
    : _d(of)
    , _alive(of->q)
{
    _d->isAsking = true;
    _d->current.setHeld(true);
}

ElementPages::Private::Question::~Question()
{
    if (!_alive)
        return;
    _d->isAsking = false;
    _d->current.setHeld(false);
    Q_EMIT _d->q->answered(stays);
}

std::vector<ViewEditElementWidget *> ElementPages::Private::unappliedEditors() const
{
    std::vector<ViewEditElementWidget *> unapplied = editors.edited();
    const auto isOnItsWay = [](const ElementWidget *editor) {
        return TaskObserver::instance()->isWriting(editor->element());
    };
    unapplied.erase(std::remove_if(unapplied.begin(), unapplied.end(), isOnItsWay), unapplied.end());
    return unapplied;
}

ChangesAnswer ElementPages::Private::ask()
{
    Question question(this);
    const QPointer<ElementPages> alive(q);
    const ChangesAnswer answer = askAboutChanges(q, current.element()->title());
    question.stays = answer == ChangesAnswer::Stay;
    return alive ? answer : ChangesAnswer::Stay;
}

/// False when one of them was refused: then the administrator has something to look at.
bool ElementPages::Private::applyAll()
{
    const std::vector<ViewEditElementWidget *> toApply = unappliedEditors();
    const std::vector<QPointer<ViewEditElementWidget>> present(toApply.begin(), toApply.end());
    Question question(this); // an editor may ask something of its own
    for (const QPointer<ViewEditElementWidget> &editor : present) {
        if (!editor)
            continue;
        editor->applyContentChanges();
        if (editor && editor->isContentChanged() && !TaskObserver::instance()->isWriting(editor->element())) {
            body->bringToFront(editor);
            return false;
        }
    }
    question.stays = false;
    return true;
}

/// What was typed must not be there when the editors are next seen.
void ElementPages::Private::discard()
{
    for (ViewEditElementWidget *editor : unappliedEditors())
        editor->setElement(nullptr);
}

/// The present page has changes. False when it stays, for now or altogether.
bool ElementPages::Private::leaveFor(Element *next)
{
    const NodePointer<Element> wanted(next);
    const NodePointer<Element> left(current.element());
    leaving.reset();
    if (!unappliedEditors().empty()) {
        const ChangesAnswer answer = ask();
        if (answer == ChangesAnswer::Stay)
            return false;
        if (answer == ChangesAnswer::Apply && (!left || !applyAll()))
            return false; // the page was replaced under the question, or has something to correct
        const bool isThere = wanted || !next;
        if (answer == ChangesAnswer::Discard) {
            editors.dropKeptEdits();
            if (isThere)
                discard();
            else
                q->revert();
        }
        if (!isThere)
            return false; // it went while the question stood
    }
    if (editors.edited().empty()) {
        current.forgetLost();
        show(next);
        return true;
    }
    leaving = Leaving{wanted, next == nullptr};
    updateTaskState();
    return false;
}

/// A task or an editor moved on, which may have been what the leaving waits for.
void ElementPages::Private::goOnLeaving()
{
    if (!leaving || isAsking)
        return;
    if (!editors.edited().empty()) {
        if (!unappliedEditors().empty())
            leaving.reset(); // it failed
        return;
    }
    const Leaving ends = *std::exchange(leaving, std::nullopt);
    if (ends.next || ends.leadsNowhere)
        show(ends.next.data());
    else
        updateTaskState();
}

void ElementPages::Private::noteEnd(const TaskReport &task)
{
    messages.note(task);
    goOnLeaving();
    updateTaskState();
    updateTimer.start();
    current.lookAgain();
}

void ElementPages::Private::loseCurrent()
{
    leaving.reset();
    editors.keepEdits();
    update();
}

void ElementPages::Private::findAgain(Element *again)
{
    if (!again && !current.element())
        Q_EMIT q->currentElementChanged(nullptr);
    else
        q->setCurrentElement(again);
}
