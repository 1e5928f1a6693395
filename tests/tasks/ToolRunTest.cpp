// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/ToolRun.h"

#include "base/HeldWork.h"
#include "platform/Resources.h"
#include "support/Engine.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"
#include "tasks/ToolCatalog.h"

#include <QElapsedTimer>
#include <QFile>

#include <atomic>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;
using namespace std::chrono_literals;

namespace {

class ToolRunTest : public testing::Test
{
protected:
    QList<QByteArray> processes() const
    {
        return QFile::exists(marker) ? readFile(marker).trimmed().split('\n') : QList<QByteArray>();
    }
    void expectNoneLeft() const
    {
        for (const QByteArray &process : processes()) {
            EXPECT_TRUE(endsSoon(process)) << process.constData();
        }
    }

    TemporaryFolder folder;
    QString marker = folder.file(u"marker"_s);
};

} // namespace

TEST_F(ToolRunTest, EndsTheToolAndAllThatItLeaves)
{
    enum class Wish { None, Stop, Limit };
    struct Case
    {
        QStringList arguments;
        Wish wish;
        ToolEnd::Kind end;
        qint64 longest; // milliseconds, with room for a busy machine
        QString says = {};
    };
    const QString never = folder.file(u"never"_s);
    const Case cases[] = {
        {{u"leave"_s, marker}, Wish::None, ToolEnd::Kind::Exited, 1500, u"mine"_s},
        {{u"leave"_s, marker, u"away"_s}, Wish::None, ToolEnd::Kind::Exited, 1500, u"mine"_s},
        {{u"stay"_s, marker}, Wish::Stop, ToolEnd::Kind::Ended, 1500},
        {{u"chatter"_s, marker, never}, Wish::Stop, ToolEnd::Kind::Ended, 1500},
        {{u"deaf"_s, marker}, Wish::Stop, ToolEnd::Kind::Ended, 4000},
        {{u"deaf"_s, marker, u"chatter"_s}, Wish::Stop, ToolEnd::Kind::Ended, 4000},
        {{u"stay"_s, marker}, Wish::Limit, ToolEnd::Kind::Ended, 1500},
        {{u"die"_s, u"9"_s}, Wish::None, ToolEnd::Kind::Signalled, 1500},
    };
    for (const Case &tested : cases) {
        SCOPED_TRACE(tested.arguments.join(u' ').toStdString());
        QFile::remove(marker);
        std::stop_source stop;
        std::thread stopper([&] {
            while (tested.wish == Wish::Stop && !stop.stop_requested()) {
                std::this_thread::sleep_for(5ms);
                if (QFile::exists(marker)) {
                    stop.request_stop();
                }
            }
        });
        QElapsedTimer clock;
        clock.start();
        ToolCall call{fakeTool(), tested.arguments};
        call.timeLimit = tested.wish == Wish::Limit ? 300ms : 0ms;
        QString said;
        const ToolEnd end =
            ToolRun(call, stop.get_token()).run([&said](const QString &piece) { said += piece; });
        EXPECT_LT(clock.elapsed(), tested.longest);
        stopper.join();
        EXPECT_EQ(end.kind, tested.end);
        EXPECT_EQ(end.succeeded(), tested.end == ToolEnd::Kind::Exited);
        EXPECT_TRUE(said.startsWith(tested.says)) << said.toStdString();
        expectNoneLeft();
    }
}

