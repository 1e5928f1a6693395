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
    SetFaults()
    {
        QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded,
                         [this](KruvTask &job) { done.insert(job.inputPath(), !job.error()); });
    }

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
    QString add(FaultyTools &tools, const QStringList &sources, const QString &plan)
    {
        QString folder = tools.newCase(plan);
        for (const QString &source : sources) {
            QFile::copy(source, folder + u'/' + QFileInfo(source).fileName());
        }
        const std::shared_ptr<OutputTask> job = make(folder);
        job->setDeleteOriginal(true);
        engine.queue.addTask(job);
        return folder;
    }
    static QStringList filesIn(const QString &folder)
    {
        QStringList paths;
        for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
            paths.append(folder + u'/' + name);
        }
        return paths;
    }
    static QStringList outputsOf(const QString &folder) { return filesIn(folder + u"/out"_s); }
    bool isDone(const QString &folder) const { return done.value(sourceNames(folder).constFirst()); }
    static QStringList sourceNames(const QString &folder)
    {
        QStringList paths;
        for (int number = 1; number <= 2; ++number) {
            paths.append(u"%1/%2.%3"_s.arg(folder).arg(number).arg(
                Formats::ofType(QString::fromLatin1(GetParam().source))->extension()));
        }
        return paths;
    }

    Engine engine;
    QMap<QString, bool> done; // by the first source

private:
    std::shared_ptr<OutputTask> make(const QString &folder)
    {
        const std::string_view mode = GetParam().mode;
        const QString target = QString::fromLatin1(GetParam().target);
        const QString out = folder + u"/out"_s;
        const SHNToolOutputTask::Request request{.launchPath = toolPath(u"shntool"_s),
                                                 .folder = out,
                                                 .format = target,
                                                 .files = sourceNames(folder)};
        if (mode == "fix") {
            return std::make_shared<FixTask>(&engine.queue,
                                             FixTask::Request{.fileNames = request.files,
                                                              .target = Formats::ofType(target.toUpper()),
                                                              .outputPath = out},
                                             [] {});
        }
        if (mode == "join") {
            return std::make_shared<SHNToolJoinTask>(&engine.queue, request);
        }
        if (mode == "pad") {
            return std::make_shared<SHNToolPadTask>(&engine.queue, request);
        }
        if (mode == "trim") {
            return std::make_shared<SHNToolTrimTask>(&engine.queue, request);
        }
        return std::make_shared<SHNToolStripTask>(&engine.queue, request);
    }
};

} // namespace

TEST_P(SetFaults, NeverLoseAnOriginalNorLeaveAWrongSet)
{
    const QStringList sources = makeSources();
    FaultyTools tools(engine.folder);
    const QString clean = add(tools, sources, {});
    ASSERT_TRUE(engine.runToEnd());
    ASSERT_TRUE(isDone(clean));
    EXPECT_EQ(filesIn(clean), QStringList()) << "originals that were to go";
    const QStringList used = FaultyTools::toolsOf(clean);
    ASSERT_TRUE(used.contains(u"shntool"_s));
    for (const QString &tool : used) {
        for (const QString &fault : FaultyTools::faults) {
            add(tools, sources, tool + u' ' + fault);
        }
        ASSERT_TRUE(engine.runToEnd());
    }

    const std::vector<Audio> right = decodedByFfmpeg(outputsOf(clean), engine.folder);
    QStringList outputs;
    QStringList plans;
    for (auto each = tools.cases().cbegin(); each != tools.cases().cend(); ++each) {
        SCOPED_TRACE(each.value().toStdString());
        const QStringList made = outputsOf(each.key());
        EXPECT_TRUE(made.isEmpty() || made.size() == outputsOf(clean).size()) << "half a set";
        EXPECT_TRUE(!made.isEmpty() || filesIn(each.key()) == sourceNames(each.key()))
            << "a recording is lost";
        EXPECT_TRUE(!made.isEmpty() || !isDone(each.key()));
        outputs.append(made);
        plans.append(QStringList(made.size(), each.value()));
    }
    const std::vector<Audio> decoded = decodedByFfmpeg(outputs, engine.folder);
    for (std::size_t i = 0; i < decoded.size(); ++i) {
        EXPECT_TRUE(decoded[i] == right[i % right.size()])
            << plans[static_cast<qsizetype>(i)].toStdString() << " made a wrong file";
    }
}

INSTANTIATE_TEST_SUITE_P(Of, SetFaults, testing::ValuesIn(setJobs),
                         [](const testing::TestParamInfo<SetJob> &info) {
                             return std::string(info.param.mode) + '_' + info.param.source + "_to_" +
                                    info.param.target;
                         });

} // namespace kruv::test
