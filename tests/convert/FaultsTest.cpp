// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/ConversionTask.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "platform/Resources.h"
#include "support/Audio.h"
#include "support/Engine.h"
#include "support/FaultyTools.h"
#include "support/QtPrinters.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

/// One of the conversions that can delete originals.
struct Conversion
{
    const Format *source;
    const Format *target;
    bool isDecode = false;
};

void PrintTo(const Conversion &conversion, std::ostream *stream)
{
    *stream << conversion.source->id << " to " << conversion.target->id;
}

std::vector<Conversion> conversions()
{
    std::vector<Conversion> all;
    for (const Format *format : Formats::made(false)) {
        all.push_back({&wavFormat, format});
        all.push_back({format, &wavFormat, true});
        all.push_back({format, &aiffFormat, true});
        all.push_back({format, format == &flacFormat ? &monkeysAudioFormat : &flacFormat});
    }
    for (const Format *format : Formats::made(true)) {
        all.push_back({&wavFormat, format});
    }
    return all;
}

std::string nameOf(const testing::TestParamInfo<Conversion> &info)
{
    const auto id = [](const Format *format) {
        std::string text = format->id;
        std::erase(text, '-');
        return text;
    };
    return id(info.param.source) + "_to_" + id(info.param.target);
}

/// Every tool of a conversion in turn misbehaves in every way; the original is to be deleted.
class Faults : public testing::TestWithParam<Conversion>
{
protected:
    Faults()
    {
        QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded, [this](KruvTask &job) {
            done.insert(job.inputPath(), !job.error());
            proven.insert(job.inputPath(), job.proof().kind);
        });
    }

    QString makeSource()
    {
        QString wav = engine.folder.file(u"made.wav"_s);
        writeWav(wav, shape);
        if (GetParam().source == &wavFormat) {
            return wav;
        }
        QString path = engine.folder.file(u"made."_s + GetParam().source->extension());
        engine.queue.addTask(GetParam().source->encode(&engine.queue, {.source = wav, .output = path}));
        EXPECT_TRUE(engine.runToEnd());
        return path;
    }
    /// Adds the job of one case and returns its folder.
    QString add(FaultyTools &tools, const QString &source, const QString &plan)
    {
        QString folder = tools.newCase(plan);
        const auto [from, to, isDecode] = GetParam();
        const QString input = folder + u"/in."_s + from->extension();
        QFile::copy(source, input);
        const auto make = isDecode ? from->decode : to->encode;
        const auto job = make(&engine.queue, {.source = input, .output = outputOf(folder)});
        job->setDeleteOriginal(true);
        engine.queue.addTask(job);
        return folder;
    }
    QString outputOf(const QString &folder) const
    {
        return folder + u"/out/in."_s + GetParam().target->extension();
    }
    QString inputOf(const QString &folder) const
    {
        return folder + u"/in."_s + GetParam().source->extension();
    }

    void expectWhole(const Audio &audio, const std::string &plan) const
    {
        if (GetParam().target->isLossy()) {
            const double seconds = static_cast<double>(audio.frames()) / audio.sampleRate;
            EXPECT_NEAR(seconds, static_cast<double>(shape.frames) / shape.sampleRate, 0.12) << plan;
        } else {
            EXPECT_TRUE(audio == makeAudio(shape)) << plan;
        }
    }

    const AudioShape shape{.frames = 22'051};
    Engine engine;
    QMap<QString, bool> done; // by source
    QMap<QString, QString> proven;
};

} // namespace

TEST_P(Faults, NeverLoseTheOriginalNorLeaveAWrongOutput)
{
    const char *encoder = GetParam().target->encoderTool;
    if (encoder && !QFileInfo(toolPath(QString::fromLatin1(encoder))).isExecutable()) {
        GTEST_SKIP() << "its encoder is not on this machine";
    }
    const QString source = makeSource();
    FaultyTools tools(engine.folder);
    const QString clean = add(tools, source, {});
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(done.value(inputOf(clean)) && !QFile::exists(inputOf(clean)));
    EXPECT_FALSE(proven.value(inputOf(clean)).isEmpty());
    for (const QString &tool : FaultyTools::toolsOf(clean)) {
        for (const QString &fault : FaultyTools::faults) {
            add(tools, source, tool + u' ' + fault);
        }
        ASSERT_TRUE(engine.runToEnd());
    }

    QStringList outputs;
    QStringList plans;
    for (auto each = tools.cases().cbegin(); each != tools.cases().cend(); ++each) {
        SCOPED_TRACE(each.value().toStdString());
        const bool hasOutput = QFile::exists(outputOf(each.key()));
        EXPECT_TRUE(hasOutput || QFile::exists(inputOf(each.key()))) << "the recording is lost";
        EXPECT_TRUE(hasOutput || !done.value(inputOf(each.key())));
        if (hasOutput) {
            outputs.append(outputOf(each.key()));
            plans.append(each.value());
        }
        const QDir out(each.key() + u"/out"_s);
        EXPECT_EQ(out.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
                  hasOutput ? 1 : 0);
    }
    const std::vector<Audio> decoded = decodedByFfmpeg(outputs, engine.folder);
    for (std::size_t i = 0; i < decoded.size(); ++i) {
        expectWhole(decoded[i], plans[static_cast<qsizetype>(i)].toStdString());
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Faults, testing::ValuesIn(conversions()), nameOf);

} // namespace kruv::test
