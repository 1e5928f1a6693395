// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/Proof.h"
#include "support/Audio.h"
#include "support/Files.h"
#include "support/QtPrinters.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>

#include <algorithm>
#include <gtest/gtest.h>
#include <ostream>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

/// A command over the files of one folder.
struct Job
{
    const char *name;
    QString command; // words; @ stands for the folder
    QStringList files;
};

void PrintTo(const Job &job, std::ostream *stream)
{
    *stream << job.name;
}

std::vector<Job> jobs()
{
    const QString toEach = u" --beside-source --delete-originals --yes @"_s;
    const QString toFolder = u" -o @/out --delete-originals --yes @"_s;
    const QStringList wavs{u"a.wav"_s, u"b.wav"_s};
    return {
        {"EncodeFlac", u"encode --to flac"_s + toEach, {u"a.wav"_s}},
        {"EncodeFlacWithList", u"encode --to flac --fingerprints -o @/out @"_s, {u"a.wav"_s}},
        {"EncodeShorten", u"encode --to shn"_s + toEach, {u"a.wav"_s}},
        {"EncodeWavPack", u"encode --to wv"_s + toEach, {u"a.wav"_s}},
        {"EncodeTta", u"encode --to tta"_s + toEach, {u"a.flac"_s}},
        {"EncodeMonkeysAudio", u"encode --to ape"_s + toEach, {u"a.flac"_s}},
        {"EncodeAppleLossless", u"encode --to m4a"_s + toEach, {u"a.flac"_s}},
        {"EncodeAppleLosslessAndKeep", u"encode --to m4a --beside-source @"_s, {u"a.wav"_s}},
        {"EncodeFlacAndKeep", u"encode --to flac --beside-source @"_s, {u"a.wav"_s}},
        {"EncodeFlacOfAppleLossless", u"encode --to flac"_s + toEach, {u"a.m4a"_s}},
        {"EncodeFlacOverFlac",
         u"encode --to flac --overwrite"_s + toEach + u"/a.wav"_s,
         {u"a.wav"_s, u"a.flac"_s}},
        {"DecodeFlac", u"decode --to wav"_s + toEach, {u"a.flac"_s}},
        {"DecodeFlacAndKeep", u"decode --to wav --beside-source @"_s, {u"a.flac"_s}},
        {"DecodeFlacToAiff", u"decode --to aiff"_s + toEach, {u"a.flac"_s}},
        {"DecodeWavPack", u"decode --to wav --overwrite"_s + toEach + u"/a.wv"_s, {u"a.wv"_s, u"a.wav"_s}},
        {"DecodeShorten", u"decode --to wav"_s + toEach, {u"a.shn"_s}},
        {"DecodeTta", u"decode --to wav"_s + toEach, {u"a.tta"_s}},
        {"DecodeMonkeysAudio", u"decode --to wav"_s + toEach, {u"a.ape"_s}},
        {"DecodeAppleLossless", u"decode --to wav"_s + toEach, {u"a.m4a"_s}},
        {"LossyMp3", u"lossy --to mp3"_s + toEach, {u"a.flac"_s}},
        {"LossyMp3AndKeep", u"lossy --to mp3 --beside-source @"_s, {u"a.flac"_s}},
        {"LossyAac", u"lossy --to aac"_s + toEach, {u"a.flac"_s}},
        {"LossyOpus", u"lossy --to opus"_s + toEach, {u"a.flac"_s}},
        {"LossyVorbis", u"lossy --to vorbis"_s + toEach, {u"a.flac"_s}},
        {"Fix", u"fix --to flac --fingerprints"_s + toFolder, wavs},
        {"Join", u"shntool join --to wav --save @/out/all.wav --delete-originals --yes @"_s, wavs},
        {"Split",
         u"shntool split --to flac --points @/points.txt -o @/out @/a.wav"_s,
         {u"a.wav"_s, u"points.txt"_s}},
        {"Pad", u"shntool pad --to wav"_s + toFolder, {u"a.wav"_s}},
        {"CueSheet", u"shntool cue --save @/all.cue --overwrite @"_s, wavs + QStringList{u"all.cue"_s}},
        {"Md5List", u"checksum create --kind md5 --save @/all.md5 --overwrite @"_s,
         wavs + QStringList{u"all.md5"_s}},
        {"ShntoolList", u"checksum create --kind st5 --save @/all.st5 @"_s, wavs},
        {"Resample", u"util resample --rate 48 -o @/out @"_s, {u"a.wav"_s}},
        {"Rename", u"util rename --prefix Disc @/a.wav @/b.wav"_s, wavs},
        {"TagsThatFit", u"tags set --title T @"_s, {u"a.flac"_s}},
        {"TagsThatMoveAudio", u"tags set --art @/cover.png @"_s, {u"a.flac"_s, u"a.m4a"_s, u"cover.png"_s}},
        {"ReplayGain", u"util replay-gain @"_s, {u"a.flac"_s}}};
}

