// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "pageeditor.h"

#include <QObject>

#include <utility>
#include <vector>

class PageBody;
class ViewEditElementWidget;

/// The editors of the page that is shown: which they are, which of them was read, and which was edited.
class ShownEditors : public QObject
{
    Q_OBJECT

public:
    explicit ShownEditors(PageBody *body);
    ~ShownEditors() override;

    /// Brings the editors of that element's page into the body; of none where it is null. What was kept is handed to
    /// those whose element has the type and title of the one that went; the rest of it is lost.
    void set(Element *element);
    /// Shows each editor its element, and reads the one in front when it is there for the first time. Showing a record
    /// may open a dialog, during which all this changes; the rest is left to whatever changed it.
    void read();

    std::vector<ElementWidget *> all() const;
    /// The elements of the editors.
    std::vector<Element *> elements() const;
    /// The element of the editor in front; null without one.
    Element *frontElement() const;
    /// The editors whose content is marked changed.
    std::vector<ViewEditElementWidget *> edited() const;

    /// The elements are going. What was typed is kept for the elements that may follow them.
    void keepEdits();
    /// Whether something that was kept was lost since this was asked last.
    bool takeLost() { return std::exchange(_isLost, false); }
    /// What was kept is not wanted any more.
    void dropKeptEdits();

    /// Why the last Apply of the editor in front came to nothing; empty when it did not.
    QString refusal() const;
    void clearRefusals();

Q_SIGNALS:
    /// What can be done with the editors changed.
    void stateChanged();
    /// An editor was deleted elsewhere.
    void editorDestroyed();

private:
    struct Shown
    {
        PageEditor page;
        QString elementTitle;
        bool wasRead = false;
        QString refusal;
    };
    struct Kept
    {
        QPointer<ElementWidget> editor;
        QString elementTitle;
    };

    const Shown *front() const;
    void restoreEdits();
    void connectTo(ElementWidget *editor);
    void noteRefusal(const ElementWidget *editor, const QString &why);

    PageBody *_body;
    std::vector<Shown> _shown;
    std::vector<Kept> _kept;
    bool _isLost = false;
};
