// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notificationspage.h"

#include "form.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>

NotificationsPage::NotificationsPage(RealConsole &console)
    : ConsolePage(console, {QStringLiteral("Quota management"), QStringLiteral("Notifications")})
{}

QStringList NotificationsPage::tasks() const
{
    return Form::choices(find<QComboBox>(QStringLiteral("_cronJobsComboBox")));
}

bool NotificationsPage::addTask()
{
    return click(QStringLiteral("_addedTaskToolButton"));
}

bool NotificationsPage::deleteTask()
{
    return click(QStringLiteral("_deleteTaskToolButton"));
}

void NotificationsPage::toggleGroups()
{
    auto *box = find<QCheckBox>(QStringLiteral("_groupsCheckBox"));
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Space);
}

bool NotificationsPage::chooseExpertMode(const QString &line)
{
    auto *mode = find<QRadioButton>(QStringLiteral("_expertRadioButton"));
    mode->setFocus();
    QTest::keyClick(mode, Qt::Key_Space);
    auto *edit = find<QLineEdit>(QStringLiteral("_expertLineEdit"));
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, line);
    return edit->isEnabled() && edit->text() == line;
}

void NotificationsPage::append(Text text, const QString &lines)
{
    auto *edit = find<QPlainTextEdit>(nameOf(text));
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_End, Qt::ControlModifier);
    QApplication::clipboard()->setText(lines);
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
}

QString NotificationsPage::text(Text text) const
{
    return find<QPlainTextEdit>(nameOf(text))->toPlainText();
}

QStringList NotificationsPage::notes() const
{
    QStringList texts;
    for (const char *name :
         {"_dailyRunLabel", "_droppedLinesLabel", "_noTableLabel", "_noCronLabel", "_runNoteLabel"}) {
        const auto *note = find<QLabel>(QLatin1String(name));
        if (note->isVisible())
            texts.append(note->text());
    }
    return texts;
}

QString NotificationsPage::nameOf(Text text) const
{
    switch (text) {
    case Text::Administrators:
        return QStringLiteral("_quotagrpadminsPlainTextEdit");
    case Text::Devices:
        return QStringLiteral("_quotatabPlainTextEdit");
    default:
        return QStringLiteral("_warnquotaconfPlainTextEdit");
    }
}

bool NotificationsPage::click(const QString &button)
{
    auto *found = find<QToolButton>(button);
    if (!found->isEnabled())
        return false;
    QTest::mouseClick(found, Qt::LeftButton);
    return true;
}
