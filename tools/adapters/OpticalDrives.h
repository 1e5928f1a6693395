// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kruv::adapters {

/// How the provider names call a drive: by the best kind of disc it takes.
enum class DriveKind { Cd, Dvd, BluRay };

/// One optical drive of this machine.
struct OpticalDrive
{
    std::string name; // kernel name, "sr0"
    DriveKind kind = DriveKind::Cd;
};

/// The optical drives below `root` ("" for the real system; tests give a tree of their own), in the order of
/// their kernel numbers. Drives are the srN entries of /sys/block; their kind comes from the device database
/// (/run/udev/data/bMAJOR:MINOR), and a drive that is not listed there counts as a plain CD drive.
std::vector<OpticalDrive> opticalDrives(const std::string &root = std::string());

/// Provider name of the drive `name`: the word of its kind, and "/2", "/3" ... from the second drive of that
/// kind on. Empty when `drives` has no such drive.
std::string providerOfDrive(const std::vector<OpticalDrive> &drives, std::string_view name);

/// Device file of a provider name ("IODVDServices/2" is "/dev/sr1", say). Where no drive is known under the
/// name's kind, the number counts all drives, and an empty provider means the only drive there is. Empty when
/// nothing fits or `provider` is no provider name.
std::string deviceOfProvider(const std::vector<OpticalDrive> &drives, std::string_view provider);

/// Whether `text` is one of the provider words, with or without a number.
bool isProviderName(std::string_view text);

} // namespace kruv::adapters
