// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "elementwidget.h"

#include <QPointer>

#include <memory>

struct TaskReport;

/// An editor of one element's record: it shows it, lets it be changed, and exports a new one.
///
/// It starts blocked; the end of afterSuccessfulRead() lifts the block. So a page for which no usable record came
/// stays blocked. Nor can it be edited while a read or an update of its element waits or runs, so that no late record
/// meets what is being typed. A read that is cancelled opens it again with the record before it, if that is not older
/// than the last update.
///
/// Content that is marked changed is replaced by reset() and by a successful update only: another record that a read
/// brings goes to the element, not to the editor. After an update that failed the content stays as typed and changed,
/// and can be applied again.
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
    ViewEditElementWidget(Module *module, AccessCheck access, QWidget *parent = nullptr);
    ~ViewEditElementWidget() override;

    /// Also blocks editing until the new element's record comes. An element that has a record already shows it at once,
    /// through afterSuccessfulRead().
    void setElement(Element *element) override;
    /// Can be edited on at once, where anything was typed.
    void followTo(Element *element) override;
    /// Blocks editing and performs OperationType::Read on the element.
    void read() override;

    /// Overrides show the record and call this one last: it ends the block and clears the changed mark.
    void afterSuccessfulRead(Element *element, ElementData *record) override;

    /// Whether what is typed can be applied: whyInvalid() finds nothing to say.
    virtual bool isContentValid() const;
    /// Why what is typed cannot be applied, for the administrator; empty when it can. This one: an edited line that its
    /// own validator rejects. Text that the editor itself has set is not judged, nor are disabled lines.
    virtual QString whyInvalid() const;
    /// A new record made from the form. Null when there is nothing to apply.
    virtual std::unique_ptr<ElementData> exportElementData() const;
    /// Apply: checks isContentValid(), shows warningBeforeApply(), exports, and performs OperationType::Write on the
    /// element. Editing is blocked until the element was read again. Content that is not valid stays as it is;
    /// invalidField() gets the focus, and refused() says why. The same where the page was read or left while the
    /// warning stood. Where nothing is exported, nothing is changed any more. Does nothing while the content cannot be
    /// edited.
    virtual void applyContentChanges();
    /// Revert: forgets what was typed and reads anew. Where that read is cancelled, the record before it is shown
    /// again.
    virtual void reset();
    void setUnchanged() override;

    /// Stops editing while the page is refilled or applied; what is shown stays readable.
    virtual void blockEditWidget(bool block);
    bool isBlocked() const { return _blocked; }
    /// Not blocked, no read or update of the shown element under way, and it can be written with the rights that the
    /// process has.
    bool isEditable() const;

    /// Whether something would be lost with the element: the content is changed, or is being typed in a dialog of the
    /// editor, which a followTo() leaves open and a setElement() closes.
    virtual bool isBeingEdited() const { return isContentChanged(); }

    /// Marks the content changed; the host then offers Apply and Revert. Overrides call this one. Ignored while the
    /// content cannot be edited, so that filling the form changes nothing.
    virtual void changeContent();

Q_SIGNALS:
    /// Said after each block, each end of one, and each change of the element.
    void editableChanged(bool editable);
    /// An Apply came to nothing before anything was written, or the page stays shut. An empty text: that is over.
    void refused(const QString &why);

protected:
    /// A box that Apply shows before it exports.
    struct ApplyWarning
    {
        QString title;
        QString text;            ///< plain; empty for no box
        bool isQuestion = false; ///< with the answer No, which is the default, nothing is applied
    };

    /// What the administrator is to know before the content is applied; asked once the content has been found valid.
    virtual ApplyWarning warningBeforeApply() const;
    /// The field that whyInvalid() speaks of; null for none, or for the page as a whole.
    virtual QWidget *invalidField() const;

    void showEvent(QShowEvent *event) override;

    /// Emits refused(). The text stands until the content changes or is applied again, and if wanted no longer than the
    /// content cannot be edited.
    void say(const QString &why, bool untilEditable = false);

private:
    void refuse();
    void openUnapplied();
    bool warn(const ApplyWarning &warning);
    void noteTask(const TaskReport &task, bool hasEnded);
    void showRecordBefore();
    void updateEditable();

    bool _blocked = true;
    bool _showsRecord = false;                       // the form shows the element's record, or what was typed over it
    bool _isRefused = false;                         // the last refused() had a text
    bool _isRefusedWhileShut = false;                // and it is over when the content can be edited again
    NodePointer<Element> _written;                   // the last shown element that was updated
    const ElementData *_recordBeforeWrite = nullptr; // its record then; only compared
    int _reads = 0; // counts what may have changed the content, or its element's record
    QPointer<QWidget> _focusBeforeBlock;
    QPointer<QWidget> _focusDuringBlock;
};
