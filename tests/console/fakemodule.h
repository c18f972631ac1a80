// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>
#include <elementtask.h>
#include <listelementwidget.h>
#include <module.h>
#include <vieweditelementwidget.h>

#include <QLineEdit>
#include <QSemaphore>
#include <QTreeView>

/// A module such as a plug-in brings: a form with one line of text, and a list of more such forms. Its writes wait
/// until the test lets them go on.
class FakeModule : public Module
{
    Q_OBJECT

public:
    explicit FakeModule(QObject *parent);

    Element *form() const { return _form; }
    ContainerElement *list() const { return _list; }
    QLineEdit *line() const { return _line; }

    void performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra) override;

    QString stored = QStringLiteral("as read"); ///< what a write leaves and a read finds
    bool writesWait = false;
    bool writesFail = false;
    QSemaphore gate;
    int reads = 0;
    QString listFilter;
    QStringList listTitles = {QStringLiteral("alpha"), QStringLiteral("beta"), QStringLiteral("gamma")};

private:
    Element *_form;
    ContainerElement *_list;
    QLineEdit *_line;
};
