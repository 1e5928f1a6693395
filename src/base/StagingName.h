// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringView>

/// Names of what the program has on the disk only while it works.
namespace kruv::StagingName {

/// A name for a folder that outputs are made in, another one each time.
QString random();
/// Matches what random() gives, in a file dialog's way.
QString pattern();
/// Whether a folder of that name is one of these, in use or left behind.
bool isFolder(QStringView name);

/// Takes them out of the paths in a tool's words, so that these are the names that the files will have.
void removeFolders(QString &text);

/// Whether a file of that name is audio on its way between two steps, "Kruv-<session>-<8 characters>.wav".
/// Killed runs of earlier versions left such beside people's music.
bool isTemporaryFile(QStringView name);

} // namespace kruv::StagingName
