// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AudioFiles.h"
#include "audio/ExtAudioFileReader.h"
#include "checksums/CreateST5Task.h"
#include "convert/FixTask.h"
#include "formats/ConversionTask.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "platform/Resources.h"
#include "shntool/SHNToolJoinTask.h"
#include "shntool/SHNToolPadTask.h"
#include "shntool/SHNToolSplitTask.h"
#include "shntool/SHNToolTrimTask.h"
#include "support/Audio.h"
#include "support/Engine.h"
#include "support/QtPrinters.h"
#include "util/SoxSampleRateConversionTask.h"

#include <QCollator>
#include <QCryptographicHash>
#include <QDir>

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

/// What a job may make of sound audio.
enum class Result { Same, SameAfterAnother, SamePadded, SameTrimmed, Hash, SameLength };

struct Job
{
    const char *name;
    Result result;
    std::shared_ptr<KruvTask> (*make)(Engine &engine, const QString &source, const QString &folder);
};

QString another(const Engine &engine)
{
    return engine.folder.file(u"another.wav"_s);
}

SHNToolOutputTask::Request requestFor(const QStringList &sources, const QString &folder)
{
    return {.launchPath = toolPath(u"shntool"_s), .folder = folder, .format = u"wav"_s, .files = sources};
}

template <const Format *Target>
std::shared_ptr<KruvTask> encode(Engine &engine, const QString &source, const QString &folder)
{
    return Target->encode(&engine.queue,
                          {.source = source, .output = folder + u"/made."_s + Target->extension()});
}

template <const Format *Target>
std::shared_ptr<KruvTask> decode(Engine &engine, const QString &source, const QString &folder)
{
    const Format *format = Formats::ofType(QFileInfo(source).suffix().toUpper());
    return format->decode(&engine.queue,
                          {.source = source, .output = folder + u"/made."_s + Target->extension()});
}

const Job jobs[] = {
    {"flac", Result::Same, encode<&flacFormat>},
    {"wv", Result::Same, encode<&wavpackFormat>},
    {"tta", Result::Same, encode<&ttaFormat>},
    {"ape", Result::Same, encode<&monkeysAudioFormat>},
    {"m4a", Result::Same, encode<&appleLosslessFormat>},
    {"shn", Result::Same, encode<&shortenFormat>},
    {"mp3", Result::SameLength, encode<&mp3Format>},
    {"wav", Result::Same, decode<&wavFormat>},
    {"aiff", Result::Same, decode<&aiffFormat>},
    {"fix", Result::SameAfterAnother,
     [](Engine &engine, const QString &source, const QString &folder) -> std::shared_ptr<KruvTask> {
         return std::make_shared<FixTask>(&engine.queue,
                                          FixTask::Request{.fileNames = {another(engine), source},
                                                           .target = &wavFormat,
                                                           .outputPath = folder},
                                          [] {});
     }},
    {"join", Result::SameAfterAnother,
     [](Engine &engine, const QString &source, const QString &folder) -> std::shared_ptr<KruvTask> {
         return std::make_shared<SHNToolJoinTask>(&engine.queue,
                                                  requestFor({another(engine), source}, folder));
     }},
    {"pad", Result::SamePadded,
     [](Engine &engine, const QString &source, const QString &folder) -> std::shared_ptr<KruvTask> {
         return std::make_shared<SHNToolPadTask>(&engine.queue, requestFor({source}, folder));
     }},
    {"trim", Result::SameTrimmed,
     [](Engine &engine, const QString &source, const QString &folder) -> std::shared_ptr<KruvTask> {
         return std::make_shared<SHNToolTrimTask>(&engine.queue, requestFor({source}, folder));
     }},
    {"split", Result::Same,
     [](Engine &engine, const QString &source, const QString &folder) -> std::shared_ptr<KruvTask> {
         return std::make_shared<SHNToolSplitTask>(&engine.queue, requestFor({source}, folder),
                                                   engine.folder.file(u"points"_s));
     }},
    {"st5", Result::Hash,
     [](Engine &engine, const QString &source, const QString &folder) -> std::shared_ptr<KruvTask> {
         return std::make_shared<CreateST5Task>(&engine.queue, toolPath(u"shntool"_s), QStringList{source},
                                                folder + u"/list.st5"_s);
     }},
    {"resample", Result::SameLength,
     [](Engine &engine, const QString &source, const QString &folder) -> std::shared_ptr<KruvTask> {
         const auto results = std::make_shared<KruvTaskResults>();
         const auto job =
             std::make_shared<SoxSampleRateConversionTask>(&engine.queue, source, u"48"_s, folder, results);
         results->addTaskInSet(*job);
         return job;
     }},
};

