// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/FolderWalk.h"
#include "base/PathNames.h"
#include "support/QtPrinters.h"
#include "support/Session.h"
#include "tabs/ChecksumTab.h"
#include "tabs/DecodeTab.h"
#include "tabs/EncodeTab.h"

#include <QFile>

#include <cstdio>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

QStringList names(const QStringList &paths)
{
    QStringList result;
    for (const QString &path : paths) {
        result << PathNames::lastPathComponent(path);
    }
    return result;
}

/// An empty file whose name is not valid UTF-8. Removes itself, for a temporary folder can't.
class UndecodableFile
{
public:
    UndecodableFile(const QString &folder, const QByteArray &name)
        : m_path(QFile::encodeName(folder) + '/' + name)
    {
        std::fclose(std::fopen(m_path.constData(), "w"));
    }
    ~UndecodableFile() { std::remove(m_path.constData()); }

private:
    const QByteArray m_path;
};

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

/// Waits for the message that comes once a drop is over.
void waitForAlert(const ScriptedUserInterface &person, std::size_t count)
{
    EXPECT_TRUE(waitUntil([&] { return person.alerts.size() >= count; }));
}

const QString nothingTaken = u"File types not supported by this tab"_s;
const QString someSkipped = u"Some files types were not recognized by this tab and were skipped"_s;
const QString notUtf8 =
    u"Files whose names are not valid UTF-8 were skipped. Rename them, for example with convmv, and add them again."_s;

} // namespace

TEST(PathNames, SplitsOddNames)
{
    struct Case
    {
        QStringView path;
        QStringView folder;
        QStringView name;
        QStringView extension;
    };
    for (const Case &each :
         {Case{u"/a/b.c.wav", u"/a", u"b.c", u"wav"}, Case{u"/a.wav", u"/", u"a", u"wav"},
          Case{u"/a/.wav", u"/a", u".wav", u""}, Case{u"/a.d/name", u"/a.d", u"name", u""},
          Case{u"/a/name.", u"/a", u"name.", u""}, Case{u"/a/ x .W A", u"/a", u" x ", u"W A"}}) {
        const QString path = each.path.toString();
        EXPECT_EQ(PathNames::folderOf(path), each.folder.toString());
        EXPECT_EQ(PathNames::nameWithoutExtension(path), each.name.toString());
        EXPECT_EQ(PathNames::extension(path), each.extension.toString());
    }
    EXPECT_EQ(PathNames::outputPath(u"/"_s, u"/x/a.b.wav"_s, u"flac"_s), u"/a.b.flac"_s);
}

TEST(FolderWalk, FindsEveryFileOnceAndSkipsWhatIsNone)
{
    const TemporaryFolder folder;
    folder.makeFolder(u"a/.hidden/deep"_s);
    folder.makeFolder(u"a/.kruv-abcdefgh"_s);
    folder.makeFolder(u"a/.kruv-ABCDEFGH"_s);
    for (const char16_t *name :
         {u"a/one.wav", u"a/.DS_Store", u"a/.TOC.plist", u"a/noextension", u"a/.hidden/deep/two.wav",
          u"a/new\nline.wav", u"a/.kruv-abcdefgh/half.wav", u"a/.kruv-ABCDEFGH/three.wav",
          u"a/Kruv-0000a1b2-Xy12ab9Z.wav", u"a/Kruv-live.wav"}) {
        folder.write(QStringView(name).toString(), "x");
    }
    ASSERT_TRUE(QFile::link(folder.file(u"a"_s), folder.file(u"a/.hidden/loop"_s)));
    ASSERT_TRUE(QFile::link(folder.file(u"gone"_s), folder.file(u"a/dangling.wav"_s)));
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.file(u"a/pipe.wav"_s)).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(folder.file(u"a/pipe.wav"_s), folder.file(u"a/linked pipe.wav"_s)));
    ASSERT_TRUE(QFile::link(u"/dev/zero"_s, folder.file(u"a/endless.wav"_s)));
    const UndecodableFile latin1(folder.file(u"a"_s), "l\xe9t.wav");

    QStringList found;
    FolderWalk walk;
    walk.walk(folder.file(u"a/"_s), [&found](const QString &path) { found << path; });
    EXPECT_EQ(sorted(names(found)),
              (QStringList{u"Kruv-live.wav"_s, u"dangling.wav"_s, u"new\nline.wav"_s, u"noextension"_s,
                           u"one.wav"_s, u"three.wav"_s, u"two.wav"_s}));
    ASSERT_EQ(walk.undecodableNames().size(), 1);
    EXPECT_TRUE(walk.undecodableNames()[0].endsWith(u"/l\ufffdt.wav"_s));
    EXPECT_TRUE(found.contains(folder.file(u"a/one.wav"_s)));
}

TEST(FileList, KeepsTheNaturalOrderWithoutDuplicates)
{
    FileList list;
    EXPECT_EQ(list.add({u"/m/10.wav"_s, u"/m/2.wav"_s, u"/m/B.WAV"_s, u"/m/a.wav"_s, u"/m/2.wav"_s}), 4);
    EXPECT_EQ(list.add({u"/m/1.Wav"_s, u"/m/a.wav"_s, u"/m/track 9"_s, u"/m/track 10"_s}), 3);
    EXPECT_EQ(names(list.paths()), (QStringList{u"1.Wav"_s, u"2.wav"_s, u"10.wav"_s, u"a.wav"_s, u"B.WAV"_s,
                                                u"track 9"_s, u"track 10"_s}));
    EXPECT_EQ(list.extensions(), (QStringList{u"Wav"_s, u"wav"_s, u"WAV"_s, QString()}));
    EXPECT_EQ(list.data(list.index(2), Qt::DisplayRole), u"10.wav"_s);

    list.removeExtension(u"wav"_s);
    EXPECT_EQ(names(list.paths()), (QStringList{u"1.Wav"_s, u"B.WAV"_s, u"track 9"_s, u"track 10"_s}));
    list.removeRows({0, 2});
    EXPECT_EQ(names(list.paths()), (QStringList{u"B.WAV"_s, u"track 10"_s}));
    EXPECT_EQ(list.add({u"/m/1.Wav"_s, u"/m/B.WAV"_s}), 1) << "what was removed may come back";
    list.clear();
    EXPECT_EQ(list.add({u"/m/1.Wav"_s}), 1);
}

