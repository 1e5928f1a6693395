// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/Util.h"

#include "base/Preferences.h"
#include "base/SystemError.h"
#include "platform/SessionId.h"
#include "platform/Trash.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cerrno>
#include <stdexcept>
#include <unistd.h>

namespace kruv::Util {

namespace {

void require(bool condition, const char *text)
{
    if (!condition) {
        throw std::invalid_argument(std::string("Invalid parameter not satisfying: ") + text);
    }
}

QString nameTemplate(const QString &folder, const QString &extension)
{
    const QString directory = folder.isEmpty() ? QDir::tempPath() : folder;
    require(!directory.isEmpty(), "nil != directory");
    require(!extension.isEmpty(), "nil != extension");
    return QStringLiteral("%1/%2-%3-XXXXXXXX.%4")
        .arg(directory, QStringLiteral("Kruv"),
             QStringLiteral("%1").arg(sessionId(), 8, 16, QLatin1Char('0')), extension);
}

[[noreturn]] void failWithErrno(int error, const QString &what)
{
    throw std::runtime_error(what.arg(systemErrorText(error)).toStdString());
}

} // namespace

QString generateTempFileName(const QString &folder, const QString &extension)
{
    QByteArray path = QFile::encodeName(nameTemplate(folder, extension));
    constexpr int randomCharacters = 8;
    constexpr int longestPath = 1023;
    const auto suffixLength = static_cast<int>(QFile::encodeName(extension).size()) + 1;
    if (path.size() > longestPath) {
        errno = ENAMETOOLONG;
        const int error = errno;
        failWithErrno(error, QCoreApplication::translate("Util", "Unable to create a temporary file: %1"));
    }
    // mkstemps() fills in six characters; the two before them get theirs from the process, so that all eight
    // vary.
    char *const firstRandom = path.data() + path.size() - suffixLength - randomCharacters;
    constexpr char digits[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    firstRandom[0] = digits[static_cast<unsigned>(getpid()) % 36U];
    firstRandom[1] = digits[static_cast<unsigned>(getpid()) / 36U % 36U];
    const int descriptor = mkstemps(path.data(), suffixLength);
    if (descriptor < 0) {
        const int error = errno;
        failWithErrno(error, QCoreApplication::translate("Util", "Unable to create a temporary file: %1"));
    }
    if (close(descriptor) != 0) {
        const int error = errno;
        failWithErrno(error, QCoreApplication::translate("Util", "Unable to close the temporary file: %1"));
    }
    return QFile::decodeName(path);
}

bool deletesToTrash(const Preferences &preferences)
{
    return preferences.integer(QStringLiteral("trashOrDelete")) != 0;
}

QString deleteFile(const QString &path, const Preferences &preferences)
{
    QFile file(path);
    QString problem;
    if (deletesToTrash(preferences)) {
        problem = moveToTrash(path);
    } else if (!file.remove()) {
        problem = QCoreApplication::translate("Util", "it could not be deleted (%1)").arg(file.errorString());
    }
    return QFile::exists(path) ? problem : QString();
}

} // namespace kruv::Util
