// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kruv::adapters {

/// Checks and completes a freshly written DVD-Audio image.
///
/// The files of AUDIO_TS must lie one behind the other in their order on the disc. AUDIO_PP.IFO holds the
/// absolute sectors of the tracks (three fields in each track record), which only the finished image tells;
/// when the tree was authored for another place, all its copies in the image are corrected. Sectors are 2048
/// bytes; the directories are read from the ISO 9660 side (ECMA-119), whose extents the UDF side shares.
class DvdImage
{
public:
    /// `descriptor` is the image, open for reading and writing; it stays the caller's.
    explicit DvdImage(int descriptor);

    /// Empty on success, otherwise what is wrong with the image.
    std::string complete();

private:
    struct Entry
    {
        std::string name;
        std::uint32_t sector = 0;
        std::uint32_t size = 0; // bytes, the parts of a file in several extents added up
    };

    std::vector<Entry> readFolder(std::uint32_t sector, std::uint32_t size) const;
    std::vector<Entry> audioFiles() const;
    bool shiftTracks(std::uint32_t sector, std::uint32_t shift) const;

    int m_descriptor;
};

} // namespace kruv::adapters
