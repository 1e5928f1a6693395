// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/ConversionTask.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "formats/TagCopy.h"
#include "support/Audio.h"
#include "support/Engine.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"
#include "tags/TagsObject.h"

#include <QDir>
#include <QDirIterator>
#include <QProcess>

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

constexpr unsigned depths[] = {8, 16, 24};
constexpr unsigned channelCounts[] = {1, 2, 6};
constexpr unsigned rates[] = {8000, 44100, 96000, 192000};

AudioShape shapeOf(unsigned bits, unsigned channels, unsigned rate)
{
    return {.sampleRate = rate, .channels = channels, .bitsPerSample = bits, .frames = 2001 + rate / 40};
}

std::vector<AudioShape> everyShape()
{
    std::vector<AudioShape> shapes;
    for (const unsigned rate : rates) {
        for (const unsigned channels : channelCounts) {
            for (const unsigned bits : depths) {
                shapes.push_back(shapeOf(bits, channels, rate));
            }
        }
    }
    return shapes;
}

/// Shapes in an order in which few of them in a row have every value.
std::vector<AudioShape> mixedShapes()
{
    std::vector<AudioShape> shapes;
    for (std::size_t i = 0; i < std::size(depths) * std::size(rates); ++i) {
        shapes.push_back(shapeOf(depths[i % std::size(depths)], channelCounts[(i + i / 3) % 3],
                                 rates[i % std::size(rates)]));
    }
    return shapes;
}

bool holdsDepth(const Format &format, unsigned bits)
{
    return !format.limits || std::ranges::count(format.limits->bits, static_cast<int>(bits)) > 0;
}

bool holds(const Format &format, const AudioShape &shape)
{
    const AudioLimits *limits = format.limits;
    const auto rate = static_cast<int>(shape.sampleRate);
    return !limits || (holdsDepth(format, shape.bitsPerSample) &&
                       static_cast<int>(shape.channels) <= limits->mostChannels &&
                       rate >= limits->lowestRate && rate <= limits->highestRate);
}

/// Few shapes that both hold, with each value of a shape that both hold.
std::vector<AudioShape> shapesOfBoth(const Format &source, const Format &target)
{
    std::vector<AudioShape> shapes;
    std::set<unsigned> met; // the values are all different
    for (const AudioShape &shape : mixedShapes()) {
        if (holds(source, shape) && holds(target, shape)) {
            const std::size_t before = met.size();
            met.insert({shape.sampleRate, shape.channels, shape.bitsPerSample});
            if (met.size() > before) {
                shapes.push_back(shape);
            }
        }
    }
    return shapes;
}

/// One shape for each reason why the target can't hold what the source can.
std::vector<AudioShape> shapesRefused(const Format &source, const Format &target)
{
    std::vector<AudioShape> shapes;
    std::set<unsigned> reasons;
    for (const AudioShape &shape : mixedShapes()) {
        const unsigned reason =
            holdsDepth(target, shape.bitsPerSample) ? shape.channels : shape.bitsPerSample;
        if (holds(source, shape) && !holds(target, shape) && reasons.insert(reason).second) {
            shapes.push_back(shape);
        }
    }
    return shapes;
}

/// As FFmpeg decodes it to the widest samples.
Audio widened(const AudioShape &shape)
{
    Audio audio = makeAudio(shape);
    for (std::int32_t &sample : audio.samples) {
        sample = static_cast<std::int32_t>(static_cast<std::uint32_t>(sample) << (32 - audio.bitsPerSample));
    }
    audio.bitsPerSample = 32;
    return audio;
}

void runFfmpeg(const QStringList &arguments)
{
    QProcess process;
    process.start(u"ffmpeg"_s, QStringList{u"-v"_s, u"error"_s, u"-nostdin"_s, u"-y"_s} + arguments);
    process.waitForFinished(-1);
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
}

