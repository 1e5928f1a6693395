// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Audio.h"

#include "support/Files.h"
#include "support/QtPrinters.h"

#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

using namespace kruv::test;

namespace {

QString run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

class AudioFiles : public testing::TestWithParam<AudioShape>
{
};

} // namespace

TEST_P(AudioFiles, AreReadTheSameByUsAndByAnotherReader)
{
    const TemporaryFolder folder;
    const Audio audio = makeAudio(GetParam());
    const QString wav = folder.write(QStringLiteral("a.wav"), wavBytes(audio));
    const QString aiff = folder.write(QStringLiteral("a.aiff"), aiffBytes(audio));
    EXPECT_EQ(readWav(wav), audio);
    EXPECT_EQ(readAiff(aiff), audio);

    // sox refuses a file without a single frame.
    if (audio.samples.empty() || QStandardPaths::findExecutable(QStringLiteral("soxi")).isEmpty()) {
        return;
    }
    for (const QString &file : {wav, aiff}) {
        EXPECT_EQ(run(QStringLiteral("soxi"), {QStringLiteral("-r"), file}),
                  QString::number(audio.sampleRate));
        EXPECT_EQ(run(QStringLiteral("soxi"), {QStringLiteral("-s"), file}), QString::number(audio.frames()));
        EXPECT_EQ(run(QStringLiteral("soxi"), {QStringLiteral("-b"), file}),
                  QString::number(audio.bitsPerSample));
    }
    const QString decoded = folder.file(QStringLiteral("sox.wav"));
    run(QStringLiteral("sox"), {QStringLiteral("-D"), aiff, decoded});
    EXPECT_EQ(readWav(decoded), audio);
}

INSTANTIATE_TEST_SUITE_P(Shapes, AudioFiles,
                         testing::Values(AudioShape{}, AudioShape{8000, 1, 8, 801, Signal::Noise, 2},
                                         AudioShape{96000, 6, 24, 777, Signal::Noise, 3},
                                         AudioShape{192000, 2, 32, 100, Signal::FullScaleSquare, 4},
                                         AudioShape{11025, 1, 16, 0, Signal::Sine, 5}));
