// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <plugin.h>

namespace
{

/// Says whether any code of this library ever ran.
struct Trace
{
    Trace() { qputenv("KRA_FOREIGN_CODE_RAN", "yes"); }
};
const Trace trace;

} // namespace

/// A plug-in of another program that happens to stand in the folder.
class ForeignPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.player/2.1")
};

#include "foreign.moc"
