// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

class QMimeData;

namespace kruv::FileDrop {

/// Paths of the local files and folders among what is dropped.
QStringList localPaths(const QMimeData &dropped);

/// The path that an argument of the command line means: a path, from the working folder, or a file:// URL.
QString pathOfArgument(const QString &argument);

} // namespace kruv::FileDrop
