// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Fills templates at build time: documents TEMPLATE writes the manual page, the desktop entry or the
// metadata, with the commands and media types that the program knows, to standard output.

#include "cli/Commands.h"
#include "formats/Formats.h"

#include <exception>
#include <fstream>
#include <iostream>

namespace {

/// Each media type of the formats that some list takes, between two texts; those that several have only once.
std::string mediaTypes(const std::string &before, const std::string &after)
{
    QStringList types;
    for (const kruv::Format *format : kruv::Formats::all()) {
        for (const char *type : format->mediaTypes) {
            types.append(QString::fromLatin1(type));
        }
    }
    types.removeDuplicates();
    std::string text;
    for (const QString &type : types) {
        text.append(before).append(type.toStdString()).append(after);
    }
    return text;
}

} // namespace

int main(int argc, char **argv)
try {
    std::ifstream page(argc == 2 ? argv[1] : "");
    if (!page) {
        std::cerr << "usage: documents TEMPLATE\n";
        return 2;
    }
    CLI::App app;
    const auto verbs = kruv::Commands::declare(app);
    for (std::string line; std::getline(page, line);) {
        if (line == "@SYNOPSIS@") {
            std::cout << kruv::Commands::manualSynopsis(app);
        } else if (line == "@COMMANDS@") {
            std::cout << kruv::Commands::manualSections(app);
        } else if (line == "@MEDIA_TYPES@") {
            std::cout << mediaTypes("    <mediatype>", "</mediatype>\n");
        } else if (const auto place = line.find("@MEDIA_TYPES@"); place != std::string::npos) {
            std::cout << line.replace(place, sizeof("@MEDIA_TYPES@") - 1, mediaTypes("", ";")) << '\n';
        } else {
            std::cout << line << '\n';
        }
    }
    return std::cout.flush() ? 0 : 1;
} catch (const std::exception &failure) {
    std::cerr << failure.what() << '\n';
    return 1;
}
