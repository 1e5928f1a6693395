// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options.h"

#include <charconv>

namespace kruv::dvda {
namespace {

class Parser
{
public:
    explicit Parser(const std::vector<std::string> &arguments)
        : m_arguments(arguments)
    {
    }

    Options parse()
    {
        while (m_next < m_arguments.size()) {
            parseOne();
        }
        if (m_options.action != Action::Author) {
            return m_options;
        }
        if (m_options.outputFolder.empty()) {
            throw UsageError("no output folder (-o)");
        }
        if (m_options.files.empty()) {
            throw UsageError("no files to put on the disc (-g)");
        }
        return m_options;
    }

private:
    void parseOne()
    {
        const std::string &argument = m_arguments[m_next++];
        if (argument == "-l") {
            m_options.logFile = value(argument);
        } else if (argument == "-o") {
            m_options.outputFolder = value(argument);
        } else if (argument == "-p") {
            m_options.infoSector = number(value(argument));
        } else if (argument == "-g") {
            parseGroup();
        } else if (argument == "-n") {
            m_options.videoFolder = false;
        } else if (argument.starts_with("-f")) {
            m_options.tolerant = true;
        } else if (argument == "-h" || argument == "--help") {
            m_options.action = Action::ShowHelp;
        } else if (argument == "-v" || argument == "--version") {
            m_options.action = Action::ShowVersion;
            // Never waiting for a key at the end and taking more than WAV files goes without saying here.
        } else if (argument != "-P" && argument != "-P0" && argument != "-P1" && argument != "-S") {
            throw UsageError("unknown argument \"" + argument + "\"");
        }
    }

    void parseGroup()
    {
        if (!m_options.files.empty()) {
            throw UsageError("only one group (-g) is supported");
        }
        bool optionsEnded = false;
        for (; m_next < m_arguments.size(); ++m_next) {
            const std::string &argument = m_arguments[m_next];
            if (!optionsEnded && argument == "--") {
                optionsEnded = true;
            } else if (!optionsEnded && argument.starts_with('-')) {
                break;
            } else {
                m_options.files.push_back(argument);
            }
        }
    }

    const std::string &value(const std::string &option)
    {
        if (m_next == m_arguments.size()) {
            throw UsageError("nothing after " + option);
        }
        return m_arguments[m_next++];
    }

    static std::uint32_t number(const std::string &text)
    {
        std::uint32_t result = 0;
        const char *end = text.data() + text.size();
        const auto [parsed, error] = std::from_chars(text.data(), end, result);
        if (error != std::errc() || parsed != end) {
            throw UsageError("\"" + text + "\" is no sector number");
        }
        return result;
    }

    const std::vector<std::string> &m_arguments;
    std::size_t m_next = 0;
    Options m_options;
};

} // namespace

Options parseOptions(const std::vector<std::string> &arguments)
{
    return Parser(arguments).parse();
}

const char *const usage =
    "usage: dvda [-l LOG] [-f] [-n] [-p SECTOR] -o FOLDER -g FILE...\n"
    "Makes the folders AUDIO_TS and VIDEO_TS of a DVD-Audio disc in FOLDER, with one track\n"
    "for every WAV, AIFF or FLAC file.\n"
    "  -l LOG     append messages to this file\n"
    "  -f         use what is there of files that are shorter than they state\n"
    "  -n         make no VIDEO_TS\n"
    "  -p SECTOR  sector of AUDIO_PP.IFO in the image\n"
    "  -P, -P0, -P1, -S  accepted without effect\n";

} // namespace kruv::dvda
