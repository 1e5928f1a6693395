// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/BatteryWatch.h"
#include "platform/ColorScheme.h"
#include "platform/DesktopNotifier.h"
#include "platform/LauncherBadge.h"
#include "platform/PrivateBus.h"
#include "platform/SleepInhibitor.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"

#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <memory>
#include <unistd.h>
#include <utility>

namespace kruv::test {

namespace {

/// Stands in for the desktop's services: notes each call, and answers it, refuses it or stays silent.
class FakeDesktop : public QObject, protected QDBusContext
{
    Q_OBJECT
public:
    enum Manner { Answers, AnswersLater };
    Manner manner = Answers;
    QList<QDBusMessage> calls;

    QStringList methods() const
    {
        QStringList names;
        for (const QDBusMessage &call : calls) {
            names.append(call.member());
        }
        return names;
    }

protected:
    uint take()
    {
        calls.append(message());
        if (manner == AnswersLater) {
            setDelayedReply(true);
        }
        return m_cookie;
    }

    const uint m_cookie = 77;
};

class FakeNotifications : public FakeDesktop
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public Q_SLOTS:
    uint Notify(const QString &, uint, const QString &, const QString &, const QString &, const QStringList &,
                const QVariantMap &, int)
    {
        return take();
    }
};

/// Inhibits sleep for as long as the other end of a pipe is open.
class FakeLogin : public FakeDesktop
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")
public:
    FakeLogin() { EXPECT_EQ(pipe2(m_ends, O_CLOEXEC | O_NONBLOCK), 0); }
    ~FakeLogin() override
    {
        close(m_ends[0]);
        giveAway();
    }
    /// The end that others are to hold.
    QDBusUnixFileDescriptor held() const { return QDBusUnixFileDescriptor(m_ends[1]); }
    void giveAway() { close(std::exchange(m_ends[1], -1)); }
    bool isInhibited() const
    {
        char byte = 0;
        return read(m_ends[0], &byte, 1) != 0; // 0 is the end
    }

    Q_SLOT QDBusUnixFileDescriptor Inhibit(const QString &, const QString &, const QString &, const QString &)
    {
        take();
        const QDBusUnixFileDescriptor end = held();
        if (manner == Answers) {
            giveAway();
        }
        return end;
    }

private:
    int m_ends[2] = {-1, -1};
};

const QString upowerPath = QStringLiteral("/org/freedesktop/UPower");

/// A laptop whose plug is pulled.
class FakeUPower : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.UPower")
    Q_PROPERTY(bool OnBattery READ onBattery)
public:
    bool onBattery() const { return true; }
};

class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public Q_SLOTS:
    QDBusVariant Read(const QString &space, const QString &key)
    {
        const bool known = space == u"org.freedesktop.appearance" && key == u"color-scheme";
        return QDBusVariant(QVariant::fromValue(QDBusVariant(known ? 1U : 7U)));
    }
};

class FakeLauncher : public QObject
{
    Q_OBJECT
public:
    explicit FakeLauncher(QDBusConnection bus)
    {
        connected = bus.connect(QString(), QString(), QStringLiteral("com.canonical.Unity.LauncherEntry"),
                                QStringLiteral("Update"), this, SLOT(update(QString, QVariantMap)));
    }
    bool connected = false;
    QStringList addresses;
    QList<QVariantMap> updates;

public Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc needs it
    void update(const QString &address, const QVariantMap &properties)
    {
        addresses.append(address);
        updates.append(properties);
    }
};

