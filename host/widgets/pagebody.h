// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "pageeditor.h"

#include <QStackedWidget>

#include <vector>

class ElementWidget;
class QLabel;
class QTabWidget;

/// The editors of a page: one alone, or several as tabs. It borrows them: whatever happens to the page, they live on,
/// and when one is deleted elsewhere its tab goes with the next setEditors().
class PageBody : public QStackedWidget
{
    Q_OBJECT

public:
    explicit PageBody(QWidget *parent = nullptr);
    ~PageBody() override;

    /// Editors that are here already stay untouched, with their focus. Without editors the text is shown.
    void setEditors(const std::vector<PageEditor> &editors, const QString &emptyText);
    /// Null when there is none.
    ElementWidget *frontEditor() const;
    void bringToFront(ElementWidget *editor);

Q_SIGNALS:
    void frontEditorChanged();

private:
    ElementWidget *editorAt(int tab) const;
    void giveBack(int tab);

    QTabWidget *_tabs;
    QLabel *_emptyLabel;
};
