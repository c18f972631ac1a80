// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "elementmenu.h"

#include <elementdata.h>

#include <QActionGroup>
#include <QClipboard>
#include <QGuiApplication>

QStringList variantNames(const Element &element)
{
    QStringList names = element.displayChildrenVariants();
    if (!names.isEmpty())
        names.prepend(ElementMenu::tr("All"));
    return names;
}

void chooseVariant(Element &element, int variant)
{
    ChangeDisplayElementData data(variant);
    element.performOperation(OperationType::ChangeDisplay, &data, 0);
}

ElementMenu::ElementMenu(Element *element, bool isShown, QWidget *parent)
    : QMenu(parent)
    , _element(element)
{
    QAction *open = addAction(QIcon::fromTheme(QStringLiteral("document-open")), tr("&Open"));
    open->setEnabled(!isShown);
    setDefaultAction(open);
    connect(open, &QAction::triggered, this, [this] {
        if (_element)
            Q_EMIT openChosen(_element.data());
    });

    QAction *refresh = addAction(QIcon::fromTheme(QStringLiteral("view-refresh")), tr("&Refresh"));
    refresh->setEnabled(element->availableOperations() & (OperationType::Read | OperationType::ReadContent));
    connect(refresh, &QAction::triggered, this, [this] {
        if (_element)
            Q_EMIT refreshChosen(_element.data());
    });

    addVariants(*element);
    addSeparator();
    QAction *copy = addAction(QIcon::fromTheme(QStringLiteral("edit-copy")), tr("&Copy name"));
    connect(copy, &QAction::triggered, this,
            [name = element->title()] { QGuiApplication::clipboard()->setText(name); });
}

void ElementMenu::addVariants(const Element &element)
{
    const QStringList names = variantNames(element);
    if (names.isEmpty())
        return;
    QMenu *menu = addMenu(tr("&Show"));
    auto *group = new QActionGroup(menu);
    for (int variant = 0; variant < names.size(); ++variant) {
        QAction *action = menu->addAction(names.at(variant));
        action->setCheckable(true);
        action->setChecked(variant == element.displayChildrenVariant());
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, variant] {
            if (!_element)
                return;
            chooseVariant(*_element.data(), variant);
            Q_EMIT variantChosen();
        });
    }
}
