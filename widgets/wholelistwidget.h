// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QListWidget>

/// A list that is seen whole: as high as its items need at its width.
class WholeListWidget : public QListWidget
{
    Q_OBJECT

public:
    explicit WholeListWidget(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

    /// After the items changed.
    void layOut();

private:
    int wholeHeight() const;
};

/// A list of texts to be read: without a frame, and hidden while it has none.
class TextListWidget : public WholeListWidget
{
    Q_OBJECT

public:
    explicit TextListWidget(QWidget *parent = nullptr);

    void setTexts(const QStringList &texts);
};
