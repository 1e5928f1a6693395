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
        {"/usr/bin:/bin", QStringLiteral("/usr/bin:/bin:/opt/kruv tools")},
        {"", QStringLiteral(":/opt/kruv tools")},
        {std::nullopt, QStringLiteral(":/opt/kruv tools")},
    };
    for (const auto &[inherited, expected] : cases) {
        const EnvironmentVariable path("PATH", inherited);
        QProcessEnvironment environment = ToolEnvironment::base();
        EXPECT_EQ(environment.value(QStringLiteral("PATH")), expected);
        ToolEnvironment::appendToPath(environment, QStringLiteral("/more"));
        EXPECT_EQ(environment.value(QStringLiteral("PATH")), expected + QStringLiteral(":/more"));
        EXPECT_EQ(ToolEnvironment::base().value(QStringLiteral("PATH")), expected)
            << "jobs don't share changes";
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
    const QString utf8 = QStringLiteral("C.UTF-8");
    const Case cases[] = {
        {std::nullopt, std::nullopt, std::nullopt, {}, utf8},
        {std::nullopt, std::nullopt, "de_DE.UTF-8", {}, {}},
        {std::nullopt, std::nullopt, "de_DE.utf8", {}, {}},
        {std::nullopt, std::nullopt, "de_DE", {}, utf8},
        {std::nullopt, "C", "de_DE.UTF-8", {}, utf8},
        {std::nullopt, "pl_PL.UTF-8", "C", {}, QStringLiteral("pl_PL.UTF-8")},
        {"C", "pl_PL.UTF-8", std::nullopt, utf8, QStringLiteral("pl_PL.UTF-8")},
        {"pl_PL.UTF-8", "C", std::nullopt, QStringLiteral("pl_PL.UTF-8"), QStringLiteral("C")},
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
        EXPECT_EQ(environment.value(QStringLiteral("LC_ALL")), tested.expectedAll);
        EXPECT_EQ(environment.value(QStringLiteral("LC_CTYPE")), tested.expectedCharacterType);
        EXPECT_EQ(environment.value(QStringLiteral("LANG")).toUtf8(), tested.language.value_or(QByteArray()));
    }
}

TEST(NSTaskWrapperSync, KeepsAllThatTheToolPrinted)
{
    const TemporaryFolder folder;
    NSTaskWrapperSync task(
        fakeTool(), {QStringLiteral("print"), QStringLiteral("5"), hex("a\xc5"), hex("\xbc"), hex("b\n")});
    task.runTask();
    EXPECT_EQ(task.output(), QStringLiteral("ażb\n")) << "the exit status is not looked at";

    NSTaskWrapperSync show(fakeTool(), {QStringLiteral("show"), QStringLiteral("-x y")});
    show.setDirectory(folder.path());
    show.appendToPATH(QStringLiteral("/extra"));
    show.runTask();
    const QStringList lines = show.output().split(u'\n');
    EXPECT_TRUE(lines.contains(QStringLiteral("folder=") + QDir(folder.path()).canonicalPath()));
    EXPECT_TRUE(lines.contains(QStringLiteral("argument=-x y")));
    EXPECT_TRUE(lines.contains(QStringLiteral("NSUnbufferedIO=YES")));
    EXPECT_EQ(lines.filter(QStringLiteral("PATH=")).filter(QStringLiteral(":/extra")).size(), 1);

    NSTaskWrapperSync missing(folder.file(QStringLiteral("flac")), {});
    missing.runTask();
    EXPECT_TRUE(missing.output().contains(QStringLiteral("apt-get install flac")));
}

TEST(ToolCatalog, SaysWhatIsMissingAndWhatBringsIt)
{
    const TemporaryFolder folder;
    const QString odd = folder.file(QStringLiteral("100%1 \"lame\""));
    EXPECT_TRUE(ToolCatalog::missingToolMessage(odd).contains(odd));
    EXPECT_TRUE(ToolCatalog::missingToolMessage(QStringLiteral("/x/cdda2wav"))
                    .contains(QStringLiteral("\"icedax\"")));
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
        {"flac 1.4.2", QStringLiteral("1.4.2")},
        {"AtomicParsley version: 20210715.151551.e7ad03a", QStringLiteral("20210715.151551.e7ad03a")},
        {"shntool 3.0.10\nCopyright (C) 2000-2009", QStringLiteral("3.0.10")},
        {"sox:      SoX v14.4.2", QStringLiteral("14.4.2")},
        {"no number here", QString()},
    };
    const ToolInfo info{"tool", "tool-package", "testing", "--version"};
    EXPECT_TRUE(ToolCatalog::find(info).path.isEmpty());
    for (const auto &[output, version] : outputs) {
        const QString path = folder.write(QStringLiteral("tool"),
                                          QByteArray("#!/bin/sh\necho '") + output + "' >&2\nexit 1\n");
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
        job->setTitle(QStringLiteral("Creating list"));
        job->setSubTitle(QStringLiteral("listing"));
        return job;
    }

    Engine engine{1};
    QString list = engine.folder.file(QStringLiteral("list.txt"));
};

TEST_F(FileOutputRedirection, WritesTheTextInsteadOfShowingIt)
{
    engine.folder.write(QStringLiteral("list.txt"), "an old and much longer list\n");
    const auto job = makeJob(list, {QStringLiteral("print"), QStringLiteral("0"), hex("ż:1\n")});
    engine.queue.addTask(job);
    EXPECT_EQ(job->textField().text, QStringLiteral("Creating list"));
    EXPECT_EQ(job->topTextField().text, QStringLiteral("listing"));
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_EQ(readFile(list), QByteArray("ż:1\n\n"));
    EXPECT_FALSE(job->error());
    EXPECT_TRUE(engine.userInterface.resultsWindows.empty());
}

TEST_F(FileOutputRedirection, LeavesTheOldListWhenItNeverRan)
{
    engine.folder.write(QStringLiteral("list.txt"), "old\n");
    const QString release = engine.folder.file(QStringLiteral("release"));
    engine.queue.addTask(
        makeJob(engine.folder.file(QStringLiteral("other.txt")),
                {QStringLiteral("wait"), engine.folder.file(QStringLiteral("marker")), release}));
    const auto job = makeJob(list, {QStringLiteral("print"), QStringLiteral("0")});
    engine.queue.addTask(job);
    job->cancelTask();
    engine.folder.write(QStringLiteral("release"), {});
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_EQ(readFile(list), QByteArray("old\n"));
    EXPECT_TRUE(engine.userInterface.resultsWindows.empty());
}

TEST_F(FileOutputRedirection, FailsWhenTheListCannotBeWritten)
{
    const QString nowhere = engine.folder.file(QStringLiteral("not there/list.txt"));
    const auto job = makeJob(nowhere, {QStringLiteral("print"), QStringLiteral("0"), hex("a:1\n")});
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(job->error());
    ASSERT_EQ(engine.userInterface.resultsWindows.size(), 1U);
    EXPECT_TRUE(engine.userInterface.resultsWindows[0].text.startsWith(QStringLiteral("a:1\n")));
    EXPECT_TRUE(engine.userInterface.resultsWindows[0].text.contains(nowhere));
}
