// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/ConversionTask.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "support/Audio.h"
#include "support/Engine.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"

#include <QDir>
#include <QDirIterator>
#include <QProcess>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

const QStringList faults = {u"half"_s,       u"garbage"_s, u"wrong64"_s, u"flip"_s,
                            u"empty"_s,      u"nothing"_s, u"failed"_s,  u"flood"_s,
                            u"halfFailed"_s, u"crashed"_s, u"silent"_s,  u"keepsPipe"_s};

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
        tools = engine.folder.makeFolder(u"tools"_s);
        behind = engine.folder.makeFolder(u"behind"_s);
        for (const QString &name : QDir(QString::fromLocal8Bit(real)).entryList(QDir::Files)) {
            QFile::link(faultyTool(), tools + u'/' + name);
            if (name != u"shntool") {
                QFile::link(faultyTool(), behind + u'/' + name);
            }
        }
        QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded, [this](KruvTask &job) {
            done.insert(job.inputPath(), !job.error());
            proven.insert(job.inputPath(), job.proof().kind);
        });
    }

    QString makeSource()
    {
        const QString wav = engine.folder.file(u"made.wav"_s);
        writeWav(wav, shape);
        if (GetParam().source == &wavFormat) {
            return wav;
        }
        const QString path = engine.folder.file(u"made."_s + GetParam().source->extension());
        engine.queue.addTask(GetParam().source->encode(&engine.queue, {.source = wav, .output = path}));
        EXPECT_TRUE(engine.runToEnd());
        return path;
    }
    /// Adds the job of one case and returns its folder.
    QString add(const QString &source, const QString &plan)
    {
        const QString name = u"case-%1"_s.arg(cases.size());
        const QString folder = engine.folder.makeFolder(name);
        engine.folder.makeFolder(name + u"/out"_s);
        engine.folder.write(name + u".fault"_s, plan.toUtf8());
        const auto [from, to, isDecode] = GetParam();
        const QString input = folder + u"/in."_s + from->extension();
        QFile::copy(source, input);
        const auto make = isDecode ? from->decode : to->encode;
        const auto job = make(&engine.queue, {.source = input, .output = outputOf(folder)});
        job->setDeleteOriginal(true);
        cases.insert(folder, plan);
        engine.queue.addTask(job);
        return folder;
    }
    QStringList toolsOf(const QString &folder) const
    {
        QFile log(folder + u".log"_s); // not there where this process does everything
        QStringList used;
        if (log.open(QIODevice::ReadOnly)) {
            used = QString::fromUtf8(log.readAll()).split(u'\n', Qt::SkipEmptyParts);
            used.removeDuplicates();
        }
        return used;
    }
    QString outputOf(const QString &folder) const
    {
        return folder + u"/out/in."_s + GetParam().target->extension();
    }
    QString inputOf(const QString &folder) const
    {
        return folder + u"/in."_s + GetParam().source->extension();
    }

    /// One process decodes them all: its start takes longer than its work.
    void expectWhole(const QStringList &outputs)
    {
        QStringList arguments{u"-v"_s, u"error"_s, u"-nostdin"_s, u"-y"_s};
        for (const QString &output : outputs) {
            arguments << u"-i"_s << output;
        }
        const QString decoded = engine.folder.makeFolder(u"decoded"_s);
        for (qsizetype i = 0; i < outputs.size(); ++i) {
            arguments << u"-map"_s << u"%1:a"_s.arg(i) << u"-c:a"_s << u"pcm_s16le"_s << u"-f"_s << u"wav"_s
                      << u"%1/%2"_s.arg(decoded).arg(i);
        }
        QProcess process;
        process.start(u"ffmpeg"_s, arguments);
        ASSERT_TRUE(process.waitForFinished(-1));
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
        for (qsizetype i = 0; i < outputs.size(); ++i) {
            const Audio audio = readWav(u"%1/%2"_s.arg(decoded).arg(i));
            const QString plan = cases.value(QFileInfo(outputs[i]).dir().path().chopped(4));
            if (GetParam().target->isLossy()) {
                const double seconds = static_cast<double>(audio.frames()) / audio.sampleRate;
                EXPECT_NEAR(seconds, static_cast<double>(shape.frames) / shape.sampleRate, 0.12)
                    << plan.toStdString();
            } else {
                EXPECT_TRUE(audio == makeAudio(shape)) << plan.toStdString();
            }
        }
    }

    const AudioShape shape{.frames = 22'051};
    const QByteArray real = qgetenv("KRUV_RESOURCES");
    Engine engine;
    QString tools;
    QString behind;
    QMap<QString, QString> cases; // by folder
    QMap<QString, bool> done;     // by source
    QMap<QString, QString> proven;
};

} // namespace

TEST_P(Faults, NeverLoseTheOriginalNorLeaveAWrongOutput)
{
    const QString source = makeSource();
    const EnvironmentVariable resources("KRUV_RESOURCES", tools.toUtf8());
    const EnvironmentVariable realTools("KRUV_REAL", real);
    const EnvironmentVariable behindShntool("KRUV_BEHIND", behind.toUtf8());
    const QString clean = add(source, {});
    ASSERT_TRUE(engine.runToEnd());
    if (!done.value(inputOf(clean)) && GetParam().target->isLossy()) {
        GTEST_SKIP() << "its encoder is not on this machine";
    }
    EXPECT_TRUE(done.value(inputOf(clean)) && !QFile::exists(inputOf(clean)));
    EXPECT_FALSE(proven.value(inputOf(clean)).isEmpty());
    for (const QString &tool : toolsOf(clean)) {
        for (const QString &fault : faults) {
            add(source, tool + u' ' + fault);
        }
    }
    ASSERT_TRUE(engine.runToEnd());

    QStringList outputs;
    for (auto each = cases.cbegin(); each != cases.cend(); ++each) {
        const bool hasOutput = QFile::exists(outputOf(each.key()));
        const bool hasOriginal = QFile::exists(inputOf(each.key()));
        EXPECT_TRUE(hasOutput || hasOriginal) << "the recording is lost: " << each.value().toStdString();
        EXPECT_TRUE(hasOutput || !done.value(inputOf(each.key()))) << each.value().toStdString();
        if (hasOutput) {
            outputs.append(outputOf(each.key()));
        }
        EXPECT_EQ(QDir(each.key() + u"/out"_s)
                      .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
                      .size(),
                  hasOutput ? 1 : 0)
            << each.value().toStdString();
    }
    expectWhole(outputs);
}

INSTANTIATE_TEST_SUITE_P(Of, Faults, testing::ValuesIn(conversions()), nameOf);

} // namespace kruv::test
