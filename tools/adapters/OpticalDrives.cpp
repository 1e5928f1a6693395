// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "OpticalDrives.h"

#include "File.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <dirent.h>
#include <memory>
#include <optional>

namespace kruv::adapters {

namespace {

struct ProviderWord
{
    DriveKind kind;
    std::string_view word;
};

constexpr std::array providerWords{
    ProviderWord{DriveKind::Cd, "IOCompactDiscServices"},
    ProviderWord{DriveKind::Dvd, "IODVDServices"},
    ProviderWord{DriveKind::BluRay, "IOBDServices"},
};

struct Provider
{
    DriveKind kind;
    unsigned number; // from 1
};

std::optional<unsigned> number(std::string_view digits)
{
    unsigned value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (digits.empty() || result.ec != std::errc() || result.ptr != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return value;
}

std::optional<Provider> parseProvider(std::string_view text)
{
    for (const auto &[kind, word] : providerWords) {
        if (text.substr(0, word.size()) != word) {
            continue;
        }
        const auto rest = text.substr(word.size());
        if (rest.empty()) {
            return Provider{kind, 1};
        }
        if (rest.front() == '/') {
            if (const auto value = number(rest.substr(1)); value && *value > 0) {
                return Provider{kind, *value};
            }
        }
    }
    return std::nullopt;
}

std::vector<unsigned> driveNumbers(const std::string &folder)
{
    std::vector<unsigned> numbers;
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(opendir(folder.c_str()), closedir);
    while (const dirent *entry = entries ? readdir(entries.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        if (name.substr(0, 2) == "sr") {
            if (const auto value = number(name.substr(2))) {
                numbers.push_back(*value);
            }
        }
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

DriveKind driveKind(const std::string &root, const std::string &name)
{
    constexpr std::size_t limit = 65536;
    auto device = readStart(root + "/sys/block/" + name + "/dev", 32);
    device.erase(std::min(device.find('\n'), device.size()));
    std::string properties(1, '\n');
    properties += readStart(root + "/run/udev/data/b" + device, limit);
    if (properties.find("\nE:ID_CDROM_BD=1") != std::string::npos) {
        return DriveKind::BluRay;
    }
    return properties.find("\nE:ID_CDROM_DVD=1") != std::string::npos ? DriveKind::Dvd : DriveKind::Cd;
}

} // namespace

std::vector<OpticalDrive> opticalDrives(const std::string &root)
{
    std::vector<OpticalDrive> drives;
    for (const auto value : driveNumbers(root + "/sys/block")) {
        auto name = "sr" + std::to_string(value);
        const auto kind = driveKind(root, name);
        drives.push_back({std::move(name), kind});
    }
    return drives;
}

std::string providerOfDrive(const std::vector<OpticalDrive> &drives, std::string_view name)
{
    const auto drive =
        std::find_if(drives.begin(), drives.end(), [&](const auto &each) { return each.name == name; });
    if (drive == drives.end()) {
        return {};
    }
    const auto position =
        std::count_if(drives.begin(), drive, [&](const auto &each) { return each.kind == drive->kind; }) + 1;
    const auto word = std::find_if(providerWords.begin(), providerWords.end(),
                                   [&](const auto &each) { return each.kind == drive->kind; });
    std::string provider(word->word);
    return position == 1 ? provider : provider + "/" + std::to_string(position);
}

std::string deviceOfProvider(const std::vector<OpticalDrive> &drives, std::string_view provider)
{
    if (provider.empty()) {
        return drives.size() == 1 ? "/dev/" + drives.front().name : std::string();
    }
    const auto wanted = parseProvider(provider);
    if (!wanted) {
        return {};
    }
    const bool kindKnown = std::any_of(drives.begin(), drives.end(),
                                       [&](const auto &each) { return each.kind == wanted->kind; });
    unsigned position = 0;
    for (const auto &drive : drives) {
        if ((!kindKnown || drive.kind == wanted->kind) && ++position == wanted->number) {
            return "/dev/" + drive.name;
        }
    }
    return {};
}

bool isProviderName(std::string_view text)
{
    return parseProvider(text).has_value();
}

} // namespace kruv::adapters
