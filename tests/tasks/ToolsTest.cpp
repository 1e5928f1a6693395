// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Engine.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"
#include "tasks/DirectTool.h"
#include "tasks/FoundTool.h"
#include "tasks/KruvAsyncNSTaskFileOutputRedirection.h"
#include "tasks/NSTaskWrapperSync.h"
#include "tasks/ToolEnvironment.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

namespace {

QString hex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex());
}

} // namespace

TEST(DirectTool, SkipsOnlyAnAdapterThatWouldChangeNothing)
{
    const TemporaryFolder folder;
    const QString real = folder.makeFolder(QStringLiteral("bin")) + QStringLiteral("/flac");
    writeFile(real, "#!/bin/sh\n");
    QFile::setPermissions(real, QFile::ReadOwner | QFile::ExeOwner);
    const QString resources = folder.makeFolder(QStringLiteral("resources"));
    const QString adapter = resources + QStringLiteral("/flac");
    ASSERT_TRUE(QFile::link(QStringLiteral("kruv-adapters"), adapter));
    const EnvironmentVariable path("PATH", QFile::encodeName(folder.file(QStringLiteral("bin"))));

    const QString keep = QStringLiteral("--keep-foreign-metadata");
    const QStringList files{QStringLiteral("/a.flac"), QStringLiteral("-o"), QStringLiteral("/a.wav")};
    EXPECT_EQ(directProgram(adapter, QStringList{QStringLiteral("-5"), keep} + files), real);
    EXPECT_EQ(directProgram(adapter, QStringList{QStringLiteral("-d")} + files), real);
    EXPECT_EQ(directProgram(adapter, QStringList{QStringLiteral("-d"), keep} + files), adapter);
    EXPECT_EQ(directProgram(resources + QStringLiteral("/shntool"), files),
              resources + QStringLiteral("/shntool"));
    EXPECT_EQ(directProgram(real, files), real) << "no adapter";
}

TEST(NSTaskWrapperSync, KeepsAllThatTheToolPrinted)
{
    const TemporaryFolder folder;
    NSTaskWrapperSync task(fakeTool(), {u"print"_s, u"5"_s, hex("a\xc5"), hex("\xbc"), hex("b\n")});
    task.runTask();
    EXPECT_EQ(task.output(), u"ażb\n"_s) << "the exit status is not looked at";

    NSTaskWrapperSync show(fakeTool(), {u"show"_s, u"-x y"_s});
    show.setDirectory(folder.path());
    show.appendToPATH(u"/extra"_s);
    show.runTask();
    const QStringList lines = show.output().split(u'\n');
    EXPECT_TRUE(lines.contains(u"folder="_s + QDir(folder.path()).canonicalPath()));
    EXPECT_TRUE(lines.contains(u"argument=-x y"_s));
    EXPECT_TRUE(lines.contains(u"NSUnbufferedIO=YES"_s));
    EXPECT_EQ(lines.filter(u"PATH="_s).filter(u":/extra"_s).size(), 1);

    NSTaskWrapperSync missing(folder.file(u"flac"_s), {});
    missing.runTask();
    EXPECT_TRUE(missing.output().contains(u"apt-get install flac"_s));
}

TEST(ToolCatalog, FindsToolsAndTheirVersions)
{
    const TemporaryFolder folder;
    const EnvironmentVariable resources("KRUV_RESOURCES", folder.path().toUtf8());
    const std::pair<const char *, QString> outputs[] = {
        {"flac 1.4.2", u"1.4.2"_s},
        {"AtomicParsley version: 20210715.151551.e7ad03a", u"20210715.151551.e7ad03a"_s},
        {"shntool 3.0.10\nCopyright (C) 2000-2009", u"3.0.10"_s},
        {"sox:      SoX v14.4.2", u"14.4.2"_s},
        {"no number here", QString()},
    };
    const ToolInfo info{"tool", "tool-package", "testing", "--version"};
    EXPECT_TRUE(ToolCatalog::find(info).path.isEmpty());
    for (const auto &[output, version] : outputs) {
        const QString path =
            folder.write(u"tool"_s, QByteArray("#!/bin/sh\necho '") + output + "' >&2\nexit 1\n");
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const FoundTool found = ToolCatalog::find(info);
        EXPECT_EQ(found.path, path);
        EXPECT_EQ(found.version, version) << output;
    }
}

