// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/WholeFile.h"

#include "base/SystemError.h"

#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace kruv::WholeFile {

QString write(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    const auto wasWritten = [&] { // the second piece of a full disk tells why the first was short
        qint64 written = 0;
        qint64 piece = 1;
        while (written < bytes.size() && piece > 0) {
            piece = file.write(bytes.constData() + written, bytes.size() - written);
            written += std::max<qint64>(piece, 0);
        }
        return written == bytes.size();
    };
    // Committing would pass over what fails in the last flush, and leave an empty file.
    if (!file.open(QIODevice::WriteOnly) || !wasWritten() || !file.flush()) {
        return file.errorString();
    }
    if (fsync(file.handle()) != 0) {
        return systemErrorText(errno);
    }
    errno = 0;
    if (file.commit()) {
        return {};
    }
    return errno != 0 ? systemErrorText(errno) : file.errorString(); // which often is not known
}

} // namespace kruv::WholeFile
