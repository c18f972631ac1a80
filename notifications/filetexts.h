// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "warnquotajob.h"

#include <QMap>
#include <QMetaObject>
#include <QString>
#include <QVector>

#include <array>
#include <functional>

class QPlainTextEdit;
class QTextDocument;
namespace Ui
{
class NotificationsWidget;
}

/// The part of the page that shows and takes the texts of the three files that one run uses. Files of one path are one
/// text, shown in several places.
class FileTexts
{
public:
    /// Of a form that is set up, and outlives this. `owner` outlives the form's widgets.
    FileTexts(Ui::NotificationsWidget &ui, QObject *owner);

    /// The texts, by path, of the files of a run.
    void show(const WarnquotaJob &run, const QMap<QString, QString> &files);
    /// Texts stay readable and scrollable where they cannot be edited: so is one of which cron's shell would open
    /// another file.
    void setEditable(bool editable);
    /// The texts that were edited, by path.
    QMap<QString, QString> edited() const;

    QVector<QMetaObject::Connection> connectChanges(QObject *context, const std::function<void()> &changed) const;

private:
    struct Place
    {
        QPlainTextEdit *edit;
        QString WarnquotaJob::*path;
        QTextDocument *document; // shown here, unless a place before shows the same path
    };

    void updateReadOnly();

    std::array<Place, 3> _places;
    WarnquotaJob _run;
    bool _isEditable = false;
};
