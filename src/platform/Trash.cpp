// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/Trash.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace kruv {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::Trash)
};

/// Makes sure that the person's trash is there, without which files would be moved into the current folder.
QString prepareTrash()
{
    const QString dataHome = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const bool isPlaced =
        !qEnvironmentVariableIsEmpty("XDG_DATA_HOME") || !qEnvironmentVariableIsEmpty("HOME");
    if (!isPlaced || !QDir::isAbsolutePath(dataHome)) {
        return Text::tr("there is no trash, as neither HOME nor XDG_DATA_HOME names a folder");
    }
    const QString trash = dataHome + QStringLiteral("/Trash");
    constexpr auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    QDir folder;
    if (!QFileInfo(trash).isDir() && (!folder.mkpath(dataHome) || !folder.mkdir(trash, ownerOnly))) {
        return Text::tr("the trash %1 can't be made").arg(trash);
    }
    return {};
}

} // namespace

QString moveToTrash(const QString &path)
{
    if (const QString problem = prepareTrash(); !problem.isEmpty()) {
        return problem;
    }
    QFile file(path);
    if (!file.moveToTrash()) {
        return Text::tr("it could not be moved to the trash (%1)").arg(file.errorString());
    }
    return QFile::exists(file.fileName()) ? QString() : Text::tr("it did not arrive in the trash");
}

} // namespace kruv