using Bytes = std::vector<std::uint8_t>;

/// Empty where it can't be decoded.
Bytes samplesOf(const QString &path)
try {
    const auto reader = AudioFiles::open(path);
    Bytes all;
    Bytes piece(std::size_t{4096} * reader->clientFormat().bytesPerFrame);
    while (const std::size_t got = reader->read(piece)) {
        all.insert(all.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(got));
    }
    return all;
} catch (const std::exception &) {
    return {};
}

double secondsOf(const QString &path)
{
    const auto reader = AudioFiles::open(path);
    return static_cast<double>(reader->lengthInFrames()) / reader->dataFormat().sampleRate;
}

Bytes withoutZerosAtTheEnds(const Bytes &samples)
{
    const auto isSound = [](std::uint8_t byte) { return byte != 0; };
    const auto first = std::ranges::find_if(samples, isSound);
    const auto last = std::find_if(samples.rbegin(), std::make_reverse_iterator(first), isSound);
    return {first, last.base()};
}

/// A source with a fault in it, and one job that reads it.
struct Case
{
    const Job *job;
    QString what;
    QString folder;
    bool isDone = false;
};

/// Sources with one wrong bit, or cut short.
class DamagedSources : public testing::TestWithParam<const Format *>
{
protected:
    void SetUp() override
    {
        const QString wav = engine.folder.file(u"whole.wav"_s);
        Audio audio = makeAudio({.frames = 11'025, .seed = 2});
        std::fill_n(audio.samples.begin(), 2000, 0); // for what cuts silence
        std::fill_n(audio.samples.end() - 2000, 2000, 0);
        writeFile(wav, wavBytes(audio));
        writeWav(another(engine), {.frames = 5'880, .seed = 3});
        engine.folder.write(u"points"_s, "0:00.10\n");
        reference = samplesOf(wav);
        first = samplesOf(another(engine));
        whole = engine.folder.file(u"whole."_s + format().extension());
        if (&format() != &wavFormat) {
            engine.queue.addTask(format().encode(&engine.queue, {.source = wav, .output = whole}));
            ASSERT_TRUE(engine.runToEnd());
        }
        QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded,
                         [this](KruvTask &job) { cases[numbers.value(&job)].isDone = !job.error(); });
    }

    const Format &format() const { return *GetParam(); }
    /// Nothing guards the samples of these.
    bool hasChecksums() const
    {
        return &format() != &appleLosslessFormat && &format() != &shortenFormat && &format() != &wavFormat;
    }

    std::pair<QByteArray, QString> damaged(std::mt19937 &random)
    {
        constexpr unsigned cutShortOneIn = 8;
        QByteArray bytes = readFile(whole);
        if (!hasChecksums() || random() % cutShortOneIn == 0) {
            const auto size = static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()));
            return {bytes.left(size), u"cut to %1 bytes"_s.arg(size)};
        }
        const auto bit = random() % (static_cast<std::size_t>(bytes.size()) * 8);
        const auto at = static_cast<qsizetype>(bit / 8);
        bytes[at] = static_cast<char>(static_cast<unsigned char>(bytes[at]) ^ (1U << bit % 8));
        return {bytes, u"bit %1"_s.arg(bit)};
    }
    void add(const QByteArray &bytes, const QString &what, const Job &job)
    {
        const QString folder = engine.folder.makeFolder(u"case-%1"_s.arg(cases.size()));
        const QString out = engine.folder.makeFolder(u"case-%1/out"_s.arg(cases.size()));
        const QString source = folder + u"/source."_s + format().extension();
        writeFile(source, bytes);
        const auto task = job.make(engine, source, out);
        numbers.insert(task.get(), cases.size());
        cases.push_back(
            {&job, u"%1 of %2, %3"_s.arg(QLatin1StringView(job.name), QLatin1StringView(format().id), what),
             out});
        engine.queue.addTask(task);
        held.push_back(task);
    }

    QStringList madeIn(const QString &folder) const
    {
        QStringList names = QDir(folder).entryList(QDir::Files, QDir::Name);
        for (QString &name : names) {
            name.prepend(folder + u'/');
        }
        return names;
    }
    /// Whether what a job that is done has made is the sound audio.
    bool isRight(const Case &one) const
    {
        const QStringList files = madeIn(one.folder);
        if (one.job->result == Result::Hash) {
            const QByteArray hash = QCryptographicHash::hash(
                QByteArrayView(reference.data(), static_cast<qsizetype>(reference.size())),
                QCryptographicHash::Md5);
            return files.size() == 1 && readFile(files[0]).contains(hash.toHex());
        }
        if (one.job->result == Result::SameLength) {
            return files.size() == 1 && std::abs(secondsOf(files[0]) - 0.25) < 0.1;
        }
        Bytes made;
        for (const QString &file : files) {
            const Bytes samples = samplesOf(file);
            made.insert(made.end(), samples.begin(), samples.end());
        }
        Bytes wanted = one.job->result == Result::SameAfterAnother ? first : Bytes();
        wanted.insert(wanted.end(), reference.begin(), reference.end());
        const bool mayGrow =
            one.job->result == Result::SamePadded || one.job->result == Result::SameAfterAnother;
        if (mayGrow || one.job->result == Result::SameTrimmed) {
            made = withoutZerosAtTheEnds(made);
            wanted = withoutZerosAtTheEnds(wanted);
        }
        return made == wanted;
    }
    void runAndJudge()
    {
        ASSERT_TRUE(engine.runToEnd());
        for (const Case &one : cases) {
            done += one.isDone ? 1 : 0;
            EXPECT_TRUE(!one.isDone || isRight(one)) << "done, with other audio: " << one.what.toStdString();
            EXPECT_TRUE(one.isDone || one.job->result == Result::Hash || madeIn(one.folder).isEmpty())
                << one.what.toStdString();
            QDir(one.folder + u"/.."_s).removeRecursively();
        }
        all += cases.size();
        cases.clear();
        numbers.clear();
        held.clear();
    }

    Engine engine;
    QString whole;
    Bytes reference;
    Bytes first;
    std::vector<Case> cases;
    QHash<const KruvTask *, std::size_t> numbers;
    std::vector<std::shared_ptr<KruvTask>> held;
    std::size_t all = 0;
    std::size_t done = 0;
};

} // namespace

