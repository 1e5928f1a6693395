// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AudioFiles.h"
#include "audio/ExtAudioFileReader.h"
#include "base/HeldWork.h"
#include "base/InParallel.h"
#include "base/WorkPause.h"
#include "checksums/FileHash.h"
#include "support/Audio.h"
#include "support/Files.h"

#include <QProcess>

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

bool isReadToItsEnd(const QString &path)
{
    const auto reader = AudioFiles::open(path);
    const AudioStreamFormat client = reader->dataFormat().clientFormat();
    reader->setClientFormat(client);
    std::vector<std::uint8_t> piece(std::size_t{4096} * client.bytesPerFrame);
    std::size_t all = 0;
    while (const std::size_t got = reader->read(piece)) {
        all += got;
    }
    return all == static_cast<std::size_t>(reader->lengthInFrames()) * client.bytesPerFrame;
}

} // namespace

TEST(PausedWork, ReadsNothing)
{
    const TemporaryFolder folder;
    const QString wav = folder.file(u"a.wav"_s);
    const QString flac = folder.file(u"a.flac"_s);
    writeWav(wav);
    QProcess::execute(u"flac"_s, {u"-s"_s, wav});
    using Work = std::function<bool(std::size_t)>;
    const Work works[] = {
        [&](std::size_t) { return isReadToItsEnd(wav); },
        [&](std::size_t) { return isReadToItsEnd(flac); },
        [&](std::size_t) { return !FileHash::md5HashOfFileAtPath(wav).isEmpty(); },
    };
    for (const Work &work : works) {
        for (const bool isUnwanted : {false, true}) {
            WorkPause pause;
            pause.set(true);
            std::stop_source unwanted;
            std::atomic<int> done = 0;
            std::thread job([&] {
                const HeldWork held(&pause, unwanted.get_token());
                inParallel(
                    2, 2, [] { return false; }, [&](std::size_t index) { done += work(index); });
            });
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            EXPECT_EQ(done, 0);
            if (isUnwanted) {
                unwanted.request_stop();
            } else {
                pause.set(false);
            }
            job.join();
            EXPECT_EQ(done, 2);
        }
    }
}

} // namespace kruv::test
