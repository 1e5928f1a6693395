// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "MkisofsAdapter.h"

#include <algorithm>
#include <set>

namespace kruv::adapters {

namespace {

bool isDvdAudioSwitch(const std::string &argument)
{
    return argument == "-dvd-audio" || argument == "--dvd-audio";
}

bool isOutputSwitch(const std::string &argument)
{
    return argument == "-o" || argument == "-output" || argument == "--output";
}

} // namespace

MkisofsPlan planMkisofs(const Arguments &arguments, const std::function<bool(const std::string &)> &isTree)
{
    MkisofsPlan plan;
    plan.dvdAudio = std::any_of(arguments.begin(), arguments.end(), isDvdAudioSwitch);
    if (!plan.dvdAudio) {
        plan.arguments = arguments;
        return plan;
    }
    if (std::find(arguments.begin(), arguments.end(), "-udf") == arguments.end()) {
        plan.arguments.emplace_back("-udf");
    }
    plan.arguments.insert(plan.arguments.end(), {"-sort", ""});
    plan.sortFileArgument = plan.arguments.size() - 1;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (isDvdAudioSwitch(arguments[i])) {
            continue;
        }
        if (isOutputSwitch(arguments[i]) && i + 1 < arguments.size()) {
            plan.image = arguments[++i];
            plan.arguments.insert(plan.arguments.end(), {"-o", ""});
            plan.imageArgument = plan.arguments.size() - 1;
            continue;
        }
        plan.arguments.push_back(arguments[i]);
        if (plan.tree.empty() && isTree(arguments[i])) {
            plan.tree = arguments[i];
            plan.arguments.back().assign(1, '.');
        }
    }
    if (plan.tree.empty()) {
        plan.error = "no folder with an AUDIO_TS/AUDIO_TS.IFO was given for the DVD-Audio image";
    }
    return plan;
}

std::vector<std::string> dvdAudioOrder(const std::vector<std::string> &names)
{
    // Players reach the files by sector distances, so the order is the format's: the manager, then each title
    // set as information file, audio objects, backup.
    std::vector<std::string> order{"AUDIO_PP.IFO", "AUDIO_TS.IFO", "AUDIO_TS.VOB", "AUDIO_TS.BUP",
                                   "AUDIO_SV.IFO", "AUDIO_SV.VOB", "AUDIO_SV.BUP"};
    constexpr int lastTitleSet = 99;
    for (int set = 1; set <= lastTitleSet; ++set) {
        const auto prefix = std::string("ATS_") + (set < 10 ? "0" : "") + std::to_string(set) + "_";
        order.push_back(prefix + "0.IFO");
        for (char part = '1'; part <= '9'; ++part) {
            order.push_back(prefix + part + ".AOB");
        }
        order.push_back(prefix + "0.BUP");
    }
    const std::set<std::string> present(names.begin(), names.end());
    std::erase_if(order, [&present](const std::string &name) { return present.count(name) == 0; });
    return order;
}

std::string sortFileText(const std::vector<std::string> &orderedNames)
{
    std::string text;
    int weight = 20000; // any falling row above 0, the weight of unlisted files
    for (const auto &name : orderedNames) {
        text += "./AUDIO_TS/" + name + " " + std::to_string(weight--) + "\n";
    }
    return text;
}

} // namespace kruv::adapters
