// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/ShntoolVerb.h"

#include "base/TextFile.h"
#include "cli/QueueRun.h"
#include "cli/UsageError.h"
#include "tabs/KruvController.h"
#include "tabs/SHNtoolTab.h"
#include "tags/TrackNameText.h"

namespace kruv {

namespace {

enum Flags : unsigned { Reads = 0, Lengths = 1, Makes = 2, Deletes = 4, Saves = 8, Points = 16 };

} // namespace

struct ShntoolVerb::Mode
{
    const char *name;
    const char *description;
    unsigned flags;
    const char *footer;
};

const ShntoolVerb::Mode ShntoolVerb::modes[] = {
    {"len", QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Lengths and properties of files"), Lengths,
     QT_TRANSLATE_NOOP(
         "kruv::ShntoolVerb",
         "Discs are told apart by the \"d\" and \"t\" around their number in the names: band2001d2t05.flac.\n"
         "Example: a numbered track list with names\n"
         "  kruv shntool len --length fileset --names ~/Concert/tracks.txt ~/Concert")},
    {"info", QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Everything that is to be known of files"), Reads, ""},
    {"cmp", QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Compare the audio of two files"), Reads,
     QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Exit status 0 when it is the same, 1 when it differs.\n"
                                            "Example: kruv shntool cmp track.flac track.wav")},
    {"trim", QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Cut silence from both ends of files"), Makes | Deletes,
     QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Outputs are named NAME-trimmed.")},
    {"split", QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Split a file at given points"), Makes | Points,
     QT_TRANSLATE_NOOP(
         "kruv::ShntoolVerb",
         "Points are the tracks of a cue sheet, whose titles become the files' names, or a list with a "
         "point\n"
         "a line: m:ss, m:ss.ff (frames), m:ss.nnn (milliseconds) or bytes.\n"
         "Example: kruv shntool split --to flac --points concert.cue --beside-source concert.wav")},
    {"join", QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Join files into one"), Makes | Deletes | Saves,
     QT_TRANSLATE_NOOP("kruv::ShntoolVerb",
                       "Files are joined in the order of their paths, numbers by value (t2 before t10).\n"
                       "Example: kruv shntool join --to flac --save concert.flac ~/Concert")},
    {"cue", QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Write a cue sheet for files as though they were joined"),
     Saves, ""},
    {"pad", QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Lengthen files to whole CD sectors with silence"),
     Makes | Deletes, QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Outputs are named NAME-padded.")},
    {"strip", QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Take extra chunks and odd headers out of files"),
     Makes | Deletes, QT_TRANSLATE_NOOP("kruv::ShntoolVerb", "Outputs are named NAME-stripped.")},
};

void ShntoolVerb::addAll(CLI::App &program, std::vector<std::unique_ptr<Verb>> &verbs)
{
    CLI::App &parent =
        *program.add_subcommand("shntool", tr("Measure, compare, split, join and mend files").toStdString());
    parent.require_subcommand(1);
    for (const Mode &mode : modes) {
        verbs.push_back(std::unique_ptr<ShntoolVerb>(new ShntoolVerb(parent, mode)));
    }
}

ShntoolVerb::ShntoolVerb(CLI::App &parent, const Mode &mode)
    : TabVerb(parent, mode.name, tr(mode.description))
    , m_mode(mode)
{
    declareCommonFlags();
    declareFlags();
    setFooter(tr(mode.footer));
}

void ShntoolVerb::declareFlags()
{
    const auto has = [this](Flags flag) { return (m_mode.flags & flag) != 0; };
    if (has(Makes)) {
        declareFormatFlag(SHNtoolTab::targets(), tr("Format to make"));
        if (has(Deletes)) {
            declareOutputFlags();
        } else {
            declarePlaceFlags();
            declareProofFlag();
        }
        app()
            .get_option("--beside-source")
            ->description(tr("Write the output next to the first file").toStdString());
    }
    if (has(Lengths)) {
        addOption(
            "--length", m_length,
            tr("normal (the tool's table), fileset (numbered tracks) or disc (the same, a list a disc)"))
            ->type_name("normal|fileset|disc");
        addOption("--names", m_names, tr("Track names: a numbered list, or one a line"))->type_name("FILE");
    }
    if (has(Points)) {
        addOption("--points", sideFileFlag("--points"), tr("Cue sheet or list of split points"))
            ->required()
            ->type_name("FILE");
    }
    if (has(Saves)) {
        addOption("-s,--save", saveFlag(), tr("File that is made"))->required()->type_name("FILE");
        addFlag("--overwrite", overwriteFlag(), tr("Replace the file that --save names"));
    } else if (has(Makes)) {
        addFlag("--overwrite", overwriteFlag(), tr("Replace outputs that are there already"));
    }
    if (has(Makes) || has(Saves)) {
        declareDryRunFlag();
    }
}

void ShntoolVerb::setControls(SHNtoolTab &tab)
{
    tab.shntoolCommandMatrix().selectId(QString::fromLatin1(m_mode.name));
    if (hasFormat()) {
        chooseFormat(tab.outputFormatMatrix());
    }
    const std::string length = !m_length.empty() ? m_length : m_names.empty() ? "normal" : "fileset";
    choose(tab.shnLenMatrix(), "--length", length);
    tab.sourceEncodeButton().setOn(options().besideSource);
    tab.deleteOriginalsButton().setOn(options().deleteOriginals);
    if (!m_names.empty()) {
        enterNames(tab);
    }
}

void ShntoolVerb::enterNames(SHNtoolTab &tab)
{
    const QString path = QString::fromStdString(m_names);
    const auto text = TextFile::read(path);
    if (!text) {
        throw UsageError(tr("--names: %1 can't be read").arg(path));
    }
    const QStringList numbered = TrackNameText::namesInTrackList(*text);
    if (numbered.isEmpty()) {
        tab.trackNameWindow().setInputTextString(*text);
    } else {
        tab.trackNameWindow().setNames(numbered);
    }
    tab.trackNameWindow().inputOK();
}

void ShntoolVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    if ((m_mode.flags & Points) != 0 && paths.size() > 1) {
        throw UsageError(tr("shntool split takes one file at a time"));
    }
    SHNtoolTab &tab = controller.shntoolTab();
    setControls(tab);
    if ((m_mode.flags & Makes) != 0) {
        queueRun.leaveOutResults();
    }
    runTab(tab, queueRun, paths);
}

} // namespace kruv
