// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "vieweditelementwidget.h"

#include <elementdata.h>
#include <plaintooltip.h>
#include <taskobserver.h>

#include <QAbstractSpinBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QScrollArea>
#include <QSpinBox>
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

/// Whether a group box above the widget is unticked: that disables what is in it in a way that isEnabledTo() passes
/// over.
bool isUnticked(const QWidget *widget, const QWidget *editor)
{
    for (const QWidget *above = widget; above && above != editor; above = above->parentWidget()) {
        const auto *group = qobject_cast<const QGroupBox *>(above);
        if (group && group->isCheckable() && !group->isChecked())
            return true;
    }
    return false;
}

/// The widget of the first edited line whose text is not acceptable; null when there is none.
QWidget *firstRejected(const QWidget *editor)
{
    const QList<QLineEdit *> lines = editor->findChildren<QLineEdit *>();
    for (QLineEdit *line : lines) {
        if (!line->isModified() || !line->isEnabledTo(editor) || isUnticked(line, editor))
            continue;
        auto *spinBox = qobject_cast<QAbstractSpinBox *>(line->parentWidget());
        if (spinBox ? !spinBox->hasAcceptableInput() : !line->hasAcceptableInput())
            return spinBox ? static_cast<QWidget *>(spinBox) : line;
    }
    return nullptr;
}

