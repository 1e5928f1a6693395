// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/DiscArbitration.h"

#include "platform/PrivateBus.h"
#include "support/Files.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDir>

#include <atomic>
#include <chrono>
#include <future>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace kruv::test {

namespace {

/// The disks' service of the desktop: notes what is asked of it, and refuses when told to.
class Disks : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override
    {
        calls << message.path().section(u'/', -1) + u' ' + message.member();
        return bus.send(refuses ? message.createErrorReply(QDBusError::AccessDenied, u"busy"_s)
                                : message.createReply());
    }
    QStringList calls;
    std::atomic<bool> refuses = false;
};

} // namespace

TEST(DiscArbitration, TakesMountedDiscsOffThroughTheDisksService)
{
    const TemporaryFolder folder;
    DiscArbitration::Platform platform;
    platform.root = folder.path();
    PrivateBus bus;
    ASSERT_TRUE(bus.runs());
    Disks disks;
    ASSERT_TRUE(bus.theirs().registerService(u"org.freedesktop.UDisks2"_s));
    bus.theirs().registerVirtualObject(u"/org"_s, &disks, QDBusConnection::SubPath);
    QDir(platform.root).mkpath(u"proc/self"_s);
    writeFile(platform.root + u"/proc/self/mountinfo"_s, "1 1 11:1 / /media/D ro - iso9660 /dev/sr1 ro\n");
    platform.systemBus = [&bus] { return bus.ours(); };
    // The service answers on the main thread, and a job has one of its own.
    auto job = std::async(std::launch::async, [&] {
        DiscArbitration arbitration(platform);
        EXPECT_TRUE(arbitration.unMountDisc(u"sr1"_s));
        arbitration.mountDisc(u"sr1"_s); // is over when the arbitration goes
        EXPECT_TRUE(arbitration.unMountDisc(u"sr0"_s)) << "nothing of it is mounted";
        arbitration.mountDisc(u"sr0"_s);
        disks.refuses = true;
        EXPECT_FALSE(arbitration.unMountDisc(u"sr1"_s));
    });
    ASSERT_TRUE(waitUntil([&job] { return job.wait_for(0s) == std::future_status::ready; }));
    EXPECT_EQ(disks.calls, (QStringList{u"sr1 Unmount"_s, u"sr1 Mount"_s, u"sr1 Unmount"_s}));
}

} // namespace kruv::test
