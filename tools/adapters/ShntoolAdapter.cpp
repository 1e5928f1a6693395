// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShntoolAdapter.h"

#include "ShntoolCommand.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace kruv::adapters {

namespace {

std::string firstWord(const std::string &text)
{
    const auto start = text.find_first_not_of(' ');
    return start == std::string::npos ? std::string() : text.substr(start, text.find(' ', start) - start);
}

// Extension of the outputs: "ext=" of the encoder's description, else the format's own name.
std::string outputExtension(const std::string &encoder)
{
    constexpr std::string_view key = " ext=";
    const auto at = encoder.find(key);
    return at == std::string::npos ? firstWord(encoder) : firstWord(encoder.substr(at + key.size()));
}

// The encoder description that does what `encoder` asks for:
// - "cust ext=wav wvunpack %f -" names a decoder as the encoder; its sense is a plain output of that format.
// - WAV, FLAC and AIFF go through ours. FLAC and WAV outputs of more than two channels need the extensible
// header that shntool does not write.
std::string adaptedEncoder(std::string encoder, const std::string &helper)
{
    const auto extension = outputExtension(encoder);
    if (encoder.starts_with("cust ") && encoder.find(" wvunpack %f -") != std::string::npos) {
        encoder = extension;
    }
    if (encoder == "wav") {
        return "cust ext=wav " + helper + " store %f";
    }
    if (encoder == "aiff") {
        // shntool itself calls sox, which ends with success on a full disk.
        return "cust ext=aiff " + helper + " store-aiff %f";
    }
    if (encoder == "flac") {
        return "flac ext=flac " + helper + " encode flac -s -o %f -";
    }
    constexpr std::string_view call = " ext=flac flac ";
    if (const auto at = encoder.find(call); at != std::string::npos) {
        encoder.insert(at + std::string_view(" ext=flac").size(), " " + helper + " encode");
    }
    return encoder;
}

// The program in an encoder's description ("cust ext=mp3 lame - %f"), or the one that stands for a bare
// format's name.
std::string encoderProgram(const std::string &description, const std::string &helper)
{
    constexpr std::array<std::pair<std::string_view, const char *>, 5> usual{
        {{"shn", "shorten"}, {"flac", "flac"}, {"wv", "wavpack"}, {"tta", "ttaenc"}, {"ape", "mac"}}};
    std::istringstream words(description);
    std::string format;
    std::string program;
    words >> format >> program;
    if (program.starts_with("ext=")) {
        program.clear();
        words >> program;
    }
    if (program == helper) {
        program.clear();
        words >> program;
        return program == "encode" && words >> program ? program : std::string();
    }
    const auto *known =
        std::find_if(usual.begin(), usual.end(), [&](const auto &each) { return each.first == format; });
    return program.empty() && known != usual.end() ? known->second : program;
}

// Decoders that hand over plain PCM headers whatever the depth and the number of channels.
Arguments decoderOptions(const std::string &helper)
{
    Arguments options;
    for (const char *format : {"flac", "aiff", "wv", "shn", "ape", "tta"}) {
        options.emplace_back("-i");
        options.push_back(std::string(format) + " " + helper + " decode " + format + " %f");
    }
    return options;
}

// What an output's name has around its source's.
struct Affixes
{
    std::string prefix;
    std::string ending;

    std::string around(const std::string &name) const { return prefix + name + ending; }
};

ShntoolOutput plannedOutput(const std::string &source, const Affixes &affixes)
{
    const std::string name(baseName(source));
    const std::string wanted = affixes.around(std::string(stemOf(name)));
    return {{affixes.around(name), wanted}, wanted};
}

std::string valueOr(const ShntoolCommand &command, char letter, std::string_view otherwise)
{
    const auto *value = command.value(letter);
    return value ? *value : std::string(otherwise);
}

void planOutputs(ShntoolPlan &plan, const ShntoolCommand &command, const std::string &extension)
{
    const auto prefix = valueOr(command, 'a', "");
    if (command.mode->name == "split") {
        plan.takenPrefix = command.value('t') ? "" : valueOr(command, 'a', "split-track");
        plan.takenSuffix = "." + extension;
    } else if (command.mode->name == "join") {
        const auto name = valueOr(command, 'a', "") + "joined" + valueOr(command, 'z', "") + "." + extension;
        plan.outputs.push_back({{name, name}, name});
    } else {
        const auto ending = valueOr(command, 'z', command.mode->postfix) + "." + extension;
        for (const auto &file : command.files) {
            plan.outputs.push_back(plannedOutput(file, {.prefix = prefix, .ending = ending}));
        }
    }
}

void planWriting(ShntoolPlan &plan, ShntoolCommand &command, const std::string &helper)
{
    if (const auto *exact = command.value('n'); exact && command.mode->name == "conv") {
        plan.exactFile = *exact;
        plan.folder = folderOf(*exact);
        if (command.files.size() != 1) {
            plan.error = "conv -n takes exactly one source";
        }
        command.remove('n');
    } else {
        plan.folder = valueOr(command, 'd', ".");
    }
    const auto encoder = valueOr(command, 'o', "wav");
    if (command.mode->name == "fix" && !command.value('z')) {
        command.setValue('z', ""); // no "-fixed" in the names
    }
    planOutputs(plan, command, outputExtension(encoder));
    plan.replace = valueOr(command, 'O', "never") == "always";
    plan.oneResult = command.mode->oneResult;
    command.setValue('O', plan.replace ? "always" : "never"); // it never asks
    const auto adapted = adaptedEncoder(encoder, helper);
    plan.encoder = encoderProgram(adapted, helper);
    command.setValue('o', adapted);
    command.remove('d');
}

bool writesFiles(const ShntoolCommand &command)
{
    const auto encoder = firstWord(valueOr(command, 'o', "wav"));
    return command.mode->writes && encoder != "null" && encoder != "term";
}

} // namespace

ShntoolPlan planShntool(const Arguments &arguments, const ShntoolSurroundings &surroundings)
{
    ShntoolPlan plan;
    auto command = ShntoolCommand::parse(arguments, surroundings.exists);
    if (!command || command->files.empty()) {
        plan.arguments = arguments;
        return plan;
    }
    plan.sources = command->files;
    if (writesFiles(*command)) {
        planWriting(plan, *command, surroundings.helper);
    }
    if (!command->mode->headersOnly) {
        plan.heardSources = command->files;
    }
    if (command->mode->sorts && !command->value('r')) {
        command->setValue('r', "none");
    }
    plan.arguments.emplace_back(command->mode->name);
    const auto decoders = decoderOptions(surroundings.helper);
    plan.arguments.insert(plan.arguments.end(), decoders.begin(), decoders.end());
    for (const auto &option : command->options) {
        plan.arguments.push_back(std::string("-") + option.letter);
        if (option.hasValue) {
            plan.arguments.push_back(option.value);
        }
        if (option.letter == 'f' && command->mode->name == "split") {
            plan.pointsArgument = plan.arguments.size() - 1;
        }
    }
    if (!plan.folder.empty()) {
        plan.arguments.insert(plan.arguments.end(), {"-d", plan.folder});
        plan.folderArgument = plan.arguments.size() - 1;
    }
    plan.arguments.emplace_back("--");
    for (const auto &file : command->files) {
        if (const auto kind = surroundings.kind(file); kind != SourceKind::Direct) {
            const bool headerOnly = kind == SourceKind::ExtensibleWav && command->mode->headersOnly;
            plan.standIns.push_back({plan.arguments.size(), file, kind, headerOnly});
        }
        plan.arguments.push_back(file);
    }
    return plan;
}

} // namespace kruv::adapters