QString whyRejected(const QWidget *field)
{
    if (const auto *number = qobject_cast<const QSpinBox *>(field))
        return ViewEditElementWidget::tr("This must be a number between %1 and %2.")
            .arg(number->locale().toString(number->minimum()), number->locale().toString(number->maximum()));
    if (const auto *number = qobject_cast<const QDoubleSpinBox *>(field))
        return ViewEditElementWidget::tr("This must be a number between %1 and %2.")
            .arg(number->textFromValue(number->minimum()), number->textFromValue(number->maximum()));
    return ViewEditElementWidget::tr("This value cannot be applied. Please correct it.");
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

ViewEditElementWidget::ViewEditElementWidget(Module *module, AccessCheck access, QWidget *parent)
    : ElementWidget(module, access, parent)
{
    const TaskObserver *observer = TaskObserver::instance();
    connect(observer, &TaskObserver::taskQueued, this, [this](const TaskReport &task) { noteTask(task, false); });
    connect(observer, &TaskObserver::taskFinished, this, [this](const TaskReport &task) { noteTask(task, true); });
}

ViewEditElementWidget::~ViewEditElementWidget() = default;

void ViewEditElementWidget::setElement(Element *element)
{
    if (element && element == this->element())
        return;
    ++_reads;
    _showsRecord = false;
    ElementWidget::setElement(element);
    blockEditWidget(true);
    if (element && element->record())
        afterSuccessfulRead(element, element->record());
}

void ViewEditElementWidget::followTo(Element *element)
{
    ++_reads;
    ElementWidget::followTo(element);
    blockEditWidget(!isContentChanged());
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
    ++_reads;
    ElementWidget::afterSuccessfulRead(element, record);
    if (element == _written.data() && record != _recordBeforeWrite)
        _written = {}; // and a later record may have the address of that one
    _showsRecord = true;
    blockEditWidget(false);
}

bool ViewEditElementWidget::isContentValid() const
{
    return whyInvalid().isEmpty();
}

QString ViewEditElementWidget::whyInvalid() const
{
    const QWidget *rejected = firstRejected(this);
    return rejected ? whyRejected(rejected) : QString();
}

QWidget *ViewEditElementWidget::invalidField() const
{
    return firstRejected(this);
}

ViewEditElementWidget::ApplyWarning ViewEditElementWidget::warningBeforeApply() const
{
    return {};
}

std::unique_ptr<ElementData> ViewEditElementWidget::exportElementData() const
{
    return nullptr;
}

void ViewEditElementWidget::applyContentChanges()
{
    if (!isEditable()) {
        if (isContentChanged() && TaskObserver::instance()->isReading(element()))
            say(tr("This is being read. Please apply it when that has ended."), true);
        return;
    }
    if (!isContentValid()) {
        refuse();
        return;
    }
    say(QString());
    if (!warn(warningBeforeApply()))
        return;
    std::unique_ptr<ElementData> record = exportElementData();
    if (!record) {
        setUnchanged();
        return;
    }
    blockEditWidget(true);
    element()->performOperation(OperationType::Write, record.release(), 0);
    QMetaObject::invokeMethod(this, &ViewEditElementWidget::openUnapplied, Qt::QueuedConnection);
}

/// Where the module started no task, nothing else would open the page again.
void ViewEditElementWidget::openUnapplied()
{
    if (!_blocked || !isContentChanged() || !element() || TaskObserver::instance()->isBusyWith(element()))
        return;
    blockEditWidget(false);
    say(tr("Nothing was applied: no task was started for it."));
}

void ViewEditElementWidget::refuse()
{
    QString why = whyInvalid();
    if (why.isEmpty())
        why = tr("What is typed here cannot be applied. Please correct it.");
    if (QWidget *field = invalidField()) {
        bringToFront(field);
        field->setFocus();
        QToolTip::showText(field->mapToGlobal(QPoint(0, field->height())), plainToolTip(why), field);
    }
    say(why);
}

void ViewEditElementWidget::say(const QString &why, bool untilEditable)
{
    _isRefused = !why.isEmpty();
    _isRefusedWhileShut = _isRefused && untilEditable;
    Q_EMIT refused(why);
}

/// Waits for the administrator. False when the answer is no, and when the page was read or left meanwhile: then what is
/// shown is not what was to be applied.
bool ViewEditElementWidget::warn(const ApplyWarning &warning)
{
    if (warning.text.isEmpty())
        return true;
    const QPointer<ViewEditElementWidget> self(this);
    const int readsBefore = _reads;
    const QMessageBox::StandardButtons buttons =
        warning.isQuestion ? QMessageBox::Yes | QMessageBox::No : QMessageBox::StandardButtons(QMessageBox::Ok);
    const QPointer<QMessageBox> box =
        new QMessageBox(warning.isQuestion ? QMessageBox::Warning : QMessageBox::Information, warning.title,
                        warning.text, buttons, this);
    if (warning.isQuestion)
        box->setDefaultButton(QMessageBox::No);
    box->setTextFormat(Qt::PlainText);
    const bool isRefused = box->exec() == QMessageBox::No;
    delete box;
    if (!self || isRefused)
        return false;
    const bool isAsBefore = readsBefore == _reads && isEditable();
    if (!isAsBefore && element())
        say(tr("This was read again before the warning was answered, so nothing was applied. Please look at it and "
               "apply it again."));
    return isAsBefore;
}

void ViewEditElementWidget::reset()
{
    setUnchanged();
    read();
}

void ViewEditElementWidget::setUnchanged()
{
    if (isContentChanged())
        _showsRecord = false;
    ElementWidget::setUnchanged();
}

void ViewEditElementWidget::blockEditWidget(bool block)
{
    _blocked = block;
    updateEditable();
}

bool ViewEditElementWidget::isEditable() const
{
    const TaskObserver *observer = TaskObserver::instance();
    return !_blocked && availableOperations().testFlag(OperationType::Write) && isAccessible() &&
           element()->isAccessible() && !observer->isReading(element()) && !observer->isWriting(element());
}

void ViewEditElementWidget::changeContent()
{
    if (!isEditable())
        return;
    if (_isRefused)
        say(QString()); // it spoke of what was there before this
    setContentChanged(true);
}

void ViewEditElementWidget::showEvent(QShowEvent *event)
{
    // The block of a new editor was there before its form.
    updateEditable();
    ElementWidget::showEvent(event);
}

void ViewEditElementWidget::noteTask(const TaskReport &task, bool hasEnded)
{
    const Element *shown = element();
    if (!shown || task.element != shown || !(task.readsRecord || task.changesMachine))
        return;
    ++_reads;
    const bool isCancelled = task.status == TaskDescription::Cancelled;
    if (hasEnded && task.changesMachine && !isCancelled) {
        _written = element();
        _recordBeforeWrite = shown->record();
    }
    const TaskObserver *observer = TaskObserver::instance();
    const bool isIdle = hasEnded && !observer->isReading(shown) && !observer->isWriting(shown);
    if (isIdle && isContentChanged())
        blockEditWidget(false); // what was typed and not replaced can be edited on, also where no record came
    else if (isIdle && isCancelled && shown->record())
        showRecordBefore();
    else
        updateEditable();
}

/// The read that was to bring another record was cancelled.
void ViewEditElementWidget::showRecordBefore()
{
    const Element *shown = element();
    if (_written.data() == shown && _recordBeforeWrite == shown->record()) {
        updateEditable();
        say(tr("What was applied was not read again, since that was cancelled. Please refresh this before you change "
               "anything else."),
            true);
    } else if (_showsRecord) {
        blockEditWidget(false);
    } else {
        afterSuccessfulRead(element(), shown->record());
    }
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
            setFocus(); // not into another part of the window, where the next keys would do something else
            _focusDuringBlock = window()->focusWidget();
        }
    } else if (_focusBeforeBlock) {
        if (_focusDuringBlock == window()->focusWidget()) {
            if (QWidget *usable = firstUsable(_focusBeforeBlock, this))
                usable->setFocus();
        }
        _focusBeforeBlock = nullptr;
    }
    if (editable && _isRefusedWhileShut)
        say(QString());
    Q_EMIT editableChanged(editable);
}