/// Puts a service on the bus, or takes it off, and returns when the bus knows.
class DesktopServicesTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_bus.runs()) << "dbus-daemon is needed"; }

    template <typename Service> std::unique_ptr<Service> serve(const QString &name, const QString &path)
    {
        auto service = std::make_unique<Service>();
        QDBusConnection theirs = m_bus.theirs();
        EXPECT_TRUE(theirs.registerObject(path, service.get(), QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(theirs.registerService(name));
        return service;
    }
    std::unique_ptr<FakeNotifications> serveNotifications()
    {
        return serve<FakeNotifications>(m_notifications, QStringLiteral("/org/freedesktop/Notifications"));
    }
    std::unique_ptr<FakeLogin> serveLogin()
    {
        return serve<FakeLogin>(QStringLiteral("org.freedesktop.login1"),
                                QStringLiteral("/org/freedesktop/login1"));
    }

    PrivateBus m_bus;
    const QString m_notifications = QStringLiteral("org.freedesktop.Notifications");
};

TEST_F(DesktopServicesTest, NotifiesWhileTheServiceIsThere)
{
    DesktopNotifier notifier(m_bus.ours());
    EXPECT_FALSE(notifier.notify(QStringLiteral("too early")));
    const auto service = serveNotifications();
    ASSERT_TRUE(waitUntil([&] { return notifier.notify(QStringLiteral("Done <b>100 %</b>")); }));
    ASSERT_TRUE(waitUntil([&] { return !service->calls.isEmpty(); }));
    const QDBusMessage call = service->calls.constFirst();
    EXPECT_EQ(call.signature(), QStringLiteral("susssasa{sv}i"));
    EXPECT_EQ(call.arguments().value(3).toString(), QStringLiteral("Done <b>100 %</b>"));

    ASSERT_TRUE(m_bus.theirs().unregisterService(m_notifications));
    EXPECT_TRUE(waitUntil([&] { return !notifier.notify(QStringLiteral("late")); }));
}

TEST_F(DesktopServicesTest, InhibitsUntilReleased)
{
    const auto service = serveLogin();
    SleepInhibitor inhibitor(m_bus.ours());
    const auto id = inhibitor.createAssertion(QStringLiteral("job"));
    ASSERT_TRUE(id && waitUntil([&] { return service->calls.size() == 1; }));
    EXPECT_EQ(service->calls[0].arguments(),
              QVariantList({QStringLiteral("sleep:idle"), QStringLiteral("Kruv"), QStringLiteral("job"),
                            QStringLiteral("block")}));
    serveEvents();
    inhibitor.releaseAssertion(*id + 1);
    EXPECT_TRUE(service->isInhibited());
    inhibitor.releaseAssertion(*id);
    inhibitor.releaseAssertion(*id);
    EXPECT_TRUE(waitUntil([&] { return !service->isInhibited(); }));
}

TEST_F(DesktopServicesTest, GivesBackAnAssertionReleasedBeforeTheAnswer)
{
    const auto service = serveLogin();
    service->manner = FakeDesktop::AnswersLater;
    SleepInhibitor inhibitor(m_bus.ours());
    const auto id = inhibitor.createAssertion(QStringLiteral("job"));
    ASSERT_TRUE(id && waitUntil([&] { return service->calls.size() == 1; }));
    inhibitor.releaseAssertion(*id);
    EXPECT_TRUE(m_bus.theirs().send(service->calls[0].createReply(QVariant::fromValue(service->held()))));
    service->giveAway();
    EXPECT_TRUE(waitUntil([&] { return !service->isInhibited(); }));
}

TEST_F(DesktopServicesTest, FollowsTheDesktopIntoTheDarkAndBack)
{
    auto portal = std::make_unique<FakePortal>();
    QDBusConnection theirs = m_bus.theirs();
    ASSERT_TRUE(theirs.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), portal.get(),
                                      QDBusConnection::ExportAllContents));
    ASSERT_TRUE(theirs.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    ColorScheme scheme(m_bus.ours());
    QList<bool> told;
    QObject::connect(&scheme, &ColorScheme::darkWanted, &scheme, [&](bool dark) { told.append(dark); });
    ASSERT_TRUE(waitUntil([&] { return told.size() == 1; }));
    const auto changed = [&theirs](const char *key) {
        QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                                         QStringLiteral("org.freedesktop.portal.Settings"),
                                                         QStringLiteral("SettingChanged"));
        signal << QStringLiteral("org.freedesktop.appearance") << QString::fromLatin1(key)
               << QVariant::fromValue(QDBusVariant(2U));
        theirs.send(signal);
    };
    // The bus may learn only after the answer that the signal is wanted.
    ASSERT_TRUE(waitUntil([&] {
        changed("accent-color");
        changed("color-scheme");
        return told.size() > 1;
    }));
    EXPECT_TRUE(told[0]);
    EXPECT_FALSE(told[1]);
}

