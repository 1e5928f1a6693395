// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Program.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"

#include <QJsonArray>

#include <csignal>

namespace kruv::test {

namespace {

/// A program that remembers.
class HistoryTest : public Program
{
protected:
    void SetUp() override { journal = folder.file(u"state/journal.db"_s); }
    std::vector<QJsonObject> history(const QStringList &more = {})
    {
        return objects(run(QStringList{u"history"_s, u"--json"_s} + more).out);
    }
    /// Of the outputs of the latest job that the journal finds, as they are now.
    QString nowOf(const QString &file)
    {
        return history({u"find"_s, file}).at(0)[u"outputs"][0][u"now"].toString();
    }
};

} // namespace

TEST_F(HistoryTest, TellsWhatBecameOfFiles)
{
    const QString good = wav(u"good, \"one\".wav"_s);
    const QString output = music + u"/good, \"one\".flac"_s;
    writeFile(music + u"/bad.wav"_s, "no audio at all");
    EXPECT_EQ(
        encode({u"--beside-source"_s, u"--delete-originals"_s, u"-y"_s, u"--fingerprints"_s, music}).status,
        1);

    const auto runs = history();
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0][u"command"], u"encode"_s);
    EXPECT_EQ(runs[0][u"arguments"][2], u"flac"_s);
    EXPECT_EQ(runs[0][u"folder"], music);
    EXPECT_EQ(runs[0][u"status"], u"error"_s);
    EXPECT_EQ(runs[0][u"jobs"], 3) << "with the list at the end";
    EXPECT_EQ(runs[0][u"error"], 2) << "the bad file, and the list that lacks it";

    const auto jobs = history({u"show"_s, u"1"_s});
    ASSERT_EQ(jobs.size(), 4U); // the run, and its jobs
    for (const QJsonObject &job : jobs) {
        if (job[u"input"] == good) {
            EXPECT_EQ(job[u"status"], u"complete"_s);
            EXPECT_EQ(job[u"proof"], u"same-audio"_s);
            EXPECT_EQ(job[u"sources"][0][u"original"], u"deleted"_s);
            EXPECT_EQ(job[u"sources"][0][u"bytes"], 44 + 500 * 4);
            EXPECT_EQ(job[u"outputs"][0][u"path"], output);
            EXPECT_EQ(nowOf(job[u"digest"].toString()), u"same"_s);
        } else if (job[u"input"] == music + u"/bad.wav"_s) {
            EXPECT_EQ(job[u"status"], u"error"_s);
            EXPECT_FALSE(job[u"message"].toString().isEmpty());
        }
    }
    for (const QString &text : {good, output, u"ONE\".wav"_s}) {
        EXPECT_EQ(nowOf(text), u"same"_s) << text.toStdString();
    }
    const QByteArray csv = run({u"history"_s, u"show"_s, u"1"_s, u"--csv"_s}).out;
    EXPECT_TRUE(csv.contains(",\"" + good.toUtf8().replace('"', "\"\"") + "\",")) << csv.constData();

    writeFile(output, "x");
    EXPECT_EQ(nowOf(output), u"changed"_s);
    QFile::remove(output);
    EXPECT_EQ(nowOf(output), u"missing"_s);
    const QByteArray text = run({u"history"_s, u"find"_s, output}).out;
    EXPECT_TRUE(text.contains("original deleted") && text.contains("no longer there")) << text.constData();

    EXPECT_EQ(run({u"history"_s, u"find"_s, u"elsewhere"_s}).status, 1);
    EXPECT_EQ(run({u"history"_s, u"show"_s, u"99"_s}).status, 1);
    EXPECT_EQ(run({u"history"_s, u"--json"_s, u"--csv"_s}).status, 2);
}

TEST_F(HistoryTest, ShowsWhereAKilledRunStopped)
{
    for (int index = 0; index < 20; ++index) {
        wav(u"%1.wav"_s.arg(index), 1);
    }
    shell(u"flac"_s, "echo >> '" + folder.file(u"started"_s).toUtf8() + "'\nexec sleep 60\n");
    const auto process = start({u"encode"_s, u"--to"_s, u"flac"_s, u"--beside-source"_s, music});
    const QString started = folder.file(u"started"_s);
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(started) && readFile(started).size() == 2; }));
    EXPECT_EQ(history().at(0)[u"status"], u"running"_s);
    ASSERT_TRUE(waitUntil([&] { return history({u"show"_s, u"1"_s}).at(2)[u"status"] == u"running"_s; }));
    send(*process, SIGKILL);
    end(*process);

    EXPECT_EQ(history().at(0)[u"status"], u"broken-off"_s);
    const auto jobs = history({u"show"_s, u"1"_s});
    ASSERT_EQ(jobs.size(), 21U);
    EXPECT_EQ(jobs[1][u"status"], u"broken-off"_s);
    EXPECT_EQ(jobs[20][u"status"], u"not-begun"_s);

    resources = resourcesFolder();
    EXPECT_EQ(encode({u"--beside-source"_s, music}).status, 0);
    EXPECT_EQ(history().at(0)[u"complete"], 20);
}

TEST_F(HistoryTest, AJournalThatCantBeWrittenIsSaidAndNoMore)
{
    const QString a = wav(u"a.wav"_s);
    journal = u"/proc/none/journal.db"_s;
    const Outcome without = encode({u"--beside-source"_s, a});
    EXPECT_EQ(without.status, 0);
    EXPECT_EQ(without.err.count("can't be written"), 1) << without.err.constData();
    EXPECT_TRUE(QFile::exists(music + u"/a.flac"_s));
    EXPECT_TRUE(run({u"history"_s}).err.contains("nothing is recorded yet"));
    journal.clear();
    EXPECT_EQ(run({u"history"_s}).status, 2);
}

} // namespace kruv::test
