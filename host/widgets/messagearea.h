// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFrame>

class QLabel;
class QScrollArea;

/// What went wrong, or what is worth a note, above the page it concerns: selectable, and scrolled when it is very long.
class MessageArea : public QFrame
{
    Q_OBJECT

public:
    explicit MessageArea(QWidget *parent = nullptr);

    /// How a text looks: its colour and its icon.
    enum class Kind
    {
        Warning,
        Note, ///< nothing is wrong
    };

    QString text() const;
    Kind kind() const { return _kind; }
    /// An empty text hides the area.
    void setText(const QString &text, Kind kind);

Q_SIGNALS:
    /// The administrator has read the message and wants it gone.
    void dismissed();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void showText();
    void fitHeight();
    void applyKind();

    QLabel *_iconLabel;
    QScrollArea *_scrollArea;
    QLabel *_textLabel;
    QString _text;
    Kind _kind = Kind::Warning;
};
