// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolDisplay.h"
#include "support/Engine.h"
#include "support/QtPrinters.h"
#include "tasks/KruvAsyncNSTask.h"
#include "tasks/KruvTaskResults.h"

#include <ctime>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

class ShowingTask : public KruvAsyncNSTask
{
public:
    ShowingTask(TaskCompletionSink *queue, const QStringList &arguments)
        : KruvAsyncNSTask(queue, fakeTool(), arguments)
    {
    }

protected:
    void processTaskOutput(const QString &text) override { m_display.read(text); }

private:
    SHNToolDisplay m_display{*this, {"Running: %1%", nullptr, false, true}};
};

} // namespace

TEST(SHNToolDisplay, AFloodCostsTheMainThreadLittle)
{
    const auto secondsUsed = [] {
        timespec used{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
        return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
    };
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    const QString megabytes = u"3"_s;
    constexpr double limit = 20.0; // seconds
#else
    const QString megabytes = u"36"_s;
    constexpr double limit = 1.0;
#endif
    const char *const floods[] = {"no end ", "Len [x.wav] (0:01.00) : 12%", "moved back \b\b", "line\n"};
    for (const char *const text : floods) {
        SCOPED_TRACE(text);
        Engine engine;
        const auto job = std::make_shared<ShowingTask>(
            &engine.queue, QStringList{u"flood"_s, megabytes, QString::fromLatin1(text)});
        const double before = secondsUsed();
        engine.queue.addTask(job);
        ASSERT_TRUE(engine.runToEnd());
        EXPECT_LT(secondsUsed() - before, limit);
        EXPECT_FALSE(job->error());
        EXPECT_LE(job->results()->results().size(), KruvTaskResults::maxTextLength + 100);
    }
}

} // namespace kruv::test
