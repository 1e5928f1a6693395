// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Disc.h"
#include "common/ByteSink.h"
#include "common/OutputFile.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kruv::dvda {

/// The folder AUDIO_TS while it is written. Its files get their names only in complete(); without that, or
/// when SIGTERM ends the process, no file stays.
///
/// As a sink it takes the sectors of the audio, whole ones at a time, and spreads them over the audio object
/// files.
class AudioTree : public tools::ByteSink
{
public:
    /// Makes @p folder with AUDIO_TS, and an empty VIDEO_TS if wanted, in it. Files of an earlier AUDIO_TS
    /// are removed; throws ToolError, before anything is changed, where one of these folders holds anything
    /// else.
    AudioTree(const std::filesystem::path &folder, bool withVideoFolder,
              std::uint32_t sectorsPerFile = sectorsPerAobFile);
    ~AudioTree() override;
    AudioTree(const AudioTree &) = delete;
    AudioTree &operator=(const AudioTree &) = delete;

    void write(std::span<const std::uint8_t> sectors) override;
    /// Writes the information files for what was written and gives every file its name. @p infoSector is the
    /// sector at which the image will hold AUDIO_PP.IFO; nothing means the usual one.
    void complete(const Disc &disc, std::optional<std::uint32_t> infoSector);

private:
    tools::OutputFile &add(const std::string &name);

    std::filesystem::path m_audioFolder;
    std::uint64_t m_bytesPerFile;
    std::vector<std::unique_ptr<tools::OutputFile>> m_files;
    bool m_completed = false;
};

/// Free bytes for us on the file system that holds @p folder, which need not exist yet.
std::optional<std::uint64_t> freeBytes(std::filesystem::path folder);

} // namespace kruv::dvda
