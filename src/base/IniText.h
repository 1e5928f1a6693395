// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QSettings>

/// Settings in INI form. What the library writes in that form by itself becomes an empty file on a full disk.
namespace kruv::IniText {

/// A format whose files are replaced whole or not at all.
QSettings::Format settingsFormat();

} // namespace kruv::IniText
