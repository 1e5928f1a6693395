// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

namespace kruv {

/// The program to start for a tool of the resources folder: `launchPath` itself, or the real flac where our
/// flac adapter would call it with the very same arguments. Encoding ten thousand files then costs ten
/// thousand program starts less.
QString directProgram(const QString &launchPath, const QStringList &arguments);

} // namespace kruv