class FileOutputRedirection : public testing::Test
{
protected:
    std::shared_ptr<KruvAsyncNSTaskFileOutputRedirection> makeJob(const QString &file,
                                                                  const QStringList &arguments)
    {
        auto job = std::make_shared<KruvAsyncNSTaskFileOutputRedirection>(TextOutput(file, {}), &engine.queue,
                                                                          fakeTool(), arguments);
        job->setTitle(u"Creating list"_s);
        job->setSubTitle(u"listing"_s);
        return job;
    }

    Engine engine{1};
    QString list = engine.folder.file(u"list.txt"_s);
};

TEST_F(FileOutputRedirection, WritesTheTextInsteadOfShowingIt)
{
    engine.folder.write(u"list.txt"_s, "an old and much longer list\n");
    const auto job = makeJob(list, {u"print"_s, u"0"_s, hex("ż:1\n")});
    engine.queue.addTask(job);
    EXPECT_EQ(job->textField().text, u"Creating list"_s);
    EXPECT_EQ(job->topTextField().text, u"listing"_s);
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_EQ(readFile(list), QByteArray("ż:1\n\n"));
    EXPECT_FALSE(job->error());
    EXPECT_TRUE(engine.userInterface.resultsWindows.empty());
}

TEST_F(FileOutputRedirection, LeavesTheOldListWhenItNeverRan)
{
    engine.folder.write(u"list.txt"_s, "old\n");
    const QString release = engine.folder.file(u"release"_s);
    engine.queue.addTask(
        makeJob(engine.folder.file(u"other.txt"_s), {u"wait"_s, engine.folder.file(u"marker"_s), release}));
    const auto job = makeJob(list, {u"print"_s, u"0"_s});
    engine.queue.addTask(job);
    job->cancelTask();
    engine.folder.write(u"release"_s, {});
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_EQ(readFile(list), QByteArray("old\n"));
    EXPECT_TRUE(engine.userInterface.resultsWindows.empty());
}

TEST_F(FileOutputRedirection, IsWrittenWhereTheToolWasLetFinish)
{
    const QString marker = engine.folder.file(u"marker"_s);
    const auto job = makeJob(list, {u"wait"_s, marker, engine.folder.file(u"release"_s)});
    engine.queue.addTask(job);
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(marker); }));
    job->cancelTask();
    engine.folder.write(u"release"_s, {});
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(job->state().doneAllTheSame());
    EXPECT_TRUE(readFile(list).startsWith("waiting"));
}

TEST_F(FileOutputRedirection, ReplacesNoFileThatNobodyAgreedTo)
{
    const QString source = engine.folder.write(u"song.wav"_s, "audio");
    const QString link = engine.folder.file(u"link.md5"_s);
    ASSERT_TRUE(QFile::link(source, link));
    const TextOutput early(list, {source});
    engine.folder.write(u"list.txt"_s, "old");
    const TextOutput agreed(list, {source});
    constexpr auto whole = TextOutput::Content::Whole;
    EXPECT_TRUE(early.write(u"new"_s, whole).contains(u"already exists"_s)) << "it came meanwhile";
    EXPECT_NE(agreed.write(u"new"_s, TextOutput::Content::LacksFiles), QString());
    EXPECT_EQ(readFile(list), "old");
    for (const QString &path : {source, link}) {
        EXPECT_TRUE(TextOutput(path, {source}).write(u"new"_s, whole).contains(u"is about"_s))
            << qUtf8Printable(path);
    }
    EXPECT_EQ(readFile(source), "audio");
    EXPECT_EQ(agreed.write(u"new"_s, whole), QString());
    EXPECT_EQ(readFile(list), "new");
}

TEST_F(FileOutputRedirection, FailsWhenTheListCannotBeWritten)
{
    const QString nowhere = engine.folder.file(u"not there/list.txt"_s);
    const auto job = makeJob(nowhere, {u"print"_s, u"0"_s, hex("a:1\n")});
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(job->error());
    ASSERT_EQ(engine.userInterface.resultsWindows.size(), 1U);
    EXPECT_TRUE(engine.userInterface.resultsWindows[0].text.startsWith(u"The file "_s + nowhere));
    EXPECT_TRUE(engine.userInterface.resultsWindows[0].text.contains(u"\na:1\n"_s));
}
