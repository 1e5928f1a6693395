// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/TemporaryFile.h"

#include "base/Util.h"

#include <QFile>

namespace kruv {

TemporaryFile::TemporaryFile(const QString &folder, const QString &extension)
    : m_path(Util::generateTempFileName(folder, extension))
{
}

TemporaryFile::~TemporaryFile()
{
    if (!m_kept) {
        QFile::remove(m_path);
    }
}

} // namespace kruv
