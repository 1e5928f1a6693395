// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/ConversionTask.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "formats/TagCopy.h"
#include "platform/Resources.h"
#include "support/Audio.h"
#include "support/Engine.h"
#include "support/FaultyTools.h"
#include "support/QtPrinters.h"
#include "tags/TagsObject.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace kruv {

/// For the names of tests.
void PrintTo(const Format *format, std::ostream *stream)
{
    *stream << format->id;
}

namespace test {

namespace {

struct Conversion
{
    const Format *source;
    const Format *target;
    bool isDecode = false;

    QString name() const
    {
        return u"%1 to %2"_s.arg(QLatin1StringView(source->id), QLatin1StringView(target->id));
    }
    QString outputIn(const QString &folder) const { return folder + u"/out/in."_s + target->extension(); }
    QString sourceIn(const QString &folder) const { return folder + u"/in."_s + source->extension(); }
};

/// Those to and from a format that can delete originals.
std::vector<Conversion> conversionsOf(const Format &format)
{
    if (format.isLossy()) {
        return {{&wavFormat, &format}};
    }
    return {{&wavFormat, &format},
            {&format, &wavFormat, true},
            {&format, &aiffFormat, true},
            {&format, &format == &flacFormat ? &monkeysAudioFormat : &flacFormat}};
}

std::string nameOf(const testing::TestParamInfo<const Format *> &info)
{
    std::string text = info.param->id;
    std::erase(text, '-');
    return text;
}

/// Every tool of a format's conversions in turn misbehaves in every way; the original is to be deleted.
class Faults : public testing::TestWithParam<const Format *>
{
protected:
    /// The source as `format` holds it.
    QString sourceOf(const Format *format)
    {
        const QString wav = engine.folder.file(u"made.wav"_s);
        QString path = engine.folder.file(u"made."_s + format->extension());
        if (!QFile::exists(wav)) {
            writeWav(wav, shape);
        }
        if (!QFile::exists(path)) {
            engine.queue.addTask(format->encode(&engine.queue, {.source = wav, .output = path}));
            EXPECT_TRUE(engine.runToEnd());
            if (format->tags) { // for the tools that write them
                TagsObject tags;
                tags.setYearText(u"2004"_s);
                TagCopy::write(*format, path, tags);
            }
        }
        return path;
    }
    RiskyJob jobOf(const Conversion &conversion)
    {
        return {conversion.name(), [conversion, made = sourceOf(conversion.source)](KruvTaskQueue &queue,
                                                                                    const QString &folder) {
                    const QString source = conversion.sourceIn(folder);
                    QFile::copy(made, source);
                    const auto make =
                        conversion.isDecode ? conversion.source->decode : conversion.target->encode;
                    return make(&queue, {.source = source, .output = conversion.outputIn(folder)});
                }};
    }

    static void expectNothingLost(const FaultyRun &run, const Conversion &conversion)
    {
        SCOPED_TRACE(run.description);
        const QString output = conversion.outputIn(run.folder);
        const bool hasOutput = QFile::exists(output);
        EXPECT_TRUE(hasOutput || QFile::exists(conversion.sourceIn(run.folder))) << "the recording is lost";
        EXPECT_EQ(run.outputs(), hasOutput ? QStringList(output) : QStringList());
        EXPECT_TRUE(hasOutput || !run.wentWell());
        EXPECT_FALSE(hasOutput && run.task->cancelled());
    }
    void expectWhole(const Audio &audio, const std::string &description) const
    {
        if (GetParam()->isLossy()) {
            const double seconds = static_cast<double>(audio.frames()) / audio.sampleRate;
            EXPECT_NEAR(seconds, static_cast<double>(shape.frames) / shape.sampleRate, 0.12) << description;
        } else {
            EXPECT_TRUE(audio == makeAudio(shape)) << description;
        }
    }

    const AudioShape shape{.frames = 22'051};
    Engine engine{4}; // some runs only wait
};

} // namespace

TEST_P(Faults, NeverLoseTheOriginalNorLeaveAWrongOutput)
{
    const char *encoder = GetParam()->encoderTool;
    if (encoder && !QFileInfo(toolPath(QString::fromLatin1(encoder))).isExecutable()) {
        GTEST_SKIP() << "its encoder is not on this machine";
    }
    const std::vector<Conversion> conversions = conversionsOf(*GetParam());
    std::vector<RiskyJob> jobs;
    std::ranges::transform(conversions, std::back_inserter(jobs),
                           [this](const Conversion &each) { return jobOf(each); });
    const std::vector<FaultyRun> runs = FaultyTools(engine).runAll(jobs);
    EXPECT_GT(runs.size(), jobs.size());

    for (std::size_t i = 0; i < jobs.size(); ++i) {
        EXPECT_TRUE(runs[i].wentWell() && !QFile::exists(conversions[i].sourceIn(runs[i].folder)))
            << runs[i].description;
        EXPECT_FALSE(runs[i].task->proof().kind.isEmpty()) << runs[i].description;
    }
    QStringList outputs;
    std::vector<std::string> descriptions; // of each output's run
    for (const FaultyRun &run : runs) {
        expectNothingLost(run, conversions[run.job]);
        outputs.append(run.outputs());
        descriptions.resize(static_cast<std::size_t>(outputs.size()), run.description);
    }
    const std::vector<Audio> decoded = decodedByFfmpeg(outputs, engine.folder);
    for (std::size_t i = 0; i < decoded.size(); ++i) {
        expectWhole(decoded[i], descriptions[i]);
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Faults, testing::ValuesIn(Formats::made(false) + Formats::made(true)), nameOf);

} // namespace test

} // namespace kruv
