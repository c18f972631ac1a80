// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// In which language the console speaks.
namespace Language
{
/// Installs the texts of the first language of the environment (of LANGUAGE, else of the locale) that the console has a
/// catalogue for: its own, the framework's and Qt's, so that no window speaks two. English needs none, and ends the
/// search. Needs the application object, to which the texts belong.
void install();
} // namespace Language
