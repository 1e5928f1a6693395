// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Engine.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"
#include "tasks/DirectTool.h"
#include "tasks/KruvAsyncNSTaskFileOutputRedirection.h"
#include "tasks/NSTaskWrapperSync.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolEnvironment.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <optional>
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

TEST(ToolEnvironment, PutsTheResourcesBehindTheInheritedPath)
{
    const EnvironmentVariable resources("KRUV_RESOURCES", "/opt/kruv tools");
    const std::pair<std::optional<QByteArray>, QString> cases[] = {
        {"/usr/bin:/bin", u"/usr/bin:/bin:/opt/kruv tools"_s},
        {"", u":/opt/kruv tools"_s},
        {std::nullopt, u":/opt/kruv tools"_s},
    };
    for (const auto &[inherited, expected] : cases) {
        const EnvironmentVariable path("PATH", inherited);
        QProcessEnvironment environment = ToolEnvironment::base();
        EXPECT_EQ(environment.value(u"PATH"_s), expected);
        ToolEnvironment::appendToPath(environment, u"/more"_s);
        EXPECT_EQ(environment.value(u"PATH"_s), expected + u":/more"_s);
        EXPECT_EQ(ToolEnvironment::base().value(u"PATH"_s), expected) << "jobs don't share changes";
    }
}

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

TEST(ToolEnvironment, GivesToolsAUtf8CharacterTypeAndNothingElse)
{
    struct Case
    {
        std::optional<QByteArray> all, characterType, language;
        QString expectedAll, expectedCharacterType;
    };
    const QString utf8 = u"C.UTF-8"_s;
    const Case cases[] = {
        {std::nullopt, std::nullopt, std::nullopt, {}, utf8},
        {std::nullopt, std::nullopt, "de_DE.UTF-8", {}, {}},
        {std::nullopt, std::nullopt, "de_DE.utf8", {}, {}},
        {std::nullopt, std::nullopt, "de_DE", {}, utf8},
        {std::nullopt, "C", "de_DE.UTF-8", {}, utf8},
        {std::nullopt, "pl_PL.UTF-8", "C", {}, u"pl_PL.UTF-8"_s},
        {"C", "pl_PL.UTF-8", std::nullopt, utf8, u"pl_PL.UTF-8"_s},
        {"pl_PL.UTF-8", "C", std::nullopt, u"pl_PL.UTF-8"_s, u"C"_s},
    };
    int number = 0;
    for (const Case &tested : cases) {
        SCOPED_TRACE(++number);
        // The environment is made anew when PATH changes.
        const EnvironmentVariable path("PATH", QByteArray("/bin:/") + QByteArray::number(number));
        const EnvironmentVariable all("LC_ALL", tested.all);
        const EnvironmentVariable characterType("LC_CTYPE", tested.characterType);
        const EnvironmentVariable language("LANG", tested.language);
        const QProcessEnvironment environment = ToolEnvironment::base();
        EXPECT_EQ(environment.value(u"LC_ALL"_s), tested.expectedAll);
        EXPECT_EQ(environment.value(u"LC_CTYPE"_s), tested.expectedCharacterType);
        EXPECT_EQ(environment.value(u"LANG"_s).toUtf8(), tested.language.value_or(QByteArray()));
    }
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

TEST(ToolCatalog, SaysWhatIsMissingAndWhatBringsIt)
{
    const TemporaryFolder folder;
    const QString odd = folder.file(u"100%1 \"lame\""_s);
    EXPECT_TRUE(ToolCatalog::missingToolMessage(odd).contains(odd));
    EXPECT_TRUE(ToolCatalog::missingToolMessage(u"/x/cdda2wav"_s).contains(u"\"icedax\""_s));
    EXPECT_NO_THROW(ToolCatalog::requireLaunchable(fakeTool()));
    EXPECT_THROW(ToolCatalog::requireLaunchable(odd), std::runtime_error);
    EXPECT_THROW(ToolCatalog::requireLaunchable(folder.path()), std::runtime_error);
    EXPECT_THROW(ToolCatalog::requireLaunchable(QString()), std::runtime_error);
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
        auto job = std::make_shared<KruvAsyncNSTaskFileOutputRedirection>(file, &engine.queue, fakeTool(),
                                                                          arguments);
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

TEST_F(FileOutputRedirection, FailsWhenTheListCannotBeWritten)
{
    const QString nowhere = engine.folder.file(u"not there/list.txt"_s);
    const auto job = makeJob(nowhere, {u"print"_s, u"0"_s, hex("a:1\n")});
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(job->error());
    ASSERT_EQ(engine.userInterface.resultsWindows.size(), 1U);
    EXPECT_TRUE(engine.userInterface.resultsWindows[0].text.startsWith(u"a:1\n"_s));
    EXPECT_TRUE(engine.userInterface.resultsWindows[0].text.contains(nowhere));
}