/// What files are made from: those that this program writes or the tests can write, and are lossless.
QList<const Format *> sourceFormats()
{
    QList<const Format *> formats{&wavFormat, &aiffFormat};
    formats += Formats::made(false);
    return formats;
}

struct Piece
{
    const Format *sourceFormat;
    AudioShape shape;
    QString source;
    QString output = {};
};

/// Everything lossless to one lossless format, by the real tools.
class Pairs : public testing::TestWithParam<const Format *>
{
protected:
    Pairs()
    {
        engine.queue.setProvesOutputs();
        QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded, [this](KruvTask &job) {
            if (job.error()) {
                failures.insert(job.inputPath(), job.results()->results(job).trimmed());
            } else if (job.proof().kind != u"same-audio") {
                failures.insert(job.inputPath(), u"not proven"_s);
            }
        });
    }

    const Format &target() const { return *GetParam(); }
    QString place(const QString &folder, const AudioShape &shape, const QString &extension) const
    {
        return u"%1/%2-bit %3 ch %4 Hz.%5"_s.arg(engine.folder.makeFolder(folder))
            .arg(shape.bitsPerSample)
            .arg(shape.channels)
            .arg(shape.sampleRate)
            .arg(extension);
    }
    QString wavOf(const AudioShape &shape) const
    {
        QString path = place(u"wav"_s, shape, u"wav"_s);
        if (!QFile::exists(path)) {
            writeWav(path, shape);
        }
        return path;
    }
    /// A source of that format, which is complete when the queue has run.
    Piece sourceOf(const Format &format, const AudioShape &shape)
    {
        if (&format == &wavFormat) {
            return {&format, shape, wavOf(shape)};
        }
        const QString path = place(QString::fromLatin1(format.id), shape, format.extension());
        if (&format == &aiffFormat) {
            writeAiff(path, shape);
        } else {
            convert(format, wavOf(shape), path);
        }
        return {&format, shape, path};
    }
    void convert(const Format &format, const QString &source, const QString &output)
    {
        engine.queue.addTask(format.encode(&engine.queue, {.source = source, .output = output}));
    }
    void runToEnd() { EXPECT_TRUE(engine.runToEnd()); }

    void makeOutputs(std::vector<Piece> &pieces)
    {
        for (Piece &piece : pieces) {
            const QString folder = u"out/"_s + QFileInfo(piece.source).dir().dirName();
            piece.output = place(folder, piece.shape, target().extension());
            convert(target(), piece.source, piece.output);
        }
        runToEnd();
        EXPECT_EQ(failures, Failures());
        EXPECT_EQ(filesIn(u"out"_s).size(), static_cast<qsizetype>(pieces.size()));
    }
    QStringList filesIn(const QString &folder) const
    {
        QDirIterator walk(engine.folder.file(folder), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                          QDirIterator::Subdirectories);
        QStringList files;
        while (walk.hasNext()) {
            if (const QFileInfo entry = walk.nextFileInfo();
                entry.isFile() || entry.fileName().startsWith(u'.')) {
                files.append(entry.filePath());
            }
        }
        return files;
    }
    /// One process decodes them all: its start takes longer than its work.
    void expectSameSamples(const std::vector<Piece> &pieces)
    {
        const QString folder = engine.folder.makeFolder(u"decoded"_s);
        QStringList inputs;
        QStringList outputs;
        for (const Piece &piece : pieces) {
            const QString number = QString::number(inputs.size() / 2);
            inputs << u"-i"_s << piece.output;
            outputs << u"-map"_s << number + u":a"_s << u"-c:a"_s << u"pcm_s32le"_s << u"-f"_s << u"wav"_s
                    << (folder + QChar(u'/') + number);
        }
        runFfmpeg(inputs + outputs);
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            EXPECT_TRUE(readWav(folder + u'/' + QString::number(i)) == widened(pieces[i].shape))
                << pieces[i].output.toStdString();
        }
    }

    using Failures = QMap<QString, QString>; // by source
    Engine engine;
    Failures failures;
};

