// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <kraglobal.h>

#include <QLabel>

/// One line of plain text that is shortened to the room there is. The whole text is the tool tip then.
class KRA_EXPORT ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    QString fullText() const { return _fullText; }
    void setFullText(const QString &text);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void fit();

    QString _fullText;
};