TEST_F(ToolRunTest, StandsStillWhilePausedAndNoTimeRuns)
{
    struct Case
    {
        QString mode;
        bool isEnded; // while it is paused
        ToolEnd::Kind end;
    };
    const QString release = folder.file(u"release"_s);
    for (const Case &tested :
         {Case{u"chatter"_s, false, ToolEnd::Kind::Exited}, Case{u"chatter"_s, true, ToolEnd::Kind::Ended},
          Case{u"deaf"_s, true, ToolEnd::Kind::Ended}}) {
        SCOPED_TRACE(tested.mode.toStdString() + (tested.isEnded ? " ended" : ""));
        QFile::remove(marker);
        QFile::remove(release);
        WorkPause pause;
        std::stop_source stop;
        std::atomic<qsizetype> said = 0;
        ToolEnd end;
        std::thread job([&] {
            const HeldWork held(&pause, stop.get_token());
            ToolCall call{fakeTool(), {tested.mode, marker, tested.mode == u"deaf" ? u"chatter"_s : release}};
            call.timeLimit = 10s;
            end =
                ToolRun(call, stop.get_token()).run([&said](const QString &piece) { said += piece.size(); });
        });
        ASSERT_TRUE(waitUntil([&] { return QFile::exists(marker) && said > 1000; }));
        pause.set(true);
        std::this_thread::sleep_for(100ms); // what it had written before is read
        const qsizetype before = said;
        std::this_thread::sleep_for(200ms);
        EXPECT_EQ(said, before);
        if (tested.isEnded) {
            stop.request_stop();
        } else {
            folder.write(u"release"_s, "");
            std::this_thread::sleep_for(100ms);
            EXPECT_EQ(said, before);
            pause.set(false);
        }
        job.join();
        EXPECT_EQ(end.kind, tested.end);
        expectNoneLeft();
    }
}

TEST_F(ToolRunTest, TheTimeOfAPauseIsNotTheTools)
{
    WorkPause pause;
    ToolEnd end;
    const QString release = folder.file(u"release"_s);
    std::thread job([&] {
        const HeldWork held(&pause, {});
        ToolCall call{fakeTool(), {u"wait"_s, marker, release}};
        call.timeLimit = 2s;
        end = ToolRun(call).run([](const QString &) {});
    });
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(marker); }));
    pause.set(true);
    std::this_thread::sleep_for(2500ms);
    folder.write(u"release"_s, "");
    pause.set(false);
    job.join();
    EXPECT_TRUE(end.succeeded());
}

TEST_F(ToolRunTest, ASlowReaderGetsAllThatAToolSaid)
{
    qsizetype length = 0;
    const ToolEnd end = ToolRun({fakeTool(), {u"flood"_s, u"1"_s}}).run([&length](const QString &piece) {
        length += piece.size();
        std::this_thread::sleep_for(50ms); // the tool has ended long before its last words are read
    });
    EXPECT_TRUE(end.succeeded());
    EXPECT_GE(length, 1024 * 1024);
}

TEST_F(ToolRunTest, NothingOutlivesAProgramThatIsKilled)
{
    ASSERT_TRUE(ToolCatalog::isLaunchable(toolPath(u"kruv-adapters"_s))) << "nothing would watch";
    // Nobody but the program minds what such a tool starts.
    const QString script =
        folder.write(u"tool"_s, "#!/bin/sh\ntrap '' TERM\nsleep 300 &\n"
                                "printf '%s\\n' $$ $! > \"$1.part\"\nmv \"$1.part\" \"$1\"\nwait\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
    for (const ToolCall &call : {ToolCall{fakeTool(), {u"deaf"_s, marker}}, ToolCall{script, {marker}}}) {
        QFile::remove(marker);
        const pid_t program = fork();
        if (program == 0) {
            ToolRun(call).run([](const QString &) {});
            _exit(0);
        }
        ASSERT_TRUE(waitUntil([this] { return QFile::exists(marker); }));
        kill(program, SIGKILL);
        waitpid(program, nullptr, 0);
        expectNoneLeft();
    }
}

TEST_F(ToolRunTest, InheritedVariablesKeepTheirBytes)
{
    const EnvironmentVariable latin("KRUV_TEST_BYTES", "caf\xe9");
    const QString file = folder.file(u"out"_s);
    const QString script = folder.write(u"tool"_s, "#!/bin/sh\nprintf %s \"$KRUV_TEST_BYTES\" > \"$1\"\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
    ToolCall call{script, {file}};
    call.environment = QProcessEnvironment::systemEnvironment();
    EXPECT_TRUE(ToolRun(call).run([](const QString &) {}).succeeded());
    EXPECT_EQ(readFile(file), "caf\xe9");
}