TEST(TabIntake, ExpandsFoldersAndReportsOnce)
{
    Session session;
    for (const char16_t *name : {u"music/cover.jpg", u"music/notes", u"music/.DS_Store"}) {
        session.folder.write(QStringView(name).toString(), "x");
    }
    EncodeTab &tab = session.controller.encodeTab();
    QStringList refused;
    QObject::connect(&tab, &BaseTab::filesRefused, &tab,
                     [&](const QStringList &extensions, int) { refused = sorted(extensions); });
    tab.addFiles({session.music});
    EXPECT_EQ(refused, (QStringList{QString(), u"jpg"_s}));
    EXPECT_TRUE(session.person.alerts.empty()) << "the message must wait until the drop is over";
    waitForAlert(session.person, 1);
    EXPECT_EQ(session.person.alerts[0], (ScriptedUserInterface::Alert{nothingTaken, QString(), u"OK"_s}));

    const QString track = session.folder.write(u"music/track 2.wav"_s, "x");
    tab.addFiles({track, session.music, track});
    EXPECT_EQ(tab.fileNames(), QStringList{track});
    waitForAlert(session.person, 2);
    EXPECT_EQ(session.person.alerts[1].title, someSkipped);

    tab.addFiles({track}); // listed already: nothing to say
    session.preferences.setValue(u"warnOnFilesSkipped"_s, false);
    tab.addFiles({session.music});
    const std::size_t before = session.person.alerts.size();
    const UndecodableFile latin1(session.music, "\xff.wav");
    tab.addFiles({session.music});
    ASSERT_EQ(session.person.alerts.size(), before + 1);
    EXPECT_EQ(session.person.alerts.back().title, notUtf8);

    session.person.fileAnswers = {{session.folder.write(u"music/track 10.wav"_s, "x")}};
    tab.addButtonClick();
    EXPECT_EQ(names(tab.fileNames()), (QStringList{u"track 2.wav"_s, u"track 10.wav"_s}));
    EXPECT_EQ(session.person.prompts, (QStringList{u"Choose files for processing"_s, u"Add Files"_s}));
    EXPECT_EQ(names(BaseTab::getFilesFromOutputDirectory(session.music, u"JPG"_s)),
              QStringList{u"cover.jpg"_s});
}

TEST(ApplicationIntake, HandsTheSelectedTabWhatItTakes)
{
    Session session;
    KruvController &controller = session.controller;
    session.preferences.setValue(u"warnOnFilesSkipped"_s, false);
    QStringList files;
    for (const char16_t *name : {u"music/a.wav", u"music/b.jpg", u"music/plain", u"music/list.md5"}) {
        files << session.folder.write(QStringView(name).toString(), "x");
    }
    const auto select = [&controller](const QString &label) {
        controller.selectTab(static_cast<int>(controller.tabLabels().indexOf(label)));
    };
    select(u"encode"_s);
    controller.addFiles({session.music});
    EXPECT_EQ(names(controller.encodeTab().fileNames()), QStringList{u"a.wav"_s});
    select(u"checksum"_s);
    controller.addFiles({session.music});
    EXPECT_EQ(controller.checksumTab().fileList().count(), 3) << "a folder gives no file without extension";
    controller.addFiles({files[2]});
    EXPECT_EQ(controller.checksumTab().fileList().count(), 4) << "but one that is named is taken";
}

TEST(ApplicationIntake, RoutesFromTheAboutTabByKind)
{
    struct Case
    {
        QStringView names;
        int decode, encode, checksum;
        QStringView selected;
    };
    for (const Case &each :
         {Case{u"a.flac b.wav", 1, 1, 0, u"encode"}, Case{u"b.wav a.M4A c.opus", 2, 1, 0, u"decode"},
          Case{u"b.wav x.md5", 0, 1, 1, u"checksum"}, Case{u"x.md5 y.jpg", 0, 0, 1, u"encode"},
          Case{u"noextension", 0, 0, 0, u"encode"}, Case{u"a.ape b.tta c.wv d.shn", 4, 0, 0, u"decode"}}) {
        Session session;
        KruvController &controller = session.controller;
        const auto about = controller.tabLabels().indexOf(u"about"_s);
        controller.selectTab(static_cast<int>(about));
        QStringList files;
        for (const QString &name : each.names.toString().split(u' ')) {
            files << session.folder.write(u"music/"_s + name, "x");
        }
        controller.addFiles(files);
        EXPECT_EQ(controller.decodeTab().fileList().count(), each.decode)
            << each.names.toString().toStdString();
        EXPECT_EQ(controller.encodeTab().fileList().count(), each.encode);
        EXPECT_EQ(controller.checksumTab().fileList().count(), each.checksum);
        EXPECT_EQ(controller.tabLabels().value(controller.selectedTabViewItem()), each.selected.toString());
    }
}

} // namespace kruv::test
