// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/Commands.h"

#include "cli/ChecksumCreateVerb.h"
#include "cli/DecodeVerb.h"
#include "cli/DemoVerb.h"
#include "cli/EncodeVerb.h"
#include "cli/FixVerb.h"
#include "cli/HistoryVerb.h"
#include "cli/LossyVerb.h"
#include "cli/ResumeVerb.h"
#include "cli/RunVerb.h"
#include "cli/ShntoolVerb.h"
#include "cli/TagsSetVerb.h"
#include "cli/TagsShowVerb.h"
#include "cli/TagsTracksVerb.h"
#include "cli/ToolsVerb.h"
#include "cli/UndoVerb.h"
#include "cli/UtilExtractCdVerb.h"
#include "cli/UtilVerb.h"
#include "cli/VerifyVerb.h"

#include <QCoreApplication>

namespace kruv::Commands {

namespace {

struct CommandText
{
    Q_DECLARE_TR_FUNCTIONS(kruv::Commands)
};

} // namespace

std::vector<std::unique_ptr<Verb>> declare(CLI::App &app)
{
    std::vector<std::unique_ptr<Verb>> verbs;
    verbs.push_back(std::make_unique<EncodeVerb>(app));
    verbs.push_back(std::make_unique<DecodeVerb>(app));
    verbs.push_back(std::make_unique<VerifyVerb>(app, VerifyVerb::What::AudioAndLists));
    CLI::App &checksum = *app.add_subcommand(
        "checksum", CommandText::tr("Create or verify MD5, fingerprint and shntool lists").toStdString());
    checksum.require_subcommand(1);
    verbs.push_back(std::make_unique<ChecksumCreateVerb>(checksum));
    verbs.push_back(std::make_unique<VerifyVerb>(checksum, VerifyVerb::What::Lists));
    ShntoolVerb::addAll(app, verbs);
    verbs.push_back(std::make_unique<FixVerb>(app));
    verbs.push_back(std::make_unique<LossyVerb>(app));
    CLI::App &tags = *app.add_subcommand("tags", CommandText::tr("Show and write tags").toStdString());
    tags.require_subcommand(1);
    verbs.push_back(std::make_unique<TagsShowVerb>(tags));
    verbs.push_back(std::make_unique<TagsSetVerb>(tags));
    verbs.push_back(std::make_unique<TagsTracksVerb>(tags, TagsTracksVerb::Source::TrackList));
    verbs.push_back(std::make_unique<TagsTracksVerb>(tags, TagsTracksVerb::Source::CueSheet));
    CLI::App &util = *app.add_subcommand(
        "util",
        CommandText::tr("Rename, add replay gain, convert sample rates, extract discs, make DVD-Audio images")
            .toStdString());
    util.require_subcommand(1);
    for (const auto command : {UtilTab::Rename, UtilTab::ReplayGain, UtilTab::SampleRateConversion,
                               UtilTab::DeEmphasis, UtilTab::DvdAudio}) {
        verbs.push_back(std::make_unique<UtilVerb>(util, command));
    }
    verbs.push_back(std::make_unique<UtilExtractCdVerb>(util));
    HistoryVerb::addAll(app, verbs);
    verbs.push_back(std::make_unique<RunVerb>(app));
    verbs.push_back(std::make_unique<ResumeVerb>(app));
    verbs.push_back(std::make_unique<UndoVerb>(app));
    verbs.push_back(std::make_unique<ToolsVerb>(app));
    verbs.push_back(std::make_unique<DemoVerb>(app));
    return verbs;
}

} // namespace kruv::Commands
