// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "elementwidget.h"

#include <QPointer>

#include <memory>

/// An editor of one element's record: it shows it, lets it be changed, and exports a new one.
///
/// It starts blocked; the end of afterSuccessfulRead() lifts the block. So a page for which no usable record came
/// stays blocked.
///
/// While it cannot be edited (it is blocked, or the element cannot be written, or the process lacks the rights), the
/// editor's direct child widgets are disabled. What navigates rather than edits, such as the choice of a device, stays
/// usable: give those widgets the dynamic property "kraNavigation" (true). A marked widget that has a layout, and every
/// QScrollArea, is a frame: the widgets in it are looked at in the same way. An editor enables and disables what is
/// inside its disabled children as it likes, and navigation widgets too, but not those children themselves.
class KRA_EXPORT ViewEditElementWidget : public ElementWidget
{
    Q_OBJECT

public:
    using ElementWidget::ElementWidget;

    /// Also blocks editing until the new element's record comes. An element that has a record already shows it at once,
    /// through afterSuccessfulRead().
    void setElement(Element *element) override;
    /// Blocks editing and performs OperationType::Read on the element.
    void read() override;

    /// Overrides show the record and call this one last: it ends the block and clears the changed mark.
    void afterSuccessfulRead(Element *element, ElementData *record) override;

    /// Whether what is typed can be applied. This one: no edited line that its own validator rejects. Text that the
    /// editor itself has set is not judged, nor are disabled lines.
    virtual bool isContentValid() const;
    /// A new record made from the form. Null when there is nothing to apply.
    virtual std::unique_ptr<ElementData> exportElementData() const;
    /// Apply: checks isContentValid(), exports, and performs OperationType::Write on the element. Editing is blocked
    /// until the element was read again. Content that is not valid stays as it is; the first rejected line gets the
    /// focus and says so. Where nothing is exported, nothing is changed any more. Does nothing while the content cannot
    /// be edited.
    virtual void applyContentChanges();
    /// Revert: a new read.
    virtual void reset();

    /// Stops editing while the page is refilled or applied; what is shown stays readable.
    virtual void blockEditWidget(bool block);
    bool isBlocked() const { return _blocked; }
    /// Not blocked, and the shown element can be written with the rights that the process has.
    bool isEditable() const;

    /// Marks the content changed; the host then offers Apply and Revert. Overrides call this one. Ignored while the
    /// content cannot be edited, so that filling the form changes nothing.
    virtual void changeContent();

Q_SIGNALS:
    /// Said after each block, each end of one, and each change of the element.
    void editableChanged(bool editable);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void updateEditable();

    bool _blocked = true;
    QPointer<QWidget> _focusBeforeBlock;
    QPointer<QWidget> _focusDuringBlock;
};
