// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>

#include <QWidget>

#include <memory>
#include <vector>

class ElementWidget;

/// Shows the page of the current element: its caption, its main editor and the tabs of its supplements, what the last
/// task said of it, and that a task is under way. It asks before changed content is left.
///
/// Editors are borrowed: their module owns them, and a page gives them back when it shows another element. A page that
/// is shown reads its element anew, a tab when it first comes to the front. When the current element goes because its
/// container was read again, the element of the same type and title takes its place, and with it what was typed; else
/// the nearest one above it.
/// User-interface thread only.
class KRA_EXPORT ElementPages : public QWidget
{
    Q_OBJECT

public:
    explicit ElementPages(QWidget *parent = nullptr);
    ~ElementPages() override;

    Element *currentElement() const;
    /// The editor of the tab in front; null when the element has none.
    ElementWidget *currentEditor() const;
    /// All editors of the current page, main editor first, then by their order.
    std::vector<ElementWidget *> editors() const;

    /// Shows an element's page, or none. Asks first when the present page has changes; false when that page stays.
    ///
    /// Changes that are applied keep their page until the update has ended: the other page follows by itself when it
    /// succeeded. Whatever is chosen meanwhile takes the place of what was chosen before; choosing the present page
    /// takes the leaving back, and so does an update that fails.
    bool setCurrentElement(Element *element);
    /// Asks the same before the window closes. Where changes are discarded, the page is read again. True also while
    /// changes are being applied: whoever closes waits for the end of that.
    bool mayLeave();

    /// Whether that question stands, or another one that Apply asks. Until it is answered nothing can be left, and
    /// nobody is asked again.
    bool isAsking() const;

    /// Whether there are changes to apply or to revert.
    bool canApply() const;
    bool canRefresh() const;
    void apply();
    void revert();
    /// Reads the element of the page again; asks first what becomes of changes.
    void refresh();

Q_SIGNALS:
    /// Another element became current, for whatever reason; null for none. A view of the tree follows it.
    void currentElementChanged(Element *element);
    /// The question was answered; `stays`: the page stays current. The action that raised it follows.
    void answered(bool stays);
    /// What apply(), revert() and refresh() would do changed.
    void actionsChanged();

private:
    class Private;
    std::unique_ptr<Private> d;
};
