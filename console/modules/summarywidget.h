// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vieweditelementwidget.h>

#include <QStringList>
#include <QVector>

#include <functional>

class QLabel;

/// A page of labels and values: to read and to copy from, with nothing to edit. A property without a value has no line.
class SummaryWidget : public ViewEditElementWidget
{
    Q_OBJECT

public:
    /// The values of a record, one for each label.
    using Describe = std::function<QStringList(const ElementData &record)>;

    SummaryWidget(Module *module, const QString &elementType, const QStringList &labels, Describe describe);

    void setElement(Element *element) override;
    void afterSuccessfulRead(Element *element, ElementData *record) override;

private:
    void showValues(const QStringList &values);

    Describe _describe;
    QVector<QLabel *> _labels;
    QVector<QLabel *> _values;
};
