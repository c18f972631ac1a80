// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "wholelistwidget.h"

/// A list of texts to be read: without a frame, and hidden while it has none.
class TextListWidget : public WholeListWidget
{
    Q_OBJECT

public:
    explicit TextListWidget(QWidget *parent = nullptr);

    void setTexts(const QStringList &texts);
};
