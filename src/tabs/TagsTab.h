// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/BaseTab.h"
#include "tabs/CommonTags.h"
#include "tabs/CueSheetTagImporter.h"
#include "tabs/KruvCustomTagsPanel.h"
#include "tabs/TagFields.h"
#include "tabs/TrackNameInputController.h"

#include <functional>
#include <memory>

namespace kruv {

struct TagChanges;

/// The tags tab: shows what the selected files' tags have in common, and writes what a person made of it.
class TagsTab : public BaseTab, public TagFields
{
    Q_OBJECT
public:
    explicit TagsTab(TabHost &host);

    LabelControl &multipleSelectionsLabel() { return m_multipleSelectionsLabel; }
    KruvCustomTagsPanel &customTagsPanel() { return m_customTagsPanel; }
    TrackNameInputController &trackNamesWindow() const { return host().trackNameInputController(); }
    void showNamesWindow() const { trackNamesWindow().show(this); }
    ToggleControl &autoName() { return m_autoName; }
    ToggleControl &writeEmptyTags() { return m_writeEmptyTags; }
    Control &usePreviousTagsButton() { return m_usePreviousTagsButton; }

    /// The entered track names, in the files' order.
    const QStringList &names() const { return m_names; }
    /// The record last written, or null.
    const std::shared_ptr<const TagsObject> &previousTagsObject() const { return m_previousTagsObject; }

    /// The selected rows of the list, in any order.
    void tableViewSelectionDidChange(const QList<int> &rows);
    const QStringList &selectedFiles() const { return m_selectedFiles; }
    /// Whether tags are still being read, or a command looks for a picture to offer; nothing is written then.
    bool isBusy() const { return m_reading || m_offering; }
    /// Whether the selected files' tags are still being read, and how many are.
    bool isReading() const { return m_reading; }
    qsizetype filesRead() const { return m_filesRead; }
    /// Whether the selected files have different texts there, so that the field is empty.
    bool differs(TagField field) const { return m_differing[static_cast<std::size_t>(field)]; }
    bool picturesDiffer() const { return m_picturesDiffer; }

    /// Reads the only selected file into the fields.
    void fillTagsForSelectedRow();
    /// Reads the selected files and fills the fields with what they share.
    void getCommonTags();

    /// Fills in what was last written, but for title, track number and custom tags.
    void usePreviousTags();
    void editCustomTags();
    /// Takes the picture from a file; says so where it is none.
    void chooseAlbumArt(const QString &path);
    void chooseAlbumArt();
    void loadTagsFromCueSheet();

    void executeCommand() override;

    /// Hands one job for each file to the queue, all under one set of results; `changesOf` is asked in the
    /// files' order.
    void queueChanges(const QStringList &files, bool writeEmpty,
                      const std::function<TagChanges(qsizetype)> &changesOf);

Q_SIGNALS:
    /// The selection changed, more of it was read, or a command is done.
    void selectionChanged();

private:
    enum class NameSource { Window, CueSheet };
    struct Command;
    struct Offer;

    /// Runs `work` and what it returns; on the pool where the tab works in the background.
    void perform(BackgroundWork &on, const BackgroundWork::Work &work);
    BackgroundWork::Outcome readRow(const QString &file);
    BackgroundWork::Outcome readRows(const QStringList &files, const std::stop_token &stop);
    void showRead(qsizetype done);
    void endReading(const TagsObject &record, AlbumArtControl::Shown picture);
    void fillFromSheet(const TagsObject &tags);
    void trackNamesEntered(const QStringList &names, NameSource source);
    Command makeCommand();
    /// Dates and numbers with totals are written whole: files of one year would lose their several days.
    void leaveOutSharedParts(TagsObject &record);
    static Offer findPicture(const QStringList &files);
    void offerPicture(Command &command, const Offer &offer);
    void carryOut(const Command &command);
    bool withoutPadding();

    LabelControl m_multipleSelectionsLabel;
    ToggleControl m_autoName;
    ToggleControl m_writeEmptyTags;
    Control m_usePreviousTagsButton;
    KruvCustomTagsPanel m_customTagsPanel;
    CueSheetTagImporter m_cueSheetTagImporter;
    QStringList m_names;
    std::shared_ptr<const TagsObject> m_previousTagsObject;
    std::shared_ptr<const TagsObject> m_sheetTags;  // of a cue sheet, until the files are read
    std::shared_ptr<const TagsObject> m_sharedTags; // of several selected files, as they were read
    QStringList m_selectedFiles;
    std::bitset<tagFieldCount> m_differing;
    bool m_picturesDiffer = false;
    bool m_reading = false;
    qsizetype m_filesRead = 0;
    bool m_offering = false;
    // Last, so that they wait for their work before anything else goes.
    BackgroundWork m_readingWork;
    BackgroundWork m_pictureWork;
    BackgroundWork m_commandWork;
};

} // namespace kruv
