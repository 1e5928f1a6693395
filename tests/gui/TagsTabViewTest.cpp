// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "WindowFixture.h"
#include "formats/TagFormats.h"
#include "gui/KruvDragAndDropImageView.h"
#include "tabs/TagsTab.h"

#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QUrl>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

const QString tags = u"Tags"_s;

class TagsTabViewTest : public WindowTest
{
protected:
    /// Two FLAC files whose comment is longer than a text field usually takes, and has several lines.
    void SetUp() override
    {
        const QString raw = folder.write(u"noise.raw"_s, QByteArray(40000, 'x'));
        writeFile(folder.file(u"comment"_s), comment.toUtf8());
        const QStringList layout =
            u"--silent --force-raw-format --endian=little --sign=signed --channels=2 --bps=16 --sample-rate=44100"_s
                .split(u' ');
        for (const QString &name : {u"/1.flac"_s, u"/2.flac"_s}) {
            ASSERT_EQ(QProcess::execute(u"flac"_s, layout + QStringList{u"-o"_s, album + name, raw}), 0);
            ASSERT_EQ(QProcess::execute(
                          u"metaflac"_s,
                          {u"--set-tag-from-file=COMMENT="_s + folder.file(u"comment"_s), album + name}),
                      0);
        }
        window->selectTab(tags);
        drop(tags, {album});
        ASSERT_TRUE(waitUntil([this] { return controller.tagsTab().fileList().count() == 2; }));
    }
    bool wellTakes(const QList<QUrl> &urls)
    {
        auto *well = find<KruvDragAndDropImageView>(page(tags), "albumArtImageView");
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(well->rect().center(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(well, &enter);
        return enter.isAccepted() && enter.dropAction() == Qt::CopyAction;
    }

    const QString comment = u"line one\nline two "_s + QString(50000, u'x');
    QString album = folder.makeFolder(u"album"_s);
};

} // namespace

TEST_F(TagsTabViewTest, AnAlbumIsEditedByKeysAlone)
{
    TagsTab &tab = controller.tagsTab();
    auto *title = find<QLineEdit>(page(tags), "titleText");
    EXPECT_FALSE(find<QPushButton>(page(tags), "command")->isEnabled());
    for (const QString &name : {u"Öne"_s, u"Two"_s}) {
        QTest::keyClick(window.get(), Qt::Key_Down, Qt::ControlModifier);
        ASSERT_TRUE(waitUntil([&tab] { return !tab.isBusy(); }));
        title->setFocus();
        QTest::keyClick(title, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(title, name);
        QTest::keyClick(window.get(), Qt::Key_Return, Qt::ControlModifier);
        ASSERT_TRUE(waitUntil([&tab] { return !tab.isBusy(); }));
        ASSERT_TRUE(waitForJobs());
        window->activateWindow(); // as the desktop does when the status panel closes
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    for (const auto &[name, expected] :
         {std::pair(u"/1.flac"_s, u"Öne"_s), std::pair(u"/2.flac"_s, u"Two"_s)}) {
        const auto record = TagFormats::read(album + name);
        EXPECT_EQ(record->titleText(), expected);
        EXPECT_EQ(record->commentText(), comment) << "what a field can't show must not be lost";
    }

    QTest::keyClick(window.get(), Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_TRUE(waitUntil([&tab] { return !tab.isBusy() && tab.selectedFiles().size() == 2; }));
    EXPECT_FALSE(title->isEnabled());
    EXPECT_EQ(title->text(), QString());
    EXPECT_EQ(find<QLineEdit>(page(tags), "commentText")->text(), comment);
}

TEST_F(TagsTabViewTest, ThePictureWellTakesOneFile)
{
    const QUrl file = QUrl::fromLocalFile(album + u"/1.flac"_s);
    EXPECT_TRUE(wellTakes({file}));
    EXPECT_FALSE(wellTakes({file, QUrl::fromLocalFile(album + u"/2.flac"_s)}));
    EXPECT_FALSE(wellTakes({QUrl::fromLocalFile(album)}));
    EXPECT_FALSE(wellTakes({file, QUrl(u"https://example.org/front.jpg"_s)}));
    EXPECT_FALSE(wellTakes({}));
}

} // namespace kruv::test
