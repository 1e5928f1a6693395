// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Fills the manual page's template at build time: manual TEMPLATE writes the page to standard output.

#include "cli/Commands.h"

#include <fstream>
#include <iostream>

int main(int argc, char **argv)
{
    std::ifstream page(argc == 2 ? argv[1] : "");
    if (!page) {
        std::cerr << "usage: manual TEMPLATE\n";
        return 2;
    }
    CLI::App app;
    const auto verbs = kruv::Commands::declare(app);
    for (std::string line; std::getline(page, line);) {
        if (line == "@SYNOPSIS@") {
            std::cout << kruv::Commands::manualSynopsis(app);
        } else if (line == "@COMMANDS@") {
            std::cout << kruv::Commands::manualSections(app);
        } else {
            std::cout << line << '\n';
        }
    }
    return std::cout.flush() ? 0 : 1;
}
