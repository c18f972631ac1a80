// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "toys.h"

#include <elementpages.h>

#include <QSignalSpy>
#include <QTest>

/// Pages over a list of two, anna and bob, each with a page and a tab.
struct PageFixture
{
    void setUp()
    {
        using namespace toys;
        module = std::make_unique<ToyModule>();
        list = std::make_unique<Container>(module.get(), QStringLiteral("list"));
        list->setContent(ContainerElement::Content::Read);
        anna = new Ordinary(module.get(), QStringLiteral("anna"));
        bob = new Ordinary(module.get(), QStringLiteral("bob"));
        anna->setText(QStringLiteral("about anna"));
        bob->setText(QStringLiteral("about bob"));
        list->append({anna, bob});
        editor = new Editor(module.get());
        module->insertElementWidget(editor);
        extraEditor = new Editor(module.get(), mayAll, QStringLiteral("ToySupplement"));
        extraEditor->setOwnerType(QStringLiteral("Toy"));
        extraEditor->setOrder(800);
        extraEditor->setWindowTitle(QStringLiteral("Extra"));
        module->insertElementWidget(extraEditor);
        module->connectElementWidgets();
        pages = std::make_unique<ElementPages>();
        pages->resize(600, 400);
        pages->show();
        QVERIFY(QTest::qWaitForWindowExposed(pages.get()));
    }
    void takeDown()
    {
        QTRY_VERIFY(!TaskObserver::instance()->isBusy());
        pages.reset();
        list.reset();
        module.reset();
    }
    /// Of anna.
    void runTask(TaskDescription::TaskStatus status, const QString &message, bool changes, bool isNote = false) const
    {
        QSignalSpy finished(TaskObserver::instance(), &TaskObserver::taskFinished);
        auto *task = new toys::ToyTask(anna, status, message, changes);
        task->setMessageNote(isNote);
        TaskObserver::instance()->performTask(task);
        QTRY_COMPARE(finished.count(), 1);
    }
    template<typename Widget>
    Widget *part(const char *name) const
    {
        return pages->findChild<Widget *>(QLatin1String(name));
    }

    std::unique_ptr<toys::ToyModule> module;
    std::unique_ptr<toys::Container> list;
    toys::Ordinary *anna = nullptr;
    toys::Ordinary *bob = nullptr;
    toys::Editor *editor = nullptr;
    toys::Editor *extraEditor = nullptr;
    std::unique_ptr<ElementPages> pages;
};
