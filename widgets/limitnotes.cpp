// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "limitnotes.h"

#include <limitrange.h>

#include <QCoreApplication>

namespace
{
struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(LimitNotes)
};

/// What the box does not show of the limit; empty when it shows all of it.
QString hiddenPart(const LimitEdit &limit, bool isHard)
{
    if (!limit.isHidden())
        return {};
    const QString words = AmountDialog::words(limit.counted(), limit.amount());
    if (limit.isBeyond())
        return (isHard ? Texts::tr("The hard limit is %1, which is more than the box can show.")
                       : Texts::tr("The soft limit is %1, which is more than the box can show."))
            .arg(words);
    return (isHard ? Texts::tr("The hard limit is exactly %1. The box shows it rounded.")
                   : Texts::tr("The soft limit is exactly %1. The box shows it rounded."))
        .arg(words);
}

/// Why the kernel does not keep the limit as it stands; empty when it does.
QString lossInKernel(const LimitEdit &limit, bool isHard)
{
    const quint64 amount = limit.amount();
    if (!limit.isChecked())
        return {};
    if (amount == 0)
        return isHard ? Texts::tr("A hard limit of 0 is no limit.") : Texts::tr("A soft limit of 0 is no limit.");
    if (limit.counted() == Counted::Space && amount < LimitRange::BlockSize)
        return isHard ? Texts::tr("The hard limit is below 1024 bytes, the size of a block: that is no limit.")
                      : Texts::tr("The soft limit is below 1024 bytes, the size of a block: that is no limit.");
    if (const std::optional<quint64> stored = limit.storedOtherwise())
        return (isHard ? Texts::tr("The hard limit is stored as %1: in whole blocks of 1024 bytes.")
                       : Texts::tr("The soft limit is stored as %1: in whole blocks of 1024 bytes."))
            .arg(AmountDialog::words(limit.counted(), *stored));
    return {};
}

/// The limit as the kernel keeps it.
quint64 storedAmount(const LimitEdit &limit)
{
    return limit.counted() == Counted::Space ? LimitRange::wholeBlocks(limit.amount()) : limit.amount();
}
} // namespace

LimitNotes::LimitNotes(const LimitEdit &soft, const LimitEdit &hard, quint64 used)
{
    const auto firstOf = [](const QStringList &texts) {
        for (const QString &text : texts)
            if (!text.isEmpty())
                return text;
        return QString();
    };
    const quint64 softAmount = storedAmount(soft);
    const quint64 hardAmount = storedAmount(hard);

    softWarning = firstOf(
        {refusal(soft, false), lossInKernel(soft, false),
         softAmount != 0 && softAmount < used ? Texts::tr("The soft limit is below what is used.") : QString()});
    hardWarning = firstOf({refusal(hard, true), lossInKernel(hard, true),
                           hardAmount != 0 && hardAmount < softAmount
                               ? Texts::tr("The hard limit is below the soft limit, which therefore never counts.")
                               : QString(),
                           hardAmount != 0 && hardAmount < used
                               ? Texts::tr("The hard limit is below what is used: nothing can be added until enough "
                                           "is removed.")
                               : QString()});
    for (const QString &line : {hiddenPart(soft, false), softWarning, hiddenPart(hard, true), hardWarning})
        if (!line.isEmpty())
            lines += line;
}

QString LimitNotes::refusal(const LimitEdit &limit, bool isHard)
{
    if (!limit.isRefused())
        return {};
    return (isHard ? Texts::tr("The hard limit that is typed is no number that the box takes. It takes up to %1; the "
                               "button beside it takes any amount.")
                   : Texts::tr("The soft limit that is typed is no number that the box takes. It takes up to %1; the "
                               "button beside it takes any amount."))
        .arg(limit.most());
}
