// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "quotamodule.h"

/// Extends the console's own accounts of one kind: each gets a supplement with its quota when its page is first shown.
class LocalQuotaModule : public QuotaModule
{
    Q_OBJECT

public:
    /// Hangs a supplement under an account's element, and takes one away again. Every other operation, and every one of
    /// a supplement, is QuotaModule's.
    void performOperation(ContextOperation *operation, OperationType type, ElementData *data, int extra) override;

protected:
    /// What differs between users and groups.
    struct Extension
    {
        QString accountType;    ///< of the elements that are extended
        QString supplementType; ///< of the elements that are added
        /// Makes one that has no parent yet.
        SupplementElement *(*makeSupplement)(Module *module);

        /// With this class of supplements.
        template<typename Supplement>
        static Extension by()
        {
            return {Supplement::accountType(), Supplement::typeName(), [](Module *module) -> SupplementElement * {
                        return new Supplement(module, &Module::isAdministratorHierarchy);
                    }};
        }
    };
    LocalQuotaModule(const QString &name, const QString &attachName, const QString &description, Extension extension,
                     QObject *parent);

private:
    const Extension _extension;
};

/// The tab "Quota" of the console's own users.
class LocalUserQuotaModule : public LocalQuotaModule
{
    Q_OBJECT

public:
    explicit LocalUserQuotaModule(QObject *parent);
};

/// The tab "Quota" of the console's own groups.
class LocalGroupQuotaModule : public LocalQuotaModule
{
    Q_OBJECT

public:
    explicit LocalGroupQuotaModule(QObject *parent);
};
