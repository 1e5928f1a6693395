// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "OpticalDrives.h"

#include "ScratchFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace kruv::adapters {

namespace {

// A tree like /sys/block with the device database beside it, gone with the object.
class FakeMachine
{
public:
    void add(const std::string &name, const std::string &number, const std::string &properties)
    {
        std::filesystem::create_directories(m_root + "/sys/block/" + name);
        std::filesystem::create_directories(m_root + "/run/udev/data");
        std::ofstream(m_root + "/sys/block/" + name + "/dev") << number << "\n";
        if (!properties.empty()) {
            std::ofstream(m_root + "/run/udev/data/b" + number) << properties;
        }
    }

    std::vector<OpticalDrive> drives() const { return opticalDrives(m_root); }

private:
    const ScratchFolder m_folder{testing::TempDir()};
    const std::string m_root = m_folder.path();
};

using Mappings = std::vector<std::pair<std::string, std::string>>; // a provider and its device

void expectMappings(const std::vector<OpticalDrive> &drives, const Mappings &mappings)
{
    for (const auto &[provider, device] : mappings) {
        EXPECT_EQ(deviceOfProvider(drives, provider), device) << provider;
    }
}

} // namespace

TEST(OpticalDrives, AreNumberedWithinTheirKind)
{
    FakeMachine machine;
    machine.add("sr10", "11:10", "E:ID_CDROM=1\nE:ID_CDROM_CD=1\n");
    machine.add("sr2", "11:2", "E:ID_CDROM=1\nE:ID_CDROM_DVD=1\n");
    machine.add("sr0", "11:0", "I:42\nE:ID_CDROM_CD=1\nE:ID_CDROM_BD=1\nE:ID_CDROM_DVD=1\n");
    machine.add("sr1", "11:1", "E:ID_CDROM_DVD=1\nE:ID_CDROM_CD=1\n");
    machine.add("sr3", "11:3", "");
    machine.add("sda", "8:0", "E:ID_CDROM_DVD=1\n");
    machine.add("srx", "8:1", "");
    const auto drives = machine.drives();
    expectMappings(drives, {{"IOBDServices", "/dev/sr0"},
                            {"IODVDServices", "/dev/sr1"},
                            {"IODVDServices/2", "/dev/sr2"},
                            {"IOCompactDiscServices", "/dev/sr3"},
                            {"IOCompactDiscServices/2", "/dev/sr10"},
                            {"IOBDServices/2", ""},
                            {"", ""}});
    for (const char *provider :
         {"IOBDServices", "IODVDServices", "IODVDServices/2", "IOCompactDiscServices/2"}) {
        const auto device = deviceOfProvider(drives, provider);
        EXPECT_EQ(providerOfDrive(drives, device.substr(5)), provider);
    }
    EXPECT_EQ(providerOfDrive(drives, "sr9"), "");
}

} // namespace kruv::adapters
