// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

/// A line across the window that says what the administrator should know all the time, with a button where there is
/// something to decide. Hidden while it says nothing.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget *parent = nullptr);

    void say(const QString &iconName, const QString &text, const QString &buttonText = {});
    QString text() const;

Q_SIGNALS:
    void buttonClicked();

private:
    QLabel *_icon;
    QLabel *_text;
    QPushButton *_button;
};
