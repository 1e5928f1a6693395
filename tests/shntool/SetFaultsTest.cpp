// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The jobs on sets that can delete originals, with every tool that they use misbehaving in every way.

#include "convert/FixTask.h"
#include "formats/ConversionTask.h"
#include "formats/Formats.h"
#include "platform/Resources.h"
#include "shntool/SHNToolJoinTask.h"
#include "shntool/SHNToolPadTask.h"
#include "shntool/SHNToolStripTask.h"
#include "shntool/SHNToolTrimTask.h"
#include "support/Engine.h"
#include "support/FaultyTools.h"
#include "support/QtPrinters.h"

#include <QDir>
#include <QtEndian>

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

struct SetJob
{
    const char *mode;
    const char *source; // type
    const char *target;
};

void PrintTo(const SetJob &job, std::ostream *stream)
{
    *stream << job.mode << ' ' << job.source << " to " << job.target;
}

const SetJob setJobs[] = {
    {"fix", "FLAC", "shn"}, {"join", "APE", "wav"},   {"pad", "WV", "aiff"},
    {"trim", "SHN", "wav"}, {"strip", "WAV", "flac"}, {"trim", "TTA", "flac"},
};

class SetFaults : public testing::TestWithParam<SetJob>
{
protected:
    /// Two tracks of the kind that the job reads.
    QStringList makeSources()
    {
        QStringList sources;
        const QString type = QString::fromLatin1(GetParam().source);
        const Format &format = *Formats::ofType(type);
        for (unsigned number = 1; number <= 2; ++number) {
            const QString wav = engine.folder.file(u"%1.wav"_s.arg(number));
            Audio audio = makeAudio({.frames = 5'000 + 300 * number, .seed = number});
            std::fill_n(audio.samples.begin(), 20, 0); // to trim
            QByteArray bytes = wavBytes(audio);
            bytes.append("LIST\4\0\0\0junk", 12); // to strip
            qToLittleEndian(static_cast<quint32>(bytes.size() - 8), bytes.data() + 4);
            writeFile(wav, bytes);
            sources.append(engine.folder.file(u"%1."_s.arg(number) + format.extension()));
            if (sources.back() != wav) {
                engine.queue.addTask(format.encode(&engine.queue, {.source = wav, .output = sources.back()}));
            }
        }
        EXPECT_TRUE(engine.runToEnd());
        return sources;
    }
    RiskyJob job()
    {
        return {QString::fromLatin1(GetParam().mode),
                [this, made = makeSources()](KruvTaskQueue &queue, const QString &folder) {
                    for (const QString &source : made) {
                        QFile::copy(source, folder + u'/' + QFileInfo(source).fileName());
                    }
                    return make(queue, folder);
                }};
    }
    static QStringList sourcesIn(const QString &folder)
    {
        QStringList paths;
        for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
            paths.append(folder + u'/' + name);
        }
        return paths;
    }
    static QStringList sourceNames(const QString &folder)
    {
        QStringList paths;
        for (int number = 1; number <= 2; ++number) {
            paths.append(u"%1/%2.%3"_s.arg(folder).arg(number).arg(
                Formats::ofType(QString::fromLatin1(GetParam().source))->extension()));
        }
        return paths;
    }

    Engine engine{4}; // some runs only wait

private:
    std::shared_ptr<KruvTask> make(KruvTaskQueue &queue, const QString &folder)
    {
        const std::string_view mode = GetParam().mode;
        const QString target = QString::fromLatin1(GetParam().target);
        const QString out = folder + u"/out"_s;
        const SHNToolOutputTask::Request request{.launchPath = toolPath(u"shntool"_s),
                                                 .folder = out,
                                                 .format = target,
                                                 .files = sourceNames(folder)};
        if (mode == "fix") {
            return std::make_shared<FixTask>(&queue,
                                             FixTask::Request{.fileNames = request.files,
                                                              .target = Formats::ofType(target.toUpper()),
                                                              .outputPath = out},
                                             [] {});
        }
        if (mode == "join") {
            return std::make_shared<SHNToolJoinTask>(&queue, request);
        }
        if (mode == "pad") {
            return std::make_shared<SHNToolPadTask>(&queue, request);
        }
        if (mode == "trim") {
            return std::make_shared<SHNToolTrimTask>(&queue, request);
        }
        return std::make_shared<SHNToolStripTask>(&queue, request);
    }
};

} // namespace

TEST_P(SetFaults, NeverLoseAnOriginalNorLeaveAWrongSet)
{
    const std::vector<RiskyJob> jobs{job()};
    const std::vector<FaultyRun> runs = FaultyTools(engine).runAll(jobs);
    EXPECT_GT(runs.size(), jobs.size());
    const FaultyRun &clean = runs.front();
    EXPECT_TRUE(clean.wentWell());
    EXPECT_EQ(sourcesIn(clean.folder), QStringList()) << "originals that were to go";
    const std::vector<Audio> right = decodedByFfmpeg(clean.outputs(), engine.folder);
    ASSERT_FALSE(right.empty());
    QStringList outputs;
    std::vector<std::string> descriptions; // of each output's run
    for (const FaultyRun &run : runs) {
        SCOPED_TRACE(run.description);
        const QStringList made = run.outputs();
        EXPECT_TRUE(made.isEmpty() || made.size() == std::ssize(right)) << "half a set";
        EXPECT_TRUE(!made.isEmpty() || sourcesIn(run.folder) == sourceNames(run.folder))
            << "a recording is lost";
        EXPECT_TRUE(!made.isEmpty() || !run.wentWell());
        EXPECT_TRUE(made.isEmpty() || !run.task->cancelled());
        outputs.append(made);
        descriptions.resize(static_cast<std::size_t>(outputs.size()), run.description);
    }
    const std::vector<Audio> decoded = decodedByFfmpeg(outputs, engine.folder);
    for (std::size_t i = 0; i < decoded.size(); ++i) {
        EXPECT_TRUE(decoded[i] == right[i % right.size()]) << descriptions[i] << " made a wrong file";
    }
}

INSTANTIATE_TEST_SUITE_P(Of, SetFaults, testing::ValuesIn(setJobs),
                         [](const testing::TestParamInfo<SetJob> &info) {
                             return std::string(info.param.mode) + '_' + info.param.source + "_to_" +
                                    info.param.target;
                         });

} // namespace kruv::test
