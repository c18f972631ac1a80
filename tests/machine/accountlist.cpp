// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "accountlist.h"

#include "form.h"
#include "realconsole.h"

#include <elementtreeview.h>
#include <elementwidget.h>

#include <QComboBox>
#include <QTest>

AccountList::AccountList(RealConsole &console, QuotaKind kind)
    : _console(console)
    , _title(kind == GroupQuota ? QStringLiteral("Groups") : QStringLiteral("Users"))
{}

bool AccountList::open()
{
    return _console.driver().open({QStringLiteral("Quota management"), _title});
}

QStringList AccountList::devices() const
{
    return Form::choices(find<QComboBox>("_devicesComboBox"));
}

bool AccountList::choose(const QString &device)
{
    return Form::choose(find<QComboBox>("_devicesComboBox"), device);
}

QStringList AccountList::accounts() const
{
    const QAbstractItemModel *rows = view()->model();
    QStringList names;
    for (int i = 0; i < rows->rowCount(); ++i)
        names.append(rows->index(i, AccountColumn::Name).data().toString());
    return names;
}

QVariant AccountList::cell(const QString &account, AccountColumn::Column column) const
{
    return row(account).siblingAtColumn(column).data();
}

bool AccountList::openAccount(const QString &account)
{
    const QModelIndex index = row(account);
    if (!index.isValid())
        return false;
    view()->scrollTo(index);
    const QPoint place = view()->visualRect(index).center();
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view()->viewport(), Qt::LeftButton, {}, place);
    const ElementWidget *editor = _console.driver().settle() ? _console.driver().editor() : nullptr;
    return editor && editor->element() && editor->element()->title() == account;
}

template<class Widget>
Widget *AccountList::find(const char *name) const
{
    return _console.driver().editor()->findChild<Widget *>(QString::fromLatin1(name));
}

ElementTreeView *AccountList::view() const
{
    return find<ElementTreeView>("_elementTreeView");
}

QModelIndex AccountList::row(const QString &account) const
{
    const QAbstractItemModel *rows = view()->model();
    for (int i = 0; i < rows->rowCount(); ++i) {
        const QModelIndex index = rows->index(i, AccountColumn::Name);
        if (index.data().toString() == account)
            return index;
    }
    return {};
}
