// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Plays cdda2wav with a disc in the drive: KRUV_TEST_CUE names a cue sheet, whose .bin lies beside it, and
// KRUV_TEST_BAD_TRACK a track in whose middle the drive goes away. Takes the arguments of an extraction,
// prints what the tool prints, and refuses arguments that it would not understand.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr unsigned sectorBytes = 2352;
constexpr unsigned sectorsPerSecond = 75;

struct Disc
{
    std::string audio;
    std::map<unsigned, std::size_t> starts; // sectors

    std::string track(unsigned number) const
    {
        const auto next = starts.upper_bound(number);
        const std::size_t start = starts.at(number) * sectorBytes;
        const std::size_t end = next == starts.end() ? audio.size() : next->second * sectorBytes;
        return audio.substr(start, end - start);
    }
};

std::string contents(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

Disc load(const std::string &cue)
{
    Disc disc{contents(cue.substr(0, cue.rfind('.')) + ".bin"), {}};
    std::ifstream sheet(cue);
    std::string line;
    unsigned track = 0;
    while (std::getline(sheet, line)) {
        unsigned minutes = 0;
        unsigned seconds = 0;
        unsigned frames = 0;
        std::sscanf(line.c_str(), " TRACK %u AUDIO", &track);
        if (std::sscanf(line.c_str(), " INDEX 01 %u:%u:%u", &minutes, &seconds, &frames) == 3) {
            disc.starts[track] = (minutes * 60 + seconds) * sectorsPerSecond + frames;
        }
    }
    return disc;
}

struct Request
{
    bool bulk = false;
    unsigned first = 0;
    unsigned last = 0;
};

Request parse(const std::vector<std::string> &arguments)
{
    Request request;
    std::size_t next = 0;
    const auto expect = [&](const std::string &wanted) {
        if (next >= arguments.size() || arguments[next++] != wanted) {
            throw std::runtime_error("expected " + wanted);
        }
    };
    request.bulk = !arguments.empty() && arguments[0] == "-B";
    next = request.bulk ? 1 : 0;
    for (const char *each : {"-L", "1", "-H", "-t"}) {
        expect(each);
    }
    if (std::sscanf(arguments.at(next++).c_str(), "%u+%u", &request.first, &request.last) != 2) {
        throw std::runtime_error("bad range");
    }
    expect("-paranoia");
    expect("-Owav");
    expect("dev=IODVDServices/2");
    return request;
}

void writeWav(const std::string &name, const std::string &audio)
{
    std::ofstream file(name, std::ios::binary);
    const auto number = [&file](std::size_t value, int bytes) {
        for (; bytes > 0; --bytes, value >>= 8) {
            file.put(static_cast<char>(value & 0xff));
        }
    };
    file << "RIFF";
    number(audio.size() + 36, 4);
    file << "WAVEfmt ";
    number(16, 4);
    number(0x00020001, 4); // PCM, stereo
    number(44100, 4);
    number(176400, 4);
    number(0x00100004, 4);
    file << "data";
    number(audio.size(), 4);
    file << audio;
}

void reportTrack(unsigned track)
{
    std::fprintf(stderr, "percent_done:\n  0%%");
    for (unsigned percent = 25; percent <= 100; percent += 25) {
        std::fprintf(stderr, "\r%3u%%", percent);
    }
    std::fprintf(stderr, "  track %2u recorded successfully\n", track);
    std::fprintf(stderr, "  0 rderr, 0 skip, 0 atom, 0 edge, 0 drop, 0 dup, 0 drift\n");
}

int extract(const Disc &disc, const Request &request)
{
    const char *bad = std::getenv("KRUV_TEST_BAD_TRACK");
    std::string all;
    std::fprintf(stderr, "Table of Contents: total tracks:%zu\n", disc.starts.size());
    for (unsigned track = request.first; track <= request.last; ++track) {
        const std::string audio = disc.track(track);
        char name[32];
        std::snprintf(name, sizeof name, "audio_%02u.wav", track);
        if (bad && static_cast<unsigned>(std::atoi(bad)) == track) {
            writeWav(name, audio.substr(0, audio.size() / 2));
            std::fprintf(stderr, "percent_done:\n  0%%\r 50%%\ncdda2wav: Input/output error. Read error\n");
            return 15;
        }
        if (request.bulk) {
            writeWav(name, audio);
            reportTrack(track);
        }
        all += audio;
    }
    if (!request.bulk) {
        writeWav("audio.wav", all);
        reportTrack(request.last);
    }
    return 0;
}

} // namespace

int main(int count, char **arguments)
{
    try {
        return extract(load(std::getenv("KRUV_TEST_CUE")), parse({arguments + 1, arguments + count}));
    } catch (const std::exception &problem) {
        std::fprintf(stderr, "cdda2wav: %s\n", problem.what());
        return 2;
    }
}
