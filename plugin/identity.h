// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// Names under which the desktop knows this plug-in. They were given, not chosen here, and others rely on them: none
/// may change. The interface identifier is one more; every plug-in of the framework has it (KRA_PLUGIN_IID).
namespace Identity
{
/// The catalogues of the texts are "kra-quota-plugin_<language>.qm", in this folder.
constexpr const char *Catalogue = "kra-quota-plugin";
constexpr const char *CatalogueFolder = "/usr/share/zel/translations/zel-admin-tev";
} // namespace Identity
