// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QLineEdit>
#include <QTimer>

/// A field that narrows what is shown below it. It waits for a pause in the typing; Return does not wait, Escape
/// clears.
class SearchField : public QLineEdit
{
    Q_OBJECT

public:
    explicit SearchField(QWidget *parent = nullptr);

    /// Shows a search that is made already; nothing is announced.
    void resume(const QString &text);

Q_SIGNALS:
    void searched(const QString &text);
    /// The arrow key into what was found.
    void leftDownwards();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void announce();

    QTimer _pause;
    QString _announced;
};