using Contents = QMap<QString, QByteArray>;

class FullDisk : public testing::TestWithParam<Job>
{
protected:
    struct Outcome
    {
        bool failed = false;
        QString words;
    };
    /// What the program said on standard output, a JSON object a line, and what it ended with.
    std::pair<int, QList<QByteArray>> runProgram(QStringList arguments)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, folder.path());
        environment.insert(u"XDG_CONFIG_HOME"_s, folder.path());
        process.setProcessEnvironment(environment);
        process.setStandardInputFile(QProcess::nullDevice());
        arguments.push_front(QStringLiteral(KRUV_PROGRAM));
        process.start(QStringLiteral(KRUV_WATCHED_DISK), arguments + QStringList{u"--json"_s});
        EXPECT_TRUE(process.waitForFinished(-1));
        m_complaints = process.readAllStandardError();
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAllStandardOutput().split('\n')};
    }
    /// What lies in a sample folder under that name, made when it is first asked for.
    QString sample(const QString &name)
    {
        const QString samples = folder.file(u"samples"_s);
        QString path = samples + u'/' + name;
        QDir().mkpath(samples);
        if (QFile::exists(path)) {
            return path;
        }
        if (name.endsWith(u".wav")) {
            writeWav(path, {.frames = 3'000});
        } else if (name == u"points.txt") {
            writeFile(path, "0:00.020\n");
        } else if (name == u"cover.png") {
            writeFile(path,
                      QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M"
                                             "9QDwADhgGAWjR9awAAAABJRU5ErkJggg=="));
        } else if (name.startsWith(u"all.")) {
            writeFile(path, "the old text\n");
        } else {
            const QString wav = sample(name.section(u'.', 0, 0) + u".wav"_s);
            runProgram({u"encode"_s, u"--to"_s, name.section(u'.', 1), u"-o"_s, samples, wav});
            EXPECT_TRUE(QFile::exists(path)) << m_complaints.constData();
        }
        return path;
    }
    QString makeCase(int fault)
    {
        QString path = folder.makeFolder(u"case-%1"_s.arg(fault + 100));
        folder.makeFolder(u"case-%1/out"_s.arg(fault + 100));
        writeFile(path + u".fault"_s, QByteArray::number(fault));
        for (const QString &name : GetParam().files) {
            EXPECT_TRUE(QFile::copy(sample(name), path + u'/' + name));
        }
        return path;
    }
    /// Runs the command over the folders of some cases, in one run of the program where it takes any number
    /// of them. Nothing where system calls can't be watched.
    QMap<QString, Outcome> runCases(const QStringList &cases)
    {
        if (cases.size() > 1 && GetParam().command.count(u'@') > 1) {
            QMap<QString, Outcome> all;
            for (const QString &path : cases) {
                all.insert(runCases({path}));
            }
            return all;
        }
        QStringList words;
        for (const QString &word : GetParam().command.split(u' ')) {
            for (const QString &path : word.contains(u'@') ? cases : QStringList{QString()}) {
                words.append(QString(word).replace(u'@', path));
            }
        }
        const auto [status, lines] = runProgram(words);
        constexpr int notWatched = 77;
        EXPECT_TRUE(status == 0 || status == 1 || status == notWatched) << status << m_complaints.constData();
        QMap<QString, Outcome> outcomes;
        for (const QString &path : status == notWatched ? QStringList() : cases) {
            Outcome &outcome = outcomes[path];
            outcome.failed = cases.size() == 1 && status != 0;
            outcome.words = cases.size() == 1 ? QString::fromUtf8(m_complaints) : QString();
            for (const QByteArray &line : lines) {
                const bool isAbout = cases.size() == 1 || line.contains(path.toUtf8());
                const QJsonObject object = QJsonDocument::fromJson(line).object();
                outcome.failed =
                    outcome.failed || (isAbout && object.value(u"status").toString() == u"error");
                outcome.words += isAbout ? object.value(u"message").toString() + u'\n' : QString();
            }
        }
        return outcomes;
    }
    static Contents contents(const QString &path)
    {
        Contents found;
        QDirIterator files(path, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            const bool isFolder = files.fileInfo().isDir();
            found.insert(file.mid(path.size() + 1), isFolder ? QByteArray() : readFile(file));
        }
        return found;
    }
    /// Whether a file is as good as the one that the undisturbed run made. Some tools write other bytes each
    /// time, or lose the last corrections to their header, without which the audio is no worse.
    bool isGood(const QString &path, const QString &expected) const
    {
        if (readFile(path) == readFile(expected)) {
            return true;
        }
        if (isText(path) || path.endsWith(u"-converted.wav")) { // with the time, or chance, in it
            return QFileInfo(path).size() == QFileInfo(expected).size();
        }
        const auto go = [](double) { return true; };
        try {
            return path.endsWith(u".mp3") || path.endsWith(u".opus") || path.endsWith(u".ogg") ||
                           GetParam().command.contains(u"aac")
                       ? Proof::sameLength(expected, path, go).has_value()
                       : Proof::sameAudio({.sources = {expected}, .outputs = {path}}, go).has_value();
        } catch (const std::exception &failure) {
            ADD_FAILURE() << failure.what();
            return false;
        }
    }
    /// Lists are made after the audio that they are about.
    static bool isText(const QString &name) { return name.endsWith(u".txt") || name.endsWith(u".md5"); }
    /// Every file is the old one or the new one; no recording is gone before its output is there.
    void expectNothingLost(const Contents &before, const QString &clean, const QString &path)
    {
        const Contents done = contents(clean);
        const Contents now = contents(path);
        for (const QString &name : now.keys()) {
            const bool isOld = before.contains(name) && before.value(name) == now.value(name);
            const bool isFolder = QFileInfo(path + u'/' + name).isDir();
            EXPECT_TRUE(isOld || (done.contains(name) &&
                                  (isFolder || isGood(path + u'/' + name, clean + u'/' + name))))
                << name.toStdString() << " is neither the old nor the new one";
        }
        const bool isMade = std::ranges::all_of(
            done.keys(), [&now](const QString &name) { return isText(name) || now.contains(name); });
        for (const QString &name : before.keys()) {
            EXPECT_TRUE(now.contains(name) || isMade || GetParam().name == std::string("Rename"))
                << name.toStdString() << " is gone";
        }
        EXPECT_GE(now.size(), std::min(before.size(), done.size()));
    }

    TemporaryFolder folder;
    QByteArray m_complaints; // of the latest run
};

} // namespace