TEST_F(DesktopServicesTest, HearsOfTheBattery)
{
    FakeUPower upower;
    QDBusConnection theirs = m_bus.theirs();
    ASSERT_TRUE(theirs.registerObject(upowerPath, &upower, QDBusConnection::ExportAllContents));
    ASSERT_TRUE(theirs.registerService(QStringLiteral("org.freedesktop.UPower")));
    BatteryWatch battery(m_bus.ours());
    QList<bool> told;
    QObject::connect(&battery, &BatteryWatch::onBatteryChanged, &battery, [&](bool on) { told.append(on); });
    ASSERT_TRUE(waitUntil([&] { return told.size() == 1; }));
    const auto changed = [&theirs](const char *interface, const QVariantMap &values) {
        QDBusMessage signal =
            QDBusMessage::createSignal(upowerPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                       QStringLiteral("PropertiesChanged"));
        signal << QString::fromLatin1(interface) << values << QStringList();
        theirs.send(signal);
    };
    // The bus may learn only after the answer that the signal is wanted.
    ASSERT_TRUE(waitUntil([&] {
        changed("org.freedesktop.UPower.Device", {{QStringLiteral("OnBattery"), true}});
        changed("org.freedesktop.UPower", {{QStringLiteral("LidIsClosed"), true}});
        changed("org.freedesktop.UPower", {{QStringLiteral("OnBattery"), false}});
        return told.size() > 1;
    }));
    EXPECT_TRUE(told[0]);
    EXPECT_FALSE(told[1]);
}

TEST_F(DesktopServicesTest, SendsGatheredBadgesAndClearsTheLast)
{
    const FakeLauncher launcher(m_bus.theirs());
    ASSERT_TRUE(launcher.connected);
    {
        LauncherBadge badge(m_bus.ours());
        constexpr int jobs = 1000;
        for (int count = 1; count <= jobs; ++count) {
            badge.setCount(count);
            badge.setProgress(static_cast<double>(count) / (2 * jobs));
        }
        ASSERT_TRUE(waitUntil([&] { return !launcher.updates.isEmpty(); }));
        const QVariantMap shown{{QStringLiteral("count"), qint64{jobs}},
                                {QStringLiteral("count-visible"), true},
                                {QStringLiteral("progress"), 0.5},
                                {QStringLiteral("progress-visible"), true}};
        EXPECT_EQ(launcher.updates, QList<QVariantMap>({shown}));
        EXPECT_EQ(launcher.updates[0].value(QStringLiteral("count")).typeId(), QMetaType::LongLong);
        EXPECT_EQ(launcher.addresses[0], QStringLiteral("application://org.kruv.Kruv.desktop"));
    }
    ASSERT_TRUE(waitUntil([&] { return launcher.updates.size() > 1; }));
    EXPECT_EQ(launcher.updates[1].value(QStringLiteral("count-visible")), QVariant(false));
    EXPECT_EQ(launcher.updates[1].value(QStringLiteral("progress-visible")), QVariant(false));
}

TEST(DesktopServicesWithoutABusTest, DoLessAndSayNothing)
{
    const QDBusConnection none(QStringLiteral("no such connection"));
    DesktopNotifier notifier(none);
    SleepInhibitor inhibitor(none);
    LauncherBadge badge(none);
    badge.setCount(3);
    badge.setProgress(2.0);
    testing::internal::CaptureStderr();
    serveEvents();
    EXPECT_FALSE(notifier.notify(QStringLiteral("Done")));
    EXPECT_FALSE(inhibitor.createAssertion(QStringLiteral("job")));
    inhibitor.releaseAssertion(1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace

} // namespace kruv::test

#include "DesktopServicesTest.moc"
