// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "quotamodule.h"

/// Extends the console's own accounts of one kind: each gets a supplement with its quota when its page is first shown.
class LocalQuotaModule : public QuotaModule
{
    Q_OBJECT

public:
    /// Hangs a supplement under an account's element, and takes one away again. What else is asked, of a supplement or
    /// of anything, QuotaModule knows.
    void performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra) override;

protected:
    /// What differs between users and groups.
    struct Extension
    {
        QString accountType;    ///< of the elements that are extended
        QString supplementType; ///< of the elements that are added
        /// Makes one that has no parent yet.
        SupplementElement *(*makeSupplement)(Module *module);
    };
    LocalQuotaModule(const QString &name, const QString &attachName, const QString &description, Extension extension,
                     QObject *parent);

private:
    const Extension _extension;
};
