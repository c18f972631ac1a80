// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "typedpage.h"

#include "walkmachine.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QRegularExpression>

namespace
{
/// However many noughts and words stand around it. A box without a number takes one back when it is left.
QString numberIn(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("\\d+([.,]\\d+)?"));
    const QString found = number.match(text).captured().replace(QLatin1Char(','), QLatin1Char('.'));
    return found.isEmpty() ? found : QString::number(found.toDouble(), 'g', 15);
}

/// Null for a widget that takes no value.
QString valueOf(const QWidget *widget)
{
    if (const auto *edit = qobject_cast<const QDateTimeEdit *>(widget))
        return edit->dateTime().toString(Qt::ISODate);
    if (const auto *box = qobject_cast<const QAbstractSpinBox *>(widget))
        return numberIn(box->text());
    if (const auto *box = qobject_cast<const QComboBox *>(widget))
        return box->currentText() + QLatin1Char('|');
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return button->isCheckable() ? QString::number(button->isChecked()) : QString();
    if (const auto *box = qobject_cast<const QGroupBox *>(widget))
        return box->isCheckable() ? QString::number(box->isChecked()) : QString();
    if (const auto *line = qobject_cast<const QLineEdit *>(widget))
        return line->text() + QLatin1Char('|');
    if (const auto *text = qobject_cast<const QPlainTextEdit *>(widget))
        return text->toPlainText() + QLatin1Char('|');
    return {};
}

QString deviceOf(const QWidget &editor, const char *box)
{
    return editor.findChild<QComboBox *>(QLatin1String(box))->currentText().section(QLatin1Char(' '), 0, 0);
}
} // namespace

QMap<QString, QString> TypedPage::valuesOf(const QWidget *editor)
{
    QMap<QString, QString> values;
    const QList<QWidget *> widgets = editor->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const QString value = valueOf(widget);
        if (!value.isEmpty() && widget->objectName().startsWith(QLatin1Char('_')))
            values.insert(widget->objectName(), value);
    }
    return values;
}

void TypedPage::note(ViewEditElementWidget *editor, const QString &widget)
{
    if (!editor->isContentChanged())
        return clear();
    if (editor != _editor || editor->element() != _element)
        clear();
    _editor = editor;
    _element = editor->element();
    _elementAlive = editor->element();
    _title = _element->title();
    _values = valuesOf(editor);
    _widgets.insert(widget);
    _isApplying = false;
}

void TypedPage::applyAsked(LimitLedger &ledger)
{
    if (isEmpty() || !_editor)
        return;
    _isApplying = true;
    if (_editor->inherits("AbstractQuotaWidget"))
        allowLimits(ledger);
    else if (_editor->inherits("GeneralWidget"))
        allowGraces(ledger);
}

void TypedPage::allowLimits(LimitLedger &ledger) const
{
    const bool isGroup = QLatin1String(_editor->metaObject()->className()).contains(QLatin1String("Group"));
    const LimitLedger::Place place = {deviceOf(*_editor, "_devicesComboBox"), isGroup ? GRPQUOTA : USRQUOTA};
    const QMap<QString, LimitLedger::Field> fields = {
        {QStringLiteral("_softLimitBlocks"), LimitLedger::Field::SoftSpace},
        {QStringLiteral("_softLimitDimension"), LimitLedger::Field::SoftSpace},
        {QStringLiteral("_hardLimitBlocks"), LimitLedger::Field::HardSpace},
        {QStringLiteral("_hardLimitDimension"), LimitLedger::Field::HardSpace},
        {QStringLiteral("_softLimitInodes"), LimitLedger::Field::SoftFiles},
        {QStringLiteral("_hardLimitInodes"), LimitLedger::Field::HardFiles},
        {QStringLiteral("_blocksDateTime"), LimitLedger::Field::SpaceTime},
        {QStringLiteral("_inodesDateTime"), LimitLedger::Field::FilesTime},
    };
    for (auto field = fields.cbegin(); field != fields.cend(); ++field)
        for (const QString &widget : _widgets)
            if (widget.startsWith(field.key()))
                ledger.allow(place, WalkMachine::accountId(_title), field.value());
}

void TypedPage::allowGraces(LimitLedger &ledger) const
{
    const QString device = deviceOf(*_editor, "_filesystemsComboBox");
    for (const QString &widget : _widgets) {
        const int kind = widget.contains(QLatin1String("Groups")) ? GRPQUOTA : USRQUOTA;
        if (widget.startsWith(QLatin1String("_blocks")))
            ledger.allow({device, kind}, LimitLedger::Grace::Space);
        else if (widget.startsWith(QLatin1String("_inodes")))
            ledger.allow({device, kind}, LimitLedger::Grace::Files);
    }
}

void TypedPage::writeSucceeded(const Element *element)
{
    if (element == _element && _isApplying)
        giveUp();
}

void TypedPage::clear()
{
    *this = {};
}

QString TypedPage::lossIfAny()
{
    if (isEmpty())
        return {};
    const bool isThere = _editor && _editor->element() == _element && _editor->isContentChanged();
    const bool mayGo = _isGivenUp || !_elementAlive;
    QString loss;
    if (isThere && !mayGo) {
        const QMap<QString, QString> present = valuesOf(_editor);
        for (auto each = _values.cbegin(); each != _values.cend(); ++each)
            if (present.value(each.key()) != each.value())
                loss += QStringLiteral("\n\"%1\" in %2 became \"%3\"")
                            .arg(each.value(), each.key(), present.value(each.key()));
    } else if (!isThere && !mayGo) {
        loss = QStringLiteral("\nThe page has no changes any more.");
    }
    if (!loss.isEmpty())
        loss.prepend(QStringLiteral("What was typed on the page of \"%1\" is lost:").arg(_title));
    if (!isThere || !loss.isEmpty())
        clear();
    return loss;
}
