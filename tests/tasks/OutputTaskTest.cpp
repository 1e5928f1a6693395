// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/OutputTask.h"

#include "support/Engine.h"
#include "support/Files.h"
#include "support/QtPrinters.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

namespace {

using Meddle = std::function<void(const QString &source)>;

/// Copies its source and proves nothing. Somebody meddles while it reads, or when the output is there.
class CopyJob : public OutputTask
{
public:
    CopyJob(Engine &engine, const QString &source, const QString &output)
        : OutputTask(&engine.queue, source)
        , m_output(output)
    {
        setDeleteOriginal(true);
    }

    QString outputPath() const override { return m_output; }

    Meddle whileReading;
    Meddle afterwards;

protected:
    void make(StagedOutputs &outputs) override
    {
        QFile::copy(fileName(), outputs.add(m_output));
        if (whileReading) {
            whileReading(fileName());
        }
    }
    ProofNote prove(const StagedOutputs &) override { return {.kind = u"same-bytes"_s}; }
    void committed(const StagedOutputs &) override
    {
        if (afterwards) {
            afterwards(fileName());
        }
    }

private:
    const QString m_output;
};

void append(const QString &path)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::Append) && file.write("more") == 4);
}

/// Other bytes, as many, and the time of the last change as it was.
void rewriteUnseen(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat before = {};
    ASSERT_EQ(stat(name.constData(), &before), 0);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.write("AUDIO") == 5);
    file.close();
    const timespec times[] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, name.constData(), times, 0), 0);
}

void replaceByAnother(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat before = {};
    ASSERT_EQ(stat(name.constData(), &before), 0);
    writeFile(path + u".new"_s, "other");
    const timespec times[] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, (name + ".new").constData(), times, 0), 0);
    ASSERT_EQ(std::rename((name + ".new").constData(), name.constData()), 0);
}

void removeIt(const QString &path)
{
    QFile::remove(path);
}

} // namespace

TEST(OutputTask, DeletesOnlyWhatItReadAndKept)
{
    struct Case
    {
        const char *name;
        Meddle whileReading;
        Meddle afterwards;
        bool fails;
        bool isMade;
        QByteArray original; // empty where it is gone
    };
    const Meddle loseFolder = [](const QString &path) {
        QDir(QFileInfo(path).path() + u"/out"_s).removeRecursively();
    };
    for (const Case &each :
         {Case{"nobody", {}, {}, false, true, ""}, Case{"lengthened", append, {}, true, false, "audiomore"},
          Case{"replaced", replaceByAnother, {}, true, false, "other"},
          Case{"removed", removeIt, {}, true, false, ""},
          Case{"unseen", rewriteUnseen, {}, true, true, "AUDIO"},
          Case{"folder gone", loseFolder, {}, true, false, "audio"},
          Case{"lengthened at the end", {}, append, true, true, "audiomore"},
          Case{"replaced at the end", {}, replaceByAnother, true, true, "other"},
          Case{"unseen at the end", {}, rewriteUnseen, true, true, "AUDIO"},
          Case{"removed at the end", {}, removeIt, false, true, ""}}) {
        SCOPED_TRACE(each.name);
        Engine engine;
        engine.folder.makeFolder(u"out"_s);
        const QString source = engine.folder.write(u"a.wav"_s, "audio");
        const QString output = engine.folder.file(u"out/a.wav"_s);
        const auto job = std::make_shared<CopyJob>(engine, source, output);
        job->whileReading = each.whileReading;
        job->afterwards = each.afterwards;
        engine.queue.addTask(job);
        ASSERT_TRUE(engine.runToEnd());
        const QString said = job->results()->results(*job);
        EXPECT_EQ(job->error(), each.fails) << said.toStdString();
        EXPECT_EQ(said.contains(source) || said.contains(output), each.fails) << said.toStdString();
        EXPECT_EQ(QFile::exists(output), each.isMade);
        EXPECT_EQ(QFile::exists(source), !each.original.isEmpty());
        if (!each.original.isEmpty()) {
            EXPECT_EQ(readFile(source), each.original);
        }
    }
}

TEST(OutputTask, ManyShareTheWayToTheDisk)
{
    constexpr int count = 100;
    Engine engine(1);
    engine.folder.makeFolder(u"out"_s);
    for (int number = 0; number < count; ++number) {
        const QString name = u"%1.wav"_s.arg(number);
        engine.queue.addTask(std::make_shared<CopyJob>(engine, engine.folder.write(name, "audio"),
                                                       engine.folder.file(u"out/"_s + name)));
    }
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_EQ(QDir(engine.folder.path()).entryList({u"*.wav"_s}), QStringList());
    EXPECT_EQ(namesIn(engine.folder.file(u"out"_s)).size(), count);
}
