// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/DiscArbitration.h"

#include "platform/MountTable.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QFileInfo>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <unistd.h>
#include <utility>

namespace kruv {

namespace {

const QString devices = QStringLiteral("/dev/");
const QString audioDisc = QStringLiteral("cdda:host=");
constexpr int unanswered = -1;

QDBusMessage diskCall(const QString &bsdName, const QString &method, const QVariantMap &options)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.UDisks2"),
                                       QStringLiteral("/org/freedesktop/UDisks2/block_devices/") + bsdName,
                                       QStringLiteral("org.freedesktop.UDisks2.Filesystem"), method);
    call << options;
    call.setInteractiveAuthorizationAllowed(true);
    return call;
}

QString audioDiscAddress(const QString &bsdName)
{
    return QStringLiteral("cdda://%1/").arg(bsdName);
}

QString lastPart(const QString &path)
{
    return path.section(u'/', -1, -1, QString::SectionSkipEmpty);
}

} // namespace

DiscArbitration::Platform DiscArbitration::desktop()
{
    Platform platform;
    platform.gvfsFolder =
        qEnvironmentVariable("XDG_RUNTIME_DIR", QStringLiteral("/run/user/%1").arg(getuid())) +
        QStringLiteral("/gvfs");
    return platform;
}

DiscArbitration::DiscArbitration(Platform platform)
    : m_platform(std::move(platform))
{
}

DiscArbitration::~DiscArbitration()
{
    for (QDBusPendingCall &mount : m_mountsUnderWay) {
        mount.waitForFinished();
    }
}

QString DiscArbitration::discIdForVolumePath(const QString &folder) const
{
    const QString name = lastPart(folder);
    if (name.startsWith(audioDisc)) {
        return name.mid(audioDisc.size());
    }
    if (folder.startsWith(devices)) {
        return folder.mid(devices.size());
    }
    const auto mounts = MountTable::read(m_platform.root);
    // What was mounted last on a folder hides what was there before.
    const auto mount = std::find_if(mounts.crbegin(), mounts.crend(),
                                    [&folder](const auto &each) { return each.point == folder; });
    return mount != mounts.crend() && mount->source.startsWith(devices) ? mount->source.mid(devices.size())
                                                                        : QString();
}

QString DiscArbitration::discName(const QString &folder)
{
    const bool isNamed = !lastPart(folder).startsWith(audioDisc) && !folder.startsWith(devices);
    return isNamed ? lastPart(folder) : QStringLiteral("Audio CD");
}

bool DiscArbitration::isMounted(const QString &bsdName) const
{
    const auto mounts = MountTable::read(m_platform.root);
    return std::ranges::any_of(mounts,
                               [&bsdName](const auto &each) { return each.source == devices + bsdName; });
}

bool DiscArbitration::isInDesktopView(const QString &bsdName) const
{
    return QFileInfo::exists(m_platform.gvfsFolder + u'/' + audioDisc + bsdName);
}

bool DiscArbitration::unMountDisc(const QString &bsdName)
{
    const auto note = [this](QSet<QString> &taken, const QString &disc) {
        const std::lock_guard lock(m_lock);
        taken.insert(disc);
    };
    int status = 0;
    if (isInDesktopView(bsdName)) {
        note(m_desktopViewsTaken, bsdName);
        status = unmountDesktopView(bsdName);
    }
    if (isMounted(bsdName)) {
        note(m_fileSystemsTaken, bsdName);
        const int fileSystem = unmountFileSystem(bsdName);
        status = status == 0 ? fileSystem : status;
    }
    if (status != 0) {
        std::fprintf(stderr, "Unmount failed with code '%d'.\n", status);
    }
    return status == 0;
}

int DiscArbitration::unmountFileSystem(const QString &bsdName) const
{
    const QDBusMessage call = diskCall(bsdName, QStringLiteral("Unmount"), {{QStringLiteral("force"), true}});
    const QDBusMessage answer = m_platform.systemBus().call(call, QDBus::Block, m_platform.timeout);
    return answer.type() == QDBusMessage::ErrorMessage ? static_cast<int>(QDBusError(answer).type()) : 0;
}

int DiscArbitration::unmountDesktopView(const QString &bsdName) const
{
    QProcess gio;
    gio.setStandardInputFile(QProcess::nullDevice());
    gio.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    gio.start(m_platform.gio, {QStringLiteral("mount"), QStringLiteral("--unmount"),
                               QStringLiteral("--force"), audioDiscAddress(bsdName)});
    const bool ended = gio.waitForFinished(m_platform.timeout) && gio.error() == QProcess::UnknownError;
    return ended ? gio.exitCode() : unanswered;
}

void DiscArbitration::mountDisc(const QString &bsdName)
{
    const std::lock_guard lock(m_lock);
    if (m_desktopViewsTaken.remove(bsdName)) {
        QProcess::startDetached(m_platform.gio, {QStringLiteral("mount"), audioDiscAddress(bsdName)});
    }
    if (m_fileSystemsTaken.remove(bsdName)) {
        const QDBusMessage call = diskCall(bsdName, QStringLiteral("Mount"), {});
        m_mountsUnderWay.append(m_platform.systemBus().asyncCall(call, m_platform.timeout));
    }
}

} // namespace kruv
