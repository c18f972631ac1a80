// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "limitledger.h"

#include "walkmachine.h"

#include <utility>

namespace
{
QString nameOf(const QString &device, int kind, const QString &of, int field)
{
    return QStringLiteral("%1, %2 %3, value %4")
        .arg(device, QLatin1String(kind == USRQUOTA ? "user" : "group"), of)
        .arg(field);
}

const QString graceName = QStringLiteral("grace periods");
} // namespace

LimitLedger::Values LimitLedger::present()
{
    Values values;
    const QStringList devices = WalkMachine::devices();
    for (const QString &device : devices) {
        for (const int kind : {USRQUOTA, GRPQUOTA}) {
            const FakeKernel::State state = FakeKernel::instance().state(device.toUtf8(), kind);
            int field = 0;
            for (const quint64 seconds : {state.info.dqi_bgrace, state.info.dqi_igrace})
                values.insert(nameOf(device, kind, graceName, field++), seconds);
            for (auto each = state.records.cbegin(); each != state.records.cend(); ++each) {
                field = 0;
                for (const quint64 value : {each->dqb_bsoftlimit, each->dqb_bhardlimit, each->dqb_isoftlimit,
                                            each->dqb_ihardlimit, each->dqb_btime, each->dqb_itime})
                    values.insert(nameOf(device, kind, QString::number(each.key()), field++), value);
            }
        }
    }
    return values;
}

void LimitLedger::allow(const Place &place, quint32 account, Field field)
{
    _allowed.insert(nameOf(place.device, place.kind, QString::number(account), static_cast<int>(field)));
}

void LimitLedger::allow(const Place &place, Grace grace)
{
    _allowed.insert(nameOf(place.device, place.kind, graceName, static_cast<int>(grace)));
}

QStringList LimitLedger::takeSurprises()
{
    QStringList surprises;
    const Values now = present();
    for (auto each = now.cbegin(); each != now.cend(); ++each)
        if (_known.value(each.key()) != each.value() && !_allowed.contains(each.key()))
            surprises.append(
                QStringLiteral("%1: %2 became %3").arg(each.key()).arg(_known.value(each.key())).arg(each.value()));
    _known = now;
    _allowed.clear();
    return surprises;
}
