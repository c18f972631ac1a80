// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "filetexts.h"

#include "ui_notificationswidget.h"
#include "warnquotacommand.h"

#include <plaintooltip.h>

#include <QPlainTextDocumentLayout>

namespace
{
/// What toPlainText() gives, with no-break spaces left as they are.
QString textOf(const QTextDocument *document)
{
    QString text = document->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    return text;
}

QTextDocument *newDocument(QObject *owner)
{
    auto *document = new QTextDocument(owner);
    document->setDocumentLayout(new QPlainTextDocumentLayout(document));
    return document;
}
} // namespace

FileTexts::FileTexts(Ui::NotificationsWidget &ui, QObject *owner)
    : _places({{{ui._warnquotaconfPlainTextEdit, &WarnquotaJob::config, newDocument(owner)},
                {ui._quotagrpadminsPlainTextEdit, &WarnquotaJob::adminsFile, newDocument(owner)},
                {ui._quotatabPlainTextEdit, &WarnquotaJob::quotaTab, newDocument(owner)}}})
{}

void FileTexts::show(const WarnquotaJob &run, const QMap<QString, QString> &files)
{
    _run = run;
    QMap<QString, QTextDocument *> documents;
    for (const Place &place : _places) {
        const QString &path = run.*place.path;
        const bool isFirst = !documents.contains(path);
        QTextDocument *&document = documents[path];
        if (isFirst)
            document = place.document;
        document->setDefaultFont(place.edit->font());
        place.edit->setDocument(document);
        if (isFirst)
            place.edit->setPlainText(files.value(path));
        place.edit->setToolTip(plainToolTip(path));
    }
    updateReadOnly();
}

void FileTexts::setEditable(bool editable)
{
    _isEditable = editable;
    updateReadOnly();
}

void FileTexts::updateReadOnly()
{
    for (const Place &place : _places)
        place.edit->setReadOnly(!_isEditable || !WarnquotaCommand::isPlainPath(_run.*place.path));
}

QMap<QString, QString> FileTexts::edited() const
{
    QMap<QString, QString> texts;
    for (const Place &place : _places)
        if (place.edit->document()->isModified())
            texts.insert(_run.*place.path, textOf(place.edit->document()));
    return texts;
}

QVector<QMetaObject::Connection> FileTexts::connectChanges(QObject *context, const std::function<void()> &changed) const
{
    QVector<QMetaObject::Connection> connections;
    for (const Place &place : _places)
        connections += QObject::connect(place.edit, &QPlainTextEdit::textChanged, context, changed);
    return connections;
}
