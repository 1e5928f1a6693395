// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/TagsTab.h"

#include "formats/TagFormats.h"
#include "support/QtPrinters.h"
#include "support/Session.h"
#include "support/TaggedAudio.h"
#include "tags/BitmapData.h"
#include "tags/FlacPadding.h"
#include "tags/StagedFileStream.h"
#include "util/ChangeTagsTask.h"

#include <QFile>

#include <gtest/gtest.h>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

const QString tooFewNames =
    u"Number of selected files to tag is greater than number of track names entered"_s;
const QString artQuestion =
    u"Kruv has detected an image file in the source directory. Would you like to use it for album art?"_s;

class TagsTabRules : public testing::Test
{
protected:
    /// Copies of one file, named 1, 2, ... in the list's order.
    QStringList listFiles(const QString &extension, int count)
    {
        const QString first = folder.audio(extension, u"1."_s + extension);
        QStringList files{first};
        for (int number = 2; number <= count; ++number) {
            files << folder.file(QString::number(number) + u'.' + extension);
            EXPECT_TRUE(QFile::copy(first, files.last()));
        }
        tab.addFiles(files);
        return files;
    }
    static void tag(const QString &file, const QMap<TagField, QString> &texts, const QImage &art = {})
    {
        TagsObject record;
        for (auto text = texts.cbegin(); text != texts.cend(); ++text) {
            record.setText(text.key(), text.value());
        }
        record.setAlbumArt(art);
        EXPECT_TRUE(TagFormats::write(file.section(u'.', -1).toUpper(), file, record, false));
    }
    void selectAll()
    {
        QList<int> rows(tab.fileList().count());
        std::iota(rows.rbegin(), rows.rend(), 0); // order must not matter
        tab.tableViewSelectionDidChange(rows);
    }
    void write()
    {
        tab.executeCommand();
        ASSERT_TRUE(session.runToEnd());
    }
    static QString text(const QString &file, TagField field) { return TagFormats::read(file)->text(field); }

    AudioFolder folder;
    Session session;
    TagsTab &tab = session.controller.tagsTab();
};

} // namespace

TEST_F(TagsTabRules, SeveralFilesShowWhatTheyShareAndKeepTheRest)
{
    const QStringList files = listFiles(u"flac"_s, 3);
    for (qsizetype k = 0; k < files.size(); ++k) {
        const QString own = QString::number(k);
        tag(files[k],
            {{TagField::Title, u"T"_s + own},
             {TagField::Artist, u"A"_s + own},
             {TagField::Album, u"Same"_s},
             {TagField::Track, own},
             {TagField::Year, u"2004"_s},
             {TagField::Month, u"05"_s},
             {TagField::Day, u"06"_s}},
            picture(Qt::red));
    }
    selectAll();
    EXPECT_EQ(tab.multipleSelectionsLabel().text(), u"multiple selections"_s);
    EXPECT_FALSE(tab.titleText().isEnabled());
    EXPECT_EQ(tab.titleText().text(), QString());
    EXPECT_EQ(tab.artistText().text(), QString());
    EXPECT_TRUE(tab.differs(TagField::Artist));
    EXPECT_EQ(tab.albumText().text(), u"Same"_s);
    EXPECT_EQ(tab.yearText().text() + tab.monthText().text() + tab.dayText().text(), u"20040506"_s);
    EXPECT_EQ(tab.albumArtImageView().art()->image().size(), picture(Qt::red).size());

    const QByteArray audio = decodedDigest(files[1]);
    tab.composerText().setText(u"Composer שלום 😀"_s);
    tab.monthText().setText(u"7"_s);
    write();
    EXPECT_EQ(text(files[1], TagField::Title), u"T1"_s);
    EXPECT_EQ(text(files[1], TagField::Artist), u"A1"_s);
    EXPECT_EQ(text(files[1], TagField::Composer), u"Composer שלום 😀"_s);
    EXPECT_EQ(text(files[1], TagField::Month), u"07"_s) << "a month of one digit must be read back";
    EXPECT_EQ(toolOutput(u"metaflac"_s, {u"--list"_s, u"--block-type=PICTURE"_s, files[1]}).count("METADATA"),
              1)
        << "a picture that is there already must not be added again";
    EXPECT_EQ(decodedDigest(files[1]), audio);

    tag(files[2], {{TagField::Year, u"2004"_s}, {TagField::Month, u"05"_s}, {TagField::Day, u"07"_s}});
    selectAll();
    EXPECT_EQ(tab.yearText().text() + tab.dayText().text(), u"2004"_s);
    tab.genreText().setText(u"Rock"_s);
    write();
    EXPECT_EQ(text(files[2], TagField::Genre) + text(files[2], TagField::Day), u"Rock07"_s);

    // An AIFF file among several is read as what it isn't, so that nothing is shared.
    const QString aiff = folder.audio(u"aiff"_s, u"0.aiff"_s);
    tag(aiff, {{TagField::Album, u"Same"_s}});
    tab.addFiles({aiff});
    EXPECT_EQ(tab.albumText().text(), QString()) << "a changed list selects nothing";
    selectAll();
    EXPECT_EQ(tab.albumText().text(), QString());
    tab.tableViewSelectionDidChange({0});
    EXPECT_EQ(tab.albumText().text(), u"Same"_s);
    EXPECT_TRUE(tab.titleText().isEnabled());
}

