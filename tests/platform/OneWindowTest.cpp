// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/OneWindow.h"

#include "platform/PrivateBus.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"

#include <QDBusMessage>
#include <QDir>
#include <QUrl>

#include <chrono>
#include <future>
#include <gtest/gtest.h>
#include <memory>

namespace kruv::test {

using namespace Qt::Literals::StringLiterals;

TEST(OneWindow, TakesWhatLaterStartsHandIt)
{
    const PrivateBus bus;
    if (!bus.runs()) {
        GTEST_SKIP() << "dbus-daemon can't be started here";
    }
    // A later start waits for its answer, so it needs a thread of its own.
    const auto later = [&bus](auto call) {
        auto answer = std::async(std::launch::async, [&] { return call(OneWindow(bus.theirs())); });
        EXPECT_TRUE(
            waitUntil([&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
        return answer.get();
    };
    const QStringList files{u"/music/it's 100% \u00e9 #1?.flac"_s, u"here.wav"_s, u"file:///a%20b.wav"_s};
    EXPECT_FALSE(later([&](const OneWindow &start) { return start.hand({}, files); })) << "nobody is there";

    QStringList events;
    auto window = std::make_unique<OneWindow>(bus.ours());
    QObject::connect(window.get(), &OneWindow::wanted, [&] { events.append(u"wanted"_s); });
    QObject::connect(window.get(), &OneWindow::tabWanted, [&](const QString &tab) { events.append(tab); });
    QObject::connect(window.get(), &OneWindow::filesGiven, [&](const QStringList &given) {
        for (const QString &each : given) {
            events.append(QUrl(each).toLocalFile());
        }
    });
    window->setRunTaker(
        [](std::int64_t run, const QString &journal) { return run == 7 && journal == u"/j.db"; });
    ASSERT_TRUE(window->open());
    EXPECT_FALSE(window->isOpenElsewhere());
    EXPECT_FALSE(OneWindow(bus.theirs()).open()) << "there is one";

    EXPECT_TRUE(later([&](const OneWindow &start) { return start.hand(u"fix SBE"_s, files); }));
    EXPECT_EQ(events, QStringList({u"fix SBE"_s, u"wanted"_s, files[0], QDir().absoluteFilePath(files[1]),
                                   u"/a b.wav"_s}));
    events.clear();
    EXPECT_TRUE(later([&](const OneWindow &) { // as a desktop does for an action of the entry
        QDBusMessage action = QDBusMessage::createMethodCall(
            u"org.kruv.Kruv"_s, u"/org/kruv/Kruv"_s, u"org.freedesktop.Application"_s, u"ActivateAction"_s);
        action.setArguments({u"encode"_s, QVariantList(), QVariantMap()});
        return bus.theirs().call(action).type() == QDBusMessage::ReplyMessage;
    }));
    EXPECT_EQ(events, QStringList({u"wanted"_s, u"encode"_s}));
    EXPECT_TRUE(later([](const OneWindow &start) { return start.handRun(7, u"/j.db"_s); }));
    EXPECT_FALSE(later([](const OneWindow &start) { return start.handRun(7, u"/other.db"_s); }));
    window.reset();
    EXPECT_FALSE(later([](const OneWindow &start) { return start.hand({}, {}); })) << "it was closed";
}

} // namespace kruv::test