TEST_P(FullDisk, LosesNothingWheneverItComes)
{
    const QString clean = makeCase(0);
    const Contents before = contents(clean);
    const auto undisturbed = runCases({clean});
    if (undisturbed.isEmpty()) {
        GTEST_SKIP() << "system calls can't be watched here";
    }
    ASSERT_FALSE(undisturbed.value(clean).failed) << m_complaints.constData();
    const auto log = [](const QString &path) { return readFile(path + u".log"_s).trimmed().split('\n'); };
    const int count = static_cast<int>(log(clean).size());
    // A tool that writes in a hundred small pieces is no other case than in ten.
    const int most = GetParam().command.count(u'@') > 1 ? 8 : 16;
    QMap<QString, int> faults;
    for (int fault = 1; fault <= count; ++fault) {
        fault = fault == most ? std::max(most, count - 3) : fault;
        faults.insert(makeCase(fault), fault);
    }
    const auto outcomes = runCases(faults.keys());
    static const QRegularExpression clear(u" space|disk may be full"_s);
    for (auto each = outcomes.cbegin(); each != outcomes.cend(); ++each) {
        const int fault = faults.value(each.key());
        SCOPED_TRACE(testing::Message() << fault << " of " << count << ": "
                                        << log(each.key()).value(fault - 1).constData() << '\n'
                                        << each->words.toStdString());
        expectNothingLost(before, clean, each.key());
        if (each->failed) {
            EXPECT_TRUE(each->words.contains(clear)) << "what to do";
        } else {
            EXPECT_EQ(contents(each.key()).keys(), contents(clean).keys());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Of, FullDisk, testing::ValuesIn(jobs()),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace kruv::test