TEST_F(TagsTabRules, WriteEmptyClearsTitlesOfSeveralFilesAndNothingElseClearsAnything)
{
    const QStringList files = listFiles(u"mp3"_s, 2);
    for (const QString &file : files) {
        tag(file, {{TagField::Title, u"T"_s}, {TagField::Album, u"Same"_s}, {TagField::Track, u"4"_s}});
    }
    selectAll();
    tab.albumText().setText(QString());
    write();
    EXPECT_EQ(text(files[0], TagField::Album), u"Same"_s);
    EXPECT_EQ(text(files[0], TagField::Title), u"T"_s);
    tab.albumText().setText(u"New"_s);
    tab.writeEmptyTags().setOn(true);
    write();
    EXPECT_EQ(text(files[1], TagField::Title) + text(files[1], TagField::Track), QString());
    EXPECT_EQ(text(files[1], TagField::Album), u"New"_s);
}

TEST_F(TagsTabRules, NamesGoToTheSelectedFilesInOrder)
{
    const QStringList files = listFiles(u"flac"_s, 11); // 10 comes after 9 in the list
    const QString sheet = folder.write(
        u"sheet.cue"_s, "\xFF\xFE" + [] {
            QString text = u"PERFORMER \"B\xE4nd\"\r\nTITLE \"\"The\" Album\"\r\nFILE \"a\" WAVE\r\n"_s;
            for (int track = 1; track <= 11; ++track) {
                text += u"  TRACK %1 AUDIO\r\n    TITLE \"Name %1\"\r\n    PERFORMER \"X\"\r\n"_s.arg(
                    track, 2, 10, QLatin1Char('0'));
            }
            return QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
        }());
    selectAll();
    session.person.textAnswers = {sheet};
    tab.loadTagsFromCueSheet();
    EXPECT_EQ(session.person.prompts, (QStringList{u"Choose CUE file"_s, u"cue"_s}));
    EXPECT_EQ(tab.albumText().text(), u"The\" Album"_s);
    EXPECT_EQ(tab.artistText().text(), u"Bänd"_s);
    EXPECT_TRUE(tab.autoName().isOn());
    EXPECT_TRUE(tab.trackNamesWindow().isShown());
    EXPECT_EQ(tab.trackNamesWindow().namesText().count(u'\n'), 11);
    write();
    EXPECT_FALSE(tab.autoName().isOn());
    EXPECT_EQ(text(folder.file(u"10.flac"_s), TagField::Title), u"Name 10"_s);
    EXPECT_EQ(text(folder.file(u"10.flac"_s), TagField::Track), u"10"_s);
    EXPECT_EQ(text(folder.file(u"10.flac"_s), TagField::Artist), u"Bänd"_s);

    tab.trackNamesWindow().setInputTextString(u"only\n\none\n"_s);
    tab.trackNamesWindow().show(nullptr);
    tab.trackNamesWindow().inputOK();
    EXPECT_FALSE(tab.autoName().isOn()) << "names that another tab asked for";
    tab.showNamesWindow();
    tab.trackNamesWindow().inputOK();
    session.ended.clear();
    write();
    EXPECT_EQ(session.person.alerts.back(), (ScriptedUserInterface::Alert{u"Error"_s, tooFewNames, u"OK"_s}));
    EXPECT_TRUE(session.ended.empty());
    EXPECT_TRUE(tab.autoName().isOn());

    EXPECT_TRUE(CueSheetTagImporter::parse(u"TITLE \"A\"\nTRACK 1 AUDIO\nTITLE \"B\""_s).trackNames.isEmpty())
        << "only one way of writing the first track is taken";
}

TEST_F(TagsTabRules, OffersTheOnlyPictureOfTheFolder)
{
    const QStringList files = listFiles(u"mp3"_s, 2);
    const QString cover = folder.write(u"Front.PNG"_s, getBitmapDataForImage(picture(Qt::blue), "PNG"));
    selectAll();
    tab.albumText().setText(u"A"_s);
    session.person.buttonAnswers = {1, 0};
    write();
    EXPECT_TRUE(TagFormats::read(files[1])->albumArt().isNull());
    write();
    EXPECT_EQ(session.person.questions.back(),
              (ScriptedUserInterface::Question{artQuestion, {}, {u"Yes"_s, u"No"_s}, 0}));
    EXPECT_EQ(TagFormats::read(files[1])->albumArt().pixelColor(0, 0), QColor(Qt::blue));
    const std::size_t asked = session.person.questions.size();
    tab.albumArtImageView().clear();
    write(); // has a picture now
    EXPECT_EQ(session.person.questions.size(), asked);

    const QString other = folder.audio(u"flac"_s, u"3.flac"_s);
    folder.write(u"back.jpeg"_s, "x"); // one of two
    tab.addFiles({other});
    tab.tableViewSelectionDidChange({2});
    write();
    EXPECT_EQ(session.person.questions.size(), asked);
}

