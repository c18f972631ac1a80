// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QIcon>
#include <QWidget>

class ElidedLabel;
class QLabel;

/// The head of a page: icon, title and one line about it.
class PageHeader : public QWidget
{
    Q_OBJECT

public:
    explicit PageHeader(QWidget *parent = nullptr);

    /// A caption that only repeats the title is left out.
    void setContent(const QIcon &icon, const QString &title, const QString &caption);

private:
    QLabel *_iconLabel;
    ElidedLabel *_titleLabel;
    ElidedLabel *_captionLabel;
};
