// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/UtilVerb.h"

#include "cli/Console.h"
#include "cli/JsonReporter.h"
#include "cli/QueueRun.h"
#include "tabs/KruvController.h"

#include <QJsonObject>

#include <algorithm>
#include <iterator>

namespace kruv {

namespace {

struct Row
{
    UtilTab::Command command;
    const char *name;
    const char *description;
    bool writesIntoFolder;
    const char *example;
};

constexpr Row rows[] = {
    {UtilTab::Rename, "rename",
     QT_TRANSLATE_NOOP("kruv::UtilVerb",
                       "Give files one prefix and their number, where they are, all or none"),
     false,
     QT_TRANSLATE_NOOP("kruv::UtilVerb",
                       "Example: Disc01.flac, Disc02.flac ...\n  kruv util rename --prefix Disc ~/Concert")},
    {UtilTab::ReplayGain, "replay-gain",
     QT_TRANSLATE_NOOP("kruv::UtilVerb", "Add replay gain to FLAC files, album gain a folder, or remove it"),
     false, QT_TRANSLATE_NOOP("kruv::UtilVerb", "Example:\n  kruv util replay-gain ~/Concert")},
    {UtilTab::DeEmphasis, "de-emphasis",
     QT_TRANSLATE_NOOP("kruv::UtilVerb",
                       "Take the pre-emphasis of some early discs out of WAV and AIFF files"),
     true,
     QT_TRANSLATE_NOOP(
         "kruv::UtilVerb",
         "Example: name-deemph.wav for each name.wav\n  kruv util de-emphasis --output ~/Flat ~/Disc")},
    {UtilTab::DvdAudio, "dvd-audio",
     QT_TRANSLATE_NOOP("kruv::UtilVerb", "Make a DVD-Audio image of files of one format"), true,
     QT_TRANSLATE_NOOP(
         "kruv::UtilVerb",
         "Example: image.iso and log.txt in ~/Disc\n  kruv util dvd-audio --output ~/Disc ~/Concert")},
    {UtilTab::SampleRateConversion, "resample",
     QT_TRANSLATE_NOOP("kruv::UtilVerb", "Convert WAV and AIFF files to another sample rate"), true,
     QT_TRANSLATE_NOOP("kruv::UtilVerb", "Example: name-converted.wav for each name.wav\n"
                                         "  kruv util resample --rate 44.1 --output ~/Converted ~/Concert")},
};

const Row &rowOf(UtilTab::Command command)
{
    return *std::ranges::find(rows, command, &Row::command);
}

void reportRenamed(const QList<BatchRename::Move> &moves, const CommonOptions &options)
{
    for (const auto &move : moves) {
        if (options.json) {
            JsonReporter::writeLine({{QStringLiteral("event"), QStringLiteral("renamed")},
                                     {QStringLiteral("input"), move.from},
                                     {QStringLiteral("output"), move.to}});
        } else if (!options.quiet) {
            Console::writeError(UtilVerb::tr("renamed %1 to %2")
                                    .arg(Console::printable(move.from), Console::printable(move.to)) +
                                u'\n');
        }
    }
}

} // namespace

UtilVerb::UtilVerb(CLI::App &parent, UtilTab::Command command)
    : TabVerb(parent, rowOf(command).name, tr(rowOf(command).description))
    , m_command(command)
{
    declareCommonFlags();
    declareDryRunFlag();
    declareOwnFlags();
    if (rowOf(command).writesIntoFolder) {
        declareOutputFolder();
    }
    setFooter(tr(rowOf(command).example));
}

void UtilVerb::declareOwnFlags()
{
    if (m_command == UtilTab::Rename) {
        addOption("--prefix", textFlag(), tr("What the new names start with"))->required()->type_name("TEXT");
    } else if (m_command == UtilTab::ReplayGain) {
        addFlag("--remove", m_remove, tr("Take the replay gain out"));
    } else if (m_command == UtilTab::SampleRateConversion) {
        addOption("--rate", m_rate, tr("Sample rate in kHz"))
            ->required()
            ->type_name("44.1|48|88.2|96|176.4|192");
    }
}

void UtilVerb::setControls(UtilTab &tab) const
{
    tab.commandMatrix().select(m_command);
    tab.replayGainMatrix().selectId(m_remove ? QStringLiteral("remove") : QStringLiteral("add"));
    if (m_command == UtilTab::SampleRateConversion) {
        tab.sampleRateCombo().setText(QString::fromStdString(m_rate) + QStringLiteral(" kHz"));
    }
}

void UtilVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    UtilTab &tab = controller.utilTab();
    QObject::connect(&tab, &UtilTab::filesRenamed, &queueRun,
                     [this](const QList<BatchRename::Move> &moves) { reportRenamed(moves, options()); });
    queueRun.leaveOutResults();
    takeIn(tab, paths);
    setControls(tab);
    queueRun.run([&tab] { tab.executeCommand(); });
}

} // namespace kruv
