// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "changesquestion.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace
{
struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ElementPages)
};
} // namespace

ChangesAnswer askAboutChanges(QWidget *page, const QString &title)
{
    QMessageBox box(QMessageBox::Question, Texts::tr("Changes not applied"),
                    Texts::tr("The page \"%1\" has changes that have not been applied.").arg(title),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, page);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(Texts::tr("Apply them now?"));
    box.button(QMessageBox::Save)->setText(Texts::tr("&Apply"));
    box.button(QMessageBox::Discard)->setText(Texts::tr("&Discard changes"));
    box.button(QMessageBox::Cancel)->setText(Texts::tr("&Stay on this page"));
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
    case QMessageBox::Save:
        return ChangesAnswer::Apply;
    case QMessageBox::Discard:
        return ChangesAnswer::Discard;
    default:
        return ChangesAnswer::Stay;
    }
}