TEST_F(TagsTabRules, NamesTheFilesThatCouldNotBeWrittenAndWritesTheOthers)
{
    const QStringList files = listFiles(u"flac"_s, 4);
    selectAll();
    EXPECT_TRUE(QFile::remove(files[0]));
    const QByteArray damaged = readFile(files[1]).mid(4);
    writeFile(files[1], damaged);
    tab.albumText().setText(u"New"_s);
    write();
    ASSERT_EQ(session.person.resultsWindows.size(), 1U) << "one window for all of them";
    const QString shown = session.person.resultsWindows[0].text;
    EXPECT_TRUE(shown.contains(u"Error writing tags to file:\n"_s + files[0])) << shown.toStdString();
    EXPECT_TRUE(shown.contains(files[1]));
    EXPECT_FALSE(shown.contains(files[2]));
    EXPECT_EQ(readFile(files[1]), damaged);
    EXPECT_EQ(text(files[2], TagField::Album) + text(files[3], TagField::Album), u"NewNew"_s);
}

TEST_F(TagsTabRules, JobsForOneFileWriteInTheirOrder)
{
    const QStringList files = listFiles(u"flac"_s, 1);
    tab.tableViewSelectionDidChange({0});
    session.controller.taskQueue().setMaxThreads(8);
    for (int round = 0; round < 8; ++round) {
        tab.commentText().setText(QString::number(round));
        tab.executeCommand();
    }
    ASSERT_TRUE(session.runToEnd());
    EXPECT_EQ(text(files[0], TagField::Comment), u"7"_s);
}

TEST_F(TagsTabRules, LeavesNoPaddingWhereThePreferenceSaysSo)
{
    const QStringList files = listFiles(u"flac"_s, 2);
    const auto endsWithPadding = [](const QString &file) {
        StagedFileStream stream(file);
        return findFlacMetadata(stream).value().endsWithPadding;
    };
    ASSERT_TRUE(endsWithPadding(files[0]));
    session.controller.preferences().setValue(u"noPaddingFlacTags"_s, true);
    tab.tableViewSelectionDidChange({0});
    tab.commentText().setText(u"short"_s);
    write();
    tab.queueChanges({files[1]}, false, [](qsizetype) {
        return TagChanges{{{TagField::Comment, u"short"_s}}, {}, nullptr};
    });
    ASSERT_TRUE(session.runToEnd());
    for (const QString &file : files) {
        EXPECT_FALSE(endsWithPadding(file));
        EXPECT_EQ(text(file, TagField::Comment), u"short"_s);
    }
}

TEST_F(TagsTabRules, ReadsInTheBackgroundAndForgetsWhatIsNoLongerSelected)
{
    const QStringList files = listFiles(u"flac"_s, 40);
    tag(files[0], {{TagField::Album, u"First"_s}});
    tab.setIntakeInBackground(true);
    selectAll();
    EXPECT_TRUE(tab.isBusy());
    tab.executeCommand();
    EXPECT_EQ(session.controller.taskQueue().taskCount(), 0) << "nothing may be written before it is read";
    tab.tableViewSelectionDidChange({0});
    ASSERT_TRUE(waitUntil([this] { return !tab.isBusy(); }));
    drainPool();
    serveEvents();
    EXPECT_EQ(tab.albumText().text(), u"First"_s);
    EXPECT_FALSE(tab.differs(TagField::Album));
    selectAll();
    ASSERT_TRUE(waitUntil([this] { return !tab.isBusy(); }));
    EXPECT_TRUE(tab.differs(TagField::Album));
    EXPECT_EQ(tab.filesRead(), files.size());
}

TEST_F(TagsTabRules, ChangesKeepWhatIsNotNamed)
{
    for (const QString &extension : {u"mp3"_s, u"flac"_s, u"aiff"_s}) {
        const QString file = folder.audio(extension);
        const auto record = fullRecord();
        ASSERT_TRUE(TagFormats::write(extension.toUpper(), file, *record, false));
        tab.queueChanges({file}, false, [](qsizetype) {
            return TagChanges{{{TagField::Track, u"9"_s}, {TagField::Year, u"1999"_s}}, {}, nullptr};
        });
        ASSERT_TRUE(session.runToEnd());
        const auto now = TagFormats::read(file);
        record->setTrackText(u"9"_s);
        record->setYearText(u"1999"_s);
        for (const TagField field : {TagField::Title, TagField::Track, TagField::TrackTotal, TagField::Year,
                                     TagField::Month, TagField::Day, TagField::Comment}) {
            EXPECT_EQ(now->text(field), record->text(field)) << extension.toStdString();
        }
        EXPECT_FALSE(now->albumArt().isNull());
    }
}

} // namespace kruv::test
