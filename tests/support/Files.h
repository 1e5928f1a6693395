// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QStringList>
#include <QTemporaryDir>

namespace kruv::test {

/// Whole contents of a file. Throws std::runtime_error naming the file where it can't be read.
QByteArray readFile(const QString &path);
/// Replaces a file. Throws std::runtime_error naming the file where it can't be written.
void writeFile(const QString &path, const QByteArray &bytes);

/// Names of all that lies in a folder, hidden files too.
QStringList namesIn(const QString &folder);

/// A folder that goes away with everything in it.
class TemporaryFolder
{
public:
    TemporaryFolder();

    QString path() const { return m_folder.path(); }
    /// Path of `name` in the folder, whether or not it is there.
    QString file(const QString &name) const { return m_folder.filePath(name); }
    /// Makes a file in the folder and returns its path.
    QString write(const QString &name, const QByteArray &bytes) const;
    /// Makes a folder in the folder and returns its path.
    QString makeFolder(const QString &name) const;

private:
    QTemporaryDir m_folder;
};

} // namespace kruv::test
