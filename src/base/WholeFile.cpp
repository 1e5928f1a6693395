// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/WholeFile.h"

#include "base/SystemError.h"

#include <QSaveFile>

#include <cerrno>
#include <unistd.h>

namespace kruv::WholeFile {

QString write(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    // Committing would pass over what fails in the last flush, and leave an empty file.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        return file.errorString();
    }
    if (fsync(file.handle()) != 0) {
        return systemErrorText(errno);
    }
    return file.commit() ? QString() : file.errorString();
}

} // namespace kruv::WholeFile
