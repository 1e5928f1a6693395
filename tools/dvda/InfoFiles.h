// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Disc.h"

#include <cstdint>
#include <vector>

namespace kruv::dvda {

// The information files of AUDIO_TS, whole sectors each. Their layout is known from published notes on discs
// and from open readers; numbers are big-endian, sectors relative unless said otherwise.

/// How many different formats a group can have.
constexpr std::size_t largestFormatCount = 8;

/// ATS_01_0.IFO: the titles and tracks of the group, their formats and sectors.
std::vector<std::uint8_t> titleSetInfo(const Disc &disc);

/// AUDIO_TS.IFO: the list of titles.
std::vector<std::uint8_t> managerInfo(const Disc &disc);

/// AUDIO_PP.IFO: the flat track table for simple players, the only file with absolute sectors.
/// @p ownSector is where the image will hold this file; see usualInfoSector().
std::vector<std::uint8_t> simplePlayerInfo(const Disc &disc, std::uint32_t ownSector);

/// The sector at which an ISO 9660 and UDF image with no further extensions puts AUDIO_PP.IFO: behind both
/// file systems' structures, whose size depends on the number of files.
std::uint32_t usualInfoSector(std::uint32_t aobFiles);

/// Sectors of everything from AUDIO_PP.IFO to the end of the last file.
std::uint32_t discSectors(const Disc &disc);

} // namespace kruv::dvda
