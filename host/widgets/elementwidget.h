// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <element.h>
#include <elementeditor.h>

#include <QWidget>

#include <memory>

/// An editor: the widget that shows elements of one type, one at a time. User-interface thread only.
///
/// Constructed by a module and handed to Module::insertElementWidget(), which owns it; the page that shows it only
/// borrows it.
class KRA_EXPORT ElementWidget : public QWidget, public ElementEditor
{
    Q_OBJECT

public:
    using AccessCheck = Element::AccessCheck;

    ElementWidget(Module *module, AccessCheck access, QWidget *parent = nullptr);
    ~ElementWidget() override;

    // ContextOperation
    QString elementType() const override;
    Module *module() const override;
    /// The operations of the shown element; none without one.
    OperationTypes availableOperations() const override;

    // ElementEditor
    int role() const override;
    Element *element() const override;
    QObject *object() override;
    void connectToModule(Module *module) override;
    bool isContentChanged() const override;
    void afterSuccessfulRead(Element *element, ElementData *record) override;
    void afterSuccessfulUpdate() override;
    void setUnchanged() override;

    /// The type of element whose pages carry this editor as a tab; empty for an editor that is a page of its own.
    QString ownerType() const;
    /// The place among the tabs of a page: larger comes first.
    int order() const;
    /// One line for the head of the page: the shown element's caption.
    virtual QString caption() const;

    /// Shows another element, or none. Does not read it.
    virtual void setElement(Element *element);
    /// The shown element was replaced by this one, of the same type and title: goes on with that, and with what was
    /// typed.
    virtual void followTo(Element *element);
    /// Makes the shown element's content be there: called by the host when the editor is to show its element, and by
    /// refresh(). What that takes is the editor's to decide.
    virtual void read();
    /// Reads whatever was read before: marks the content of a container stale, then read().
    virtual void refresh();

    /// Whether the process has the rights that this editor's operations need.
    bool isAccessible() const;

Q_SIGNALS:
    void elementContextOperationChanged(ContextOperation *operation);
    void contentChanged(bool changed);

protected:
    void setElementType(const QString &type);
    void setOwnerType(const QString &type);
    void setOrder(int order);
    void setContentChanged(bool changed);

private:
    class Private;
    std::unique_ptr<Private> d;
};
