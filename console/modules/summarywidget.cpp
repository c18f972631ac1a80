// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "summarywidget.h"

#include <QFormLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace
{
/// Labels are no content to be blocked: they stay as they are while the page is read again.
QLabel *readingLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setProperty("kraNavigation", true);
    return label;
}
} // namespace

SummaryWidget::SummaryWidget(Module *module, const QString &elementType, const QStringList &labels, Describe describe)
    : ViewEditElementWidget(module, &Element::everybody)
    , _describe(std::move(describe))
{
    setElementType(elementType);

    auto *area = new QScrollArea(this);
    area->setAccessibleName(tr("Properties"));
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    auto *page = new QWidget(area);
    auto *form = new QFormLayout(page);
    form->setHorizontalSpacing(2 * form->horizontalSpacing());
    for (const QString &text : labels) {
        QLabel *label = readingLabel(tr("%1:").arg(text), page);
        QLabel *value = readingLabel({}, page);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        value->setWordWrap(true);
        label->setBuddy(value);
        form->addRow(label, value);
        _labels.append(label);
        _values.append(value);
    }
    area->setWidget(page);
    area->viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(area);
    showValues({});
}

void SummaryWidget::setElement(Element *element)
{
    if (element != this->element())
        showValues({});
    ViewEditElementWidget::setElement(element);
}

void SummaryWidget::afterSuccessfulRead(Element *element, ElementData *record)
{
    showValues(_describe(*record));
    ViewEditElementWidget::afterSuccessfulRead(element, record);
}

void SummaryWidget::showValues(const QStringList &values)
{
    for (int i = 0; i < _values.size(); ++i) {
        const QString value = values.value(i);
        _values.at(i)->setText(value);
        _values.at(i)->setHidden(value.isEmpty());
        _labels.at(i)->setHidden(value.isEmpty());
    }
}