/// KRUV_DAMAGES: how many damages of each format meet every job; without it each of a few meets some of the
/// jobs.
TEST_P(DamagedSources, NeverGiveOtherAudioAndSuccess)
{
    const int wanted = qEnvironmentVariableIntValue("KRUV_DAMAGES");
    const bool isLong = wanted > 0;
    constexpr int few = 6;
    constexpr std::size_t someJobs = 3;
    constexpr int atOnce = 5;
    std::mt19937 random(qEnvironmentVariableIntValue("KRUV_SEED") + 1);
    for (const Job &job : jobs) {
        add(readFile(whole), u"nothing wrong"_s, job);
    }
    std::size_t next = 0;
    for (int i = 0; i < (isLong ? wanted : few); ++i) {
        const auto [bytes, what] = damaged(random);
        for (std::size_t k = 0; k < (isLong ? std::size(jobs) : someJobs); ++k) {
            add(bytes, what, jobs[next++ % std::size(jobs)]);
        }
        if (i % atOnce == atOnce - 1) {
            runAndJudge();
        }
    }
    runAndJudge();
    constexpr std::size_t onEveryFormat = 9;
    EXPECT_GE(done, onEveryFormat) << "the sound source";
    if (isLong) {
        std::cout << format().id << ": " << all << " runs, " << done << " done with the right audio\n";
    }
}

INSTANTIATE_TEST_SUITE_P(Of, DamagedSources,
                         testing::Values(&flacFormat, &wavpackFormat, &ttaFormat, &monkeysAudioFormat,
                                         &appleLosslessFormat, &shortenFormat, &wavFormat),
                         [](const auto &info) { return std::string(info.param->id); });

} // namespace kruv::test