std::string targetName(const testing::TestParamInfo<const Format *> &parameter)
{
    return parameter.param->id;
}

} // namespace

TEST_P(Pairs, HaveTheSameSamplesAndTheTitle)
{
    std::vector<Piece> pieces;
    for (const Format *source : sourceFormats()) {
        for (const AudioShape &shape :
             source == &wavFormat ? everyShape() : shapesOfBoth(*source, target())) {
            if (holds(target(), shape)) {
                pieces.push_back(sourceOf(*source, shape));
            }
        }
    }
    runToEnd();
    const QString title = u"Gl\u00fcck 50%"_s;
    for (const Piece &piece : pieces) {
        if (piece.sourceFormat->tags) {
            TagsObject tags;
            tags.setTitleText(title);
            TagCopy::write(*piece.sourceFormat, piece.source, tags);
        }
    }
    makeOutputs(pieces);
    expectSameSamples(pieces);
    for (const Piece &piece : pieces) {
        const QString expected = piece.sourceFormat->tags && target().tags ? title : QString();
        EXPECT_EQ(TagCopy::read(target(), piece.output)->titleText(), expected) << piece.source.toStdString();
    }
}

TEST_P(Pairs, RefuseWhatTheTargetCantHoldBeforeAToolStarts)
{
    std::vector<Piece> pieces;
    for (const Format *source : sourceFormats()) {
        for (const AudioShape &shape : shapesRefused(*source, target())) {
            pieces.push_back(sourceOf(*source, shape));
        }
    }
    runToEnd();
    ASSERT_EQ(failures, Failures());
    const EnvironmentVariable noTools("KRUV_RESOURCES", engine.folder.makeFolder(u"no tools"_s).toUtf8());
    const QString out = engine.folder.makeFolder(u"out"_s);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        convert(target(), pieces[i].source, u"%1/%2.x"_s.arg(out).arg(i));
    }
    runToEnd();
    EXPECT_EQ(filesIn(u"out"_s), QStringList());
    for (const Piece &piece : pieces) {
        const QString said = failures.value(piece.source);
        EXPECT_TRUE(said.startsWith(piece.source + u" has "_s) &&
                    said.contains(u"; %1 holds "_s.arg(target().label)) && said.endsWith(u'.') &&
                    !said.contains(u'\n'))
            << piece.source.toStdString() << ": " << said.toStdString();
    }
}

TEST_P(Pairs, TakePlainAudioFromOtherContainers)
{
    const AudioShape shape = holds(target(), shapeOf(24, 6, 96000))   ? shapeOf(24, 6, 96000)
                             : holds(target(), shapeOf(24, 2, 96000)) ? shapeOf(24, 2, 96000)
                                                                      : shapeOf(16, 6, 48000);
    const QString wav = wavOf(shape);
    std::vector<Piece> pieces;
    for (const auto &[name, extension] : {std::pair(u"rf64"_s, u"wav"_s), std::pair(u"streamed"_s, u"wav"_s),
                                          std::pair(u"w64"_s, u"w64"_s), std::pair(u"caf"_s, u"caf"_s)}) {
        pieces.push_back({&wavFormat, shape, place(name, shape, extension)});
    }
    const QStringList copy{u"-c:a"_s, u"copy"_s};
    runFfmpeg(QStringList{u"-i"_s, wav} + copy + QStringList{u"-rf64"_s, u"always"_s, pieces[0].source} +
              copy + QStringList{pieces[2].source} + copy + QStringList{pieces[3].source});
    QByteArray streamed = readFile(wav);
    streamed.replace(4, 4, QByteArray(4, '\xff'));
    streamed.replace(streamed.indexOf("data") + 4, 4, QByteArray(4, '\xff'));
    writeFile(pieces[1].source, streamed);
    makeOutputs(pieces);
    expectSameSamples(pieces);
}

INSTANTIATE_TEST_SUITE_P(To, Pairs, testing::ValuesIn(Formats::made(false)), targetName);

} // namespace kruv::test
