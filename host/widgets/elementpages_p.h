// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "changesquestion.h"
#include "currentelement.h"
#include "elementpages.h"
#include "showneditors.h"
#include "taskmessages.h"

#include <QPointer>
#include <QTimer>

#include <optional>
#include <vector>

class MessageArea;
class PageBody;
class PageHeader;
class QProgressBar;
class ViewEditElementWidget;
struct TaskReport;

class ElementPages::Private
{
public:
    /// Keeps everything where it is while a dialog stands, and says how that ended.
    class Question
    {
    public:
        explicit Question(Private *of);
        Question(const Question &) = delete;
        Question &operator=(const Question &) = delete;
        ~Question();
        bool stays = true;

    private:
        Private *_d;
        QPointer<ElementPages> _alive;
    };
    /// The page is left when its changes have been applied.
    struct Leaving
    {
        NodePointer<Element> next;
        bool leadsNowhere; ///< to no page
    };

    explicit Private(ElementPages *pages);

    void show(Element *next);
    void update();
    void updateHeader();
    void updateTaskState();
    QString messageText() const;

    Element *frontElement() const;
    /// What is edited and not on its way to the machine.
    std::vector<ViewEditElementWidget *> unappliedEditors() const;
    ChangesAnswer ask();
    bool applyAll();
    void discard();
    bool leaveFor(Element *next);
    void goOnLeaving();
    void noteEnd(const TaskReport &task);
    void loseCurrent();
    void findAgain(Element *again);

    ElementPages *q;
    PageHeader *header;
    QProgressBar *busyBar;
    MessageArea *messageArea;
    PageBody *body;
    QTimer updateTimer; // one look however much changes in one turn of the event loop

    CurrentElement current;
    bool isAsking = false;
    ShownEditors editors;
    std::optional<Leaving> leaving;
    TaskMessages messages;
};
