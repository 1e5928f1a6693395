// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/TagsTracksVerb.h"

#include "base/TextFile.h"
#include "cli/Console.h"
#include "cli/QueueRun.h"
#include "cli/UsageError.h"
#include "tabs/CueSheetTagImporter.h"
#include "tabs/KruvController.h"
#include "tabs/TagsTab.h"
#include "tags/TrackNameText.h"

namespace kruv {

TagsTracksVerb::TagsTracksVerb(CLI::App &parent, Source source)
    : TabVerb(parent, source == Source::TrackList ? "names" : "cue",
              source == Source::TrackList
                  ? tr("Write titles and track numbers from a track list")
                  : tr("Write album, artist, titles and track numbers from a cue sheet"))
    , m_source(source)
{
    addOption("file", m_file,
              source == Source::TrackList ? tr("Text with a numbered line for each track") : tr("Cue sheet"))
        ->required()
        ->type_name("FILE");
    declareCommonFlags();
    declareDryRunFlag();
    setFooter(source == Source::TrackList
                  ? tr("The files are taken in natural order; other tags stay as they are.\n"
                       "Example: kruv tags names ~/Concert/info.txt ~/Concert")
                  : tr("The files are taken in natural order; other tags stay as they are.\n"
                       "Example: kruv tags cue ~/Concert/concert.cue ~/Concert"));
}

QString TagsTracksVerb::readFile() const
{
    const QString path = QString::fromStdString(m_file);
    const auto text = TextFile::read(path);
    if (!text) {
        throw UsageError(tr("%1 could not be read.").arg(path));
    }
    return *text;
}

void TagsTracksVerb::takeTrackList(qsizetype files)
{
    m_names = TrackNameText::namesInTrackList(readFile());
    if (m_names.isEmpty()) {
        throw UsageError(tr("There are no track names in %1. A track's line begins with its number, "
                            "and the first number is 1.")
                             .arg(QString::fromStdString(m_file)));
    }
    checkCount(files);
}

void TagsTracksVerb::takeCueSheet(qsizetype files)
{
    const CueSheetTagImporter::Sheet sheet = CueSheetTagImporter::parse(readFile());
    if (!sheet.album.isEmpty()) {
        m_ofAll.texts.insert(TagField::Album, sheet.album);
    }
    if (!sheet.artist.isEmpty()) {
        m_ofAll.texts.insert(TagField::Artist, sheet.artist);
    }
    if (sheet.trackNames.isEmpty() && m_ofAll.texts.isEmpty()) {
        throw UsageError(tr("There are no tags in %1.").arg(QString::fromStdString(m_file)));
    }
    // One file beside a sheet of many tracks is the whole album.
    const bool wholeAlbum = files == 1 && sheet.trackNames.size() > 1;
    if (sheet.trackNames.isEmpty() || wholeAlbum) {
        Console::complain(wholeAlbum ? tr("one file for all tracks: its title stays as it is")
                                     : tr("the sheet names no tracks: titles stay as they are"));
    } else {
        m_names = sheet.trackNames;
        checkCount(files);
    }
}

void TagsTracksVerb::checkCount(qsizetype files) const
{
    if (m_names.size() < files) {
        throw UsageError(
            tr("Number of selected files to tag is greater than number of track names entered (%1 files, "
               "%2 names)")
                .arg(QString::number(files), QString::number(m_names.size())));
    }
    if (m_names.size() > files) {
        Console::complain(tr("%1 names for %2 files: the last names are not used")
                              .arg(QString::number(m_names.size()), QString::number(files)));
    }
}

TagChanges TagsTracksVerb::changesOf(qsizetype file) const
{
    TagChanges changes = m_ofAll;
    if (!m_names.isEmpty()) {
        changes.texts.insert(TagField::Title, m_names[file]);
        changes.texts.insert(TagField::Track, QString::number(file + 1));
    }
    return changes;
}

void TagsTracksVerb::runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths)
{
    TagsTab &tab = controller.tagsTab();
    queueRun.leaveOutResults();
    takeIn(tab, paths);
    const QStringList files = tab.fileNames();
    if (m_source == Source::TrackList) {
        takeTrackList(files.size());
    } else {
        takeCueSheet(files.size());
    }
    constexpr bool writeEmpty = false;
    queueRun.run(
        [&] { tab.queueChanges(files, writeEmpty, [this](qsizetype file) { return changesOf(file); }); });
}

} // namespace kruv
