// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notetasks.h"

#include "notedata.h"
#include "notefile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace
{

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(NoteTasks)
};

} // namespace

ReadNote::ReadNote(Element *element)
    : ReadPropertyHeavyTask(element)
{
    setDescription(Texts::tr("Read the note"));
}

void ReadNote::run()
{
    auto data = std::make_unique<NoteData>();
    QFile file(noteFileName());
    if (file.open(QIODevice::ReadOnly)) {
        data->note = QString::fromUtf8(file.readAll());
    } else if (file.exists()) {
        setStatus(Failed);
        setMessage(Texts::tr("%1 cannot be read: %2").arg(file.fileName(), file.errorString()));
    }
    setElementData(std::move(data));
    ReadPropertyHeavyTask::run();
}

WriteNote::WriteNote(Element *element, std::unique_ptr<ElementData> data)
    : UpdateTask(element, std::move(data))
{
    setDescription(Texts::tr("Write the note"));
}

void WriteNote::run()
{
    if (const auto *data = dynamic_cast<const NoteData *>(elementData()))
        write(data->note);
    else
        setStatus(Failed);
    UpdateTask::run();
}

void WriteNote::write(const QString &note)
{
    const QString fileName = noteFileName();
    QDir().mkpath(QFileInfo(fileName).path());
    reportDetail(Texts::tr("Writing %1").arg(fileName));
    QSaveFile file(fileName);
    const QByteArray bytes = note.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        setStatus(Failed);
        setMessage(Texts::tr("%1 cannot be written: %2").arg(fileName, file.errorString()));
    }
}
