// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

namespace kruv {

/// Names optical drives the way the extraction tool is told of them: by the kind of the best disc the drive
/// takes, and its number from the second drive of that kind on.
class CDExtractSCSIProviderHelper
{
public:
    /// `bsdName` is the drive's device name ("sr0"); `root` that of /sys and /run, empty for the real system.
    explicit CDExtractSCSIProviderHelper(const QString &bsdName, const QString &root = {});

    /// "IODVDServices/2", say; empty where there is no such drive.
    QString runTask() const;

    /// The names that a person may fix in the settings.
    static bool isKnownProvider(const QString &text);
    /// Device files of this machine's drives with what they read: "/dev/sr0 (DVD)".
    static QStringList drives(const QString &root = {});

private:
    const QString m_bsdName;
    const QString m_root;
};

} // namespace kruv
