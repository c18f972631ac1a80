// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <sizetext.h>

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QLineEdit;

/// What a limit counts.
enum class Counted
{
    Space, ///< bytes, stored in whole blocks
    Files,
};

/// Takes a limit of any size that the kernel can store, typed as a SizeText. What is typed is shown again as it will be
/// stored; what cannot be stored is explained, and cannot be accepted.
class AmountDialog : public QDialog
{
    Q_OBJECT

public:
    /// `limitName` names the limit: "Soft limit on space". Begins with `amount`; 0 is no limit.
    AmountDialog(Counted counted, const QString &limitName, quint64 amount, QWidget *parent);

    /// As it is to be stored: in bytes of whole blocks, or in files.
    quint64 amount() const;

    /// An amount in words: "53,687,091,200 bytes (50 GB)", "5,000 files".
    static QString words(Counted counted, quint64 amount);

private:
    SizeText typed() const;
    /// Why what is typed cannot be stored; empty when it can.
    QString refusal() const;
    void judge();

    Counted _counted;
    QLineEdit *_edit;
    QLabel *_result;
    QDialogButtonBox *_buttons;
};
