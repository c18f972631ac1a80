// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "noteplugin.h"

#include "notemodule.h"

NotePlugin::NotePlugin(QObject *parent)
    : Plugin(parent)
{
    setTitle(tr("Note"));
    setDescription(tr("Keeps a note on this computer"));
    appendModule(new NoteModule(this));
}
