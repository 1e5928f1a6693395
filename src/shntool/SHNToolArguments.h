// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

/// The command lines that shntool is run with. `format` is an extension in lower case.
namespace kruv::SHNToolArguments {

/// Of "trim", "pad" and "strip".
QStringList eachFile(QStringView word, const QString &folder, const QString &format,
                     const QStringList &files);
/// The output is "joined.<format>".
QStringList join(const QString &folder, const QString &format, const QStringList &files);
QStringList split(const QString &splitPoints, const QString &folder, const QString &format,
                  const QString &file);

} // namespace kruv::SHNToolArguments
