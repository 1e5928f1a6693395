// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

/// The folder that holds every external tool by its given name: $KRUV_RESOURCES when set, else the installed
/// `<prefix>/libexec/kruv` beside the program, else the build tree's `resources`.
QString resourcesFolder();

/// Path of one tool in the resources folder, whether or not it is there.
QString toolPath(const QString &toolName);

} // namespace kruv
