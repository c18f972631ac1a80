// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "amountdialog.h"

#include <limitrange.h>

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include <limits>

namespace
{
QLabel *wrappedLabel(const QString &text)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}
} // namespace

AmountDialog::AmountDialog(Counted counted, const QString &limitName, quint64 amount, QWidget *parent)
    : QDialog(parent)
    , _counted(counted)
    , _edit(new QLineEdit(counted == Counted::Space ? SizeText::ofBytes(amount) : QString::number(amount)))
    , _result(wrappedLabel(QString()))
    , _buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setWindowTitle(limitName);
    auto *name = new QLabel(limitName);
    name->setTextFormat(Qt::PlainText);
    name->setBuddy(_edit);
    const QString rule =
        counted == Counted::Space
            ? tr("A number and a unit: KB, MB, GB, TB, PB or EB, also written KiB, MiB and so on or K, "
                 "M and so on. Each is 1024 of the one before. Without a unit it is bytes. 0 is no "
                 "limit.")
            : tr("A number, with k for thousands or M for millions. 0 is no limit.");
    _edit->setObjectName(QStringLiteral("_amountLineEdit"));
    _edit->setAccessibleName(limitName);
    _edit->setAccessibleDescription(rule);
    _edit->selectAll();
    _result->setObjectName(QStringLiteral("_resultLabel"));
    _result->setMinimumHeight(3 * _result->fontMetrics().lineSpacing()); // lest what is below jump at each key

    auto *rows = new QVBoxLayout(this);
    rows->addWidget(name);
    rows->addWidget(_edit);
    rows->addWidget(wrappedLabel(rule));
    rows->addWidget(_result, 1, Qt::AlignTop);
    rows->addWidget(_buttons);
    constexpr int characters = 60;
    setMinimumWidth(characters * fontMetrics().averageCharWidth());

    connect(_edit, &QLineEdit::textChanged, this, &AmountDialog::judge);
    connect(_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    judge();
}

quint64 AmountDialog::amount() const
{
    const quint64 amount = typed().amount();
    return _counted == Counted::Space ? LimitRange::wholeBlocks(amount) : amount;
}

QString AmountDialog::words(Counted counted, quint64 amount)
{
    const QString number = QLocale().toString(amount);
    if (counted == Counted::Files) {
        const int pluralOf = static_cast<int>(qMin<quint64>(amount, std::numeric_limits<int>::max()));
        return number + QCoreApplication::translate("AbstractQuotaWidget", " files", nullptr, pluralOf);
    }
    return tr("%1 bytes (%2)").arg(number, SizeText::ofBytes(amount));
}

SizeText AmountDialog::typed() const
{
    return _counted == Counted::Space ? SizeText::ofSpace(_edit->text()) : SizeText::ofFiles(_edit->text());
}

QString AmountDialog::refusal() const
{
    const bool isSpace = _counted == Counted::Space;
    const quint64 most = isSpace ? LimitRange::MostBytes : LimitRange::MostFiles;
    const SizeText text = typed();
    switch (text.fault()) {
    case TypedNumber::Empty:
        return isSpace ? tr("Please type a size.") : tr("Please type a number.");
    case TypedNumber::NotANumber:
        return isSpace ? tr("This is no size.") : tr("This is no number.");
    case TypedNumber::Ambiguous:
        return tr("This can be read as two numbers. Please write it without the separator, or with another number of "
                  "decimals.");
    case TypedNumber::UnknownUnit:
        return tr("There is no such unit.");
    case TypedNumber::NotWhole:
        return tr("This is no whole number of files.");
    case TypedNumber::NoFault:
    case TypedNumber::TooLarge:
        break;
    }
    if (!text.isValid() || text.amount() > most)
        return tr("The kernel stores %1 at most.").arg(words(_counted, most));
    if (isSpace && text.amount() != 0 && text.amount() < LimitRange::BlockSize)
        return tr("The kernel counts in blocks of 1024 bytes. Less than one is no limit.");
    return {};
}

void AmountDialog::judge()
{
    const QString why = refusal();
    _buttons->button(QDialogButtonBox::Ok)->setEnabled(why.isEmpty());
    if (!why.isEmpty())
        _result->setText(why);
    else if (amount() == 0)
        _result->setText(tr("No limit."));
    else if (amount() != typed().amount())
        _result->setText(
            tr("Stored as %1: a limit is a number of whole blocks of 1024 bytes.").arg(words(_counted, amount())));
    else
        _result->setText(words(_counted, amount()));
}
