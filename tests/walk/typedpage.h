// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "limitledger.h"

#include <element.h>
#include <vieweditelementwidget.h>

#include <QMap>
#include <QPointer>
#include <QSet>

/// What was typed into a page and neither applied nor given up yet. Whoever types keeps this beside the page, and
/// compares.
class TypedPage
{
public:
    /// After something in an editor was changed by hand: what the page shows now is what it has to go on showing, as
    /// long as it is marked changed. An editor without the mark has nothing to lose.
    void note(ViewEditElementWidget *editor, const QString &widget);
    /// Apply was asked for: from now on a write that succeeds ends what was typed. Says in the ledger what it may set.
    void applyAsked(LimitLedger &ledger);
    /// Revert was asked for, or an answer gave the changes up.
    void giveUp() { _isGivenUp = true; }
    /// A task that changes the machine has succeeded for this element.
    void writeSucceeded(const Element *element);
    void clear();

    bool isEmpty() const { return _values.isEmpty(); }
    /// In words, when what was typed went without an answer that allowed it; empty while all is well.
    QString lossIfAny();

    /// What stands in the widgets of an editor that take a value, by name.
    static QMap<QString, QString> valuesOf(const QWidget *editor);

private:
    void allowLimits(LimitLedger &ledger) const;
    void allowGraces(LimitLedger &ledger) const;

    QPointer<ViewEditElementWidget> _editor;
    const Element *_element = nullptr; // to compare only
    NodePointer<Element> _elementAlive;
    QString _title;
    QMap<QString, QString> _values;
    QSet<QString> _widgets; // that were changed by hand
    bool _isApplying = false;
    bool _isGivenUp = false;
};
