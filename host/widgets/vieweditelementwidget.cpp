// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "vieweditelementwidget.h"

#include <elementdata.h>

#include <QAbstractSpinBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QTabWidget>
#include <QToolTip>

namespace
{
const char *const navigationProperty = "kraNavigation";

QList<QWidget *> childWidgets(const QWidget *parent)
{
    return parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
}

void setContentEnabled(const QWidget *frame, bool enabled)
{
    const QList<QWidget *> children = childWidgets(frame);
    for (QWidget *child : children) {
        if (child->isWindow())
            continue; // a dialog of the editor, or the list of a combo box
        const bool marked = child->property(navigationProperty).toBool();
        if (const auto *area = qobject_cast<const QScrollArea *>(child)) {
            if (area->widget())
                setContentEnabled(area->widget(), enabled);
        } else if (!marked) {
            child->setEnabled(enabled);
        } else if (child->layout()) {
            setContentEnabled(child, enabled);
        }
    }
}

/// The widget of the first edited line whose text is not acceptable; null when there is none.
QWidget *firstRejected(const QWidget *editor)
{
    const QList<QLineEdit *> lines = editor->findChildren<QLineEdit *>();
    for (QLineEdit *line : lines) {
        if (!line->isModified() || !line->isEnabledTo(editor))
            continue;
        auto *spinBox = qobject_cast<QAbstractSpinBox *>(line->parentWidget());
        if (spinBox ? !spinBox->hasAcceptableInput() : !line->hasAcceptableInput())
            return spinBox ? static_cast<QWidget *>(spinBox) : line;
    }
    return nullptr;
}

/// The widget, or the first that Tab reaches from it in the editor where it cannot have the focus any more; null when
/// there is none.
QWidget *firstUsable(QWidget *widget, const QWidget *editor)
{
    if (widget->isEnabled())
        return widget;
    for (QWidget *next = widget->nextInFocusChain(); next != widget; next = next->nextInFocusChain())
        if (editor->isAncestorOf(next) && next->isEnabled() && next->isVisible() &&
            (next->focusPolicy() & Qt::TabFocus) && !next->focusProxy())
            return next;
    return nullptr;
}

void bringToFront(const QWidget *widget)
{
    for (QWidget *above = widget->parentWidget(); above; above = above->parentWidget()) {
        auto *tabs = qobject_cast<QTabWidget *>(above);
        for (int i = 0; tabs && i < tabs->count(); ++i)
            if (tabs->widget(i)->isAncestorOf(widget))
                tabs->setCurrentIndex(i);
        if (auto *area = qobject_cast<QScrollArea *>(above))
            area->ensureWidgetVisible(const_cast<QWidget *>(widget)); // the area only looks at its geometry
    }
}
} // namespace

void ViewEditElementWidget::setElement(Element *element)
{
    if (element && element == this->element())
        return;
    ElementWidget::setElement(element);
    blockEditWidget(true);
    if (element && element->record())
        afterSuccessfulRead(element, element->record());
}

void ViewEditElementWidget::read()
{
    if (!availableOperations().testFlag(OperationType::Read))
        return;
    blockEditWidget(true);
    element()->performOperation(OperationType::Read, nullptr, 0);
}

void ViewEditElementWidget::afterSuccessfulRead(Element *element, ElementData *record)
{
    ElementWidget::afterSuccessfulRead(element, record);
    blockEditWidget(false);
}

bool ViewEditElementWidget::isContentValid() const
{
    return firstRejected(this) == nullptr;
}

std::unique_ptr<ElementData> ViewEditElementWidget::exportElementData() const
{
    return nullptr;
}

void ViewEditElementWidget::applyContentChanges()
{
    if (!isEditable())
        return;
    if (!isContentValid()) {
        if (QWidget *rejected = firstRejected(this)) {
            bringToFront(rejected);
            rejected->setFocus();
            QToolTip::showText(rejected->mapToGlobal(QPoint(0, rejected->height())),
                               tr("This value cannot be applied. Please correct it."), rejected);
        }
        return;
    }
    std::unique_ptr<ElementData> record = exportElementData();
    if (!record) {
        setUnchanged();
        return;
    }
    blockEditWidget(true);
    element()->performOperation(OperationType::Write, record.release(), 0);
}

void ViewEditElementWidget::reset()
{
    read();
}

void ViewEditElementWidget::blockEditWidget(bool block)
{
    _blocked = block;
    updateEditable();
}

bool ViewEditElementWidget::isEditable() const
{
    return !_blocked && availableOperations().testFlag(OperationType::Write) && isAccessible();
}

void ViewEditElementWidget::changeContent()
{
    if (isEditable())
        setContentChanged(true);
}

void ViewEditElementWidget::showEvent(QShowEvent *event)
{
    // The block of a new editor was there before its form.
    updateEditable();
    ElementWidget::showEvent(event);
}

void ViewEditElementWidget::updateEditable()
{
    // Disabling moves the focus on. Whoever was typing finds it where it was, or behind it where
    // that is no more to be edited, unless it was moved by hand meanwhile.
    QWidget *before = window()->focusWidget();
    const bool editable = isEditable();
    setContentEnabled(this, editable);
    if (!editable) {
        if (before && isAncestorOf(before) && !before->isEnabled()) {
            _focusBeforeBlock = before;
            _focusDuringBlock = window()->focusWidget();
        }
    } else if (_focusBeforeBlock) {
        if (_focusDuringBlock == window()->focusWidget()) {
            if (QWidget *usable = firstUsable(_focusBeforeBlock, this))
                usable->setFocus();
        }
        _focusBeforeBlock = nullptr;
    }
    Q_EMIT editableChanged(editable);
}
