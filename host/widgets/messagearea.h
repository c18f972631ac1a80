// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFrame>

class QLabel;
class QScrollArea;

/// What went wrong, above the page it concerns: selectable, and scrolled when it is very long.
class MessageArea : public QFrame
{
    Q_OBJECT

public:
    explicit MessageArea(QWidget *parent = nullptr);

    QString text() const;
    /// An empty text hides the area.
    void setText(const QString &text);

Q_SIGNALS:
    /// The administrator has read the message and wants it gone.
    void dismissed();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void fitHeight();
    void applyColors();

    QScrollArea *_scrollArea;
    QLabel *_textLabel;
};
