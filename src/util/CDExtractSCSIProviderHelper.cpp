// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/CDExtractSCSIProviderHelper.h"

#include "OpticalDrives.h"

#include <QFile>

namespace kruv {

namespace {

std::vector<adapters::OpticalDrive> drivesBelow(const QString &root)
{
    return adapters::opticalDrives(QFile::encodeName(root).toStdString());
}

QString kindText(adapters::DriveKind kind)
{
    switch (kind) {
    case adapters::DriveKind::BluRay:
        return QStringLiteral("Blu-ray");
    case adapters::DriveKind::Dvd:
        return QStringLiteral("DVD");
    case adapters::DriveKind::Cd:
        break;
    }
    return QStringLiteral("CD");
}

} // namespace

CDExtractSCSIProviderHelper::CDExtractSCSIProviderHelper(const QString &bsdName, const QString &root)
    : m_bsdName(bsdName)
    , m_root(root)
{
}

QString CDExtractSCSIProviderHelper::runTask() const
{
    return QString::fromStdString(adapters::providerOfDrive(drivesBelow(m_root), m_bsdName.toStdString()));
}

bool CDExtractSCSIProviderHelper::isKnownProvider(const QString &text)
{
    constexpr int highest = 6;
    const QStringList parts = text.split(u'/');
    bool isNumber = parts.size() == 1;
    const int number = isNumber ? 1 : parts[1].toInt(&isNumber);
    return adapters::isProviderName(text.toStdString()) && parts.size() <= 2 && isNumber && number >= 1 &&
           number <= highest;
}

QStringList CDExtractSCSIProviderHelper::drives(const QString &root)
{
    QStringList found;
    for (const auto &drive : drivesBelow(root)) {
        found.append(
            QStringLiteral("/dev/%1 (%2)").arg(QString::fromStdString(drive.name), kindText(drive.kind)));
    }
    return found;
}

} // namespace kruv
