// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/TextOutput.h"

#include "base/TextFile.h"
#include "tasks/FileCommit.h"

#include <QFileInfo>

#include <algorithm>

namespace kruv {

TextOutput::TextOutput(const QString &path, const QStringList &aboutFiles)
    : m_path(path)
    , m_aboutFiles(aboutFiles)
    , m_replaces(FileCommit::isTaken(path))
{
}

bool TextOutput::isAbout(const QString &file) const
{
    return std::ranges::any_of(
        m_aboutFiles, [&file](const QString &about) { return QFileInfo(about).canonicalFilePath() == file; });
}

QString TextOutput::write(const QString &text, Content content) const
{
    if (FileCommit::isTaken(m_path)) {
        if (!m_replaces) {
            return tr("a file of that name already exists and was left as it is");
        }
        if (const QString there = QFileInfo(m_path).canonicalFilePath(); !there.isEmpty() && isAbout(there)) {
            return tr("that is one of the files that it is about");
        }
        if (content == Content::LacksFiles) {
            return tr("it lacks files, so the older one was kept");
        }
    }
    return TextFile::write(m_path, text);
}

} // namespace kruv
