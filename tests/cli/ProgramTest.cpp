// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Program.h"

#include "support/QtPrinters.h"
#include "support/Wait.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace kruv::test {

TEST_F(Program, WrongUsageIsOneHelpfulLine)
{
    const QString a = wav(u"a.wav"_s);
    const QString empty = folder.makeFolder(u"empty"_s);
    folder.makeFolder(u"taken"_s);
    folder.write(u"taken/a.flac"_s, "x");
    struct Case
    {
        QStringList arguments;
        QByteArray hint;
    };
    for (const Case &each :
         {Case{{u"checksum"_s}, "subcommand"}, Case{{u"frob"_s}, "frob"},
          Case{{u"encode"_s, u"--to"_s, u"flac"_s}, "paths"},
          Case{{u"encode"_s, u"--beside-source"_s, a}, "--to"},
          Case{{u"encode"_s, u"--to"_s, u"mp9"_s, u"--beside-source"_s, a}, "it can be shn, wv, flac"},
          Case{{u"encode"_s, u"--to"_s, u"shn"_s, u"--verify"_s, a}, "--verify is not for --to shn"},
          Case{{u"encode"_s, u"--to"_s, u"flac"_s, u"--level"_s, u"9"_s, a}, "0 to 8"},
          Case{{u"encode"_s, u"--to"_s, u"ape"_s, u"--level"_s, u"1500"_s, a},
               "1000 to 5000 in steps of 1000"},
          Case{{u"encode"_s, u"--to"_s, u"flac"_s, u"--jobs"_s, u"0"_s, a}, "--jobs"},
          Case{{u"encode"_s, u"--to"_s, u"flac"_s, a}, "--beside-source"},
          Case{{u"encode"_s, u"--to"_s, u"flac"_s, u"-o"_s, a, a}, "is a file"},
          Case{{u"encode"_s, u"--to"_s, u"flac"_s, u"-o"_s, folder.file(u"no\nne"_s), a}, "mkdir -p"},
          Case{{u"encode"_s, u"--to"_s, u"flac"_s, u"--beside-source"_s, u"--delete-originals"_s, a},
               "--yes"},
          Case{{u"encode"_s, u"--to"_s, u"flac"_s, u"-o"_s, folder.file(u"taken"_s), a}, "--overwrite"},
          Case{{u"encode"_s, u"--to"_s, u"flac"_s, u"--beside-source"_s, empty},
               "nothing in the given paths"},
          Case{{u"decode"_s, u"--to"_s, u"flac"_s, u"--beside-source"_s, a}, "wav or aiff"},
          Case{{u"verify"_s}, "paths"}, Case{{u"demo"_s, music}, "not empty"}}) {
        const Outcome outcome = run(each.arguments);
        EXPECT_EQ(outcome.status, 2) << each.hint.constData();
        EXPECT_EQ(outcome.out, QByteArray());
        EXPECT_EQ(outcome.err.count('\n'), 1) << outcome.err.constData();
        EXPECT_TRUE(outcome.err.contains(each.hint)) << outcome.err.constData();
    }
    EXPECT_EQ(QDir(music).entryList(QDir::Files), QStringList{u"a.wav"_s});
}

TEST_F(Program, JsonTellsEverythingInOrder)
{
    constexpr int count = 24;
    for (int index = 1; index <= count; ++index) {
        wav(u"%1.wav"_s.arg(index));
    }
    const Outcome outcome = encode({u"--beside-source"_s, u"--json"_s, u"--jobs"_s, u"1"_s, music});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, QByteArray());
    QStringList order;
    QString running;
    const auto lines = objects(outcome.out);
    for (const QJsonObject &line : lines) {
        const QString event = line[u"event"].toString();
        const QString input = QFileInfo(line[u"input"].toString()).fileName();
        if (event == u"started") {
            EXPECT_EQ(running, QString()) << "two jobs at once";
            running = input;
            order << input;
        } else if (event == u"ended") {
            EXPECT_EQ(std::exchange(running, {}), input);
            EXPECT_EQ(line[u"status"].toString(), u"complete"_s);
            EXPECT_TRUE(QFile::exists(line[u"output"].toString()));
        }
    }
    ASSERT_EQ(order.size(), count);
    EXPECT_EQ(order[1], u"2.wav"_s);
    EXPECT_EQ(order[9], u"10.wav"_s);
    EXPECT_EQ(lines.back()[u"event"].toString(), u"summary"_s);
    EXPECT_EQ(lines.back()[u"complete"].toInt(), count);

    const Outcome failed = encode({u"--beside-source"_s, u"--json"_s, folder.write(u"music/bad.wav"_s, "x")});
    EXPECT_EQ(failed.status, 1);
    const auto last = objects(failed.out);
    EXPECT_EQ(last.back()[u"error"].toInt(), 1);
    EXPECT_EQ(last[last.size() - 2][u"status"].toString(), u"error"_s);
    EXPECT_FALSE(last[last.size() - 2][u"message"].toString().isEmpty());
}

TEST_F(Program, FailuresNameTheFileAndTheOthersFinish)
{
    const QString big = wav(u"big.wav"_s, 44100);
    wav(u"small.wav"_s);
    const auto onSmallDisk = [] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{20'000, 20'000};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    const Outcome full = run(
        {u"encode"_s, u"--to"_s, u"flac"_s, u"--beside-source"_s, u"--delete-originals"_s, u"-y"_s, music},
        onSmallDisk);
    EXPECT_EQ(full.status, 1);
    EXPECT_TRUE(full.err.contains("failed " + big.toUtf8()) && full.err.contains("Free some space"))
        << full.err.constData();
    EXPECT_EQ(files(u"*"_s), (QStringList{u"big.wav"_s, u"small.flac"_s}));

    const Outcome readOnly = encode({u"-o"_s, u"/proc"_s, big});
    EXPECT_EQ(readOnly.status, 1);
    EXPECT_EQ(readOnly.err.count("Check that the output folder"), 1) << readOnly.err.constData();

    ASSERT_TRUE(QFile::link(u"/proc/self/mem"_s, music + u"/unreadable.wav"_s));
    const Outcome several = encode({u"--beside-source"_s, u"missing.wav"_s, u"unreadable.wav"_s, big});
    EXPECT_EQ(several.status, 1);
    EXPECT_TRUE(several.err.contains("missing.wav: no such file")) << several.err.constData();
    EXPECT_TRUE(several.err.contains("failed " + music.toUtf8() + "/unreadable.wav\n  "));
    EXPECT_TRUE(
        encode({u"--beside-source"_s, QString(256, u'n')}).err.contains("longer than the system allows"));
    EXPECT_TRUE(QFile::exists(music + u"/big.flac"_s));
    EXPECT_EQ(several.out, QByteArray()) << "only results belong there";

    QFile::remove(music + u"/big.flac"_s);
    resources = folder.makeFolder(u"nothing"_s);
    const Outcome missingTool = encode({u"--beside-source"_s, big});
    EXPECT_EQ(missingTool.status, 1);
    EXPECT_TRUE(missingTool.err.contains("flac") && missingTool.err.contains("package"))
        << missingTool.err.constData();
    EXPECT_TRUE(run({u"tools"_s}).out.contains("install the package flac"));
}

TEST_F(Program, FilesOfOtherKindsAreNoFailure)
{
    // Longer than the half second after which the window tells of refused files.
    shell(u"flac"_s, "sleep 0.7\nfor last; do :; done\necho x > \"$last\"\n");
    folder.write(u"music/cover.jpg"_s, "x");
    wav(u"a.wav"_s);
    const Outcome outcome = encode({u"--beside-source"_s, music});
    EXPECT_EQ(outcome.status, 0) << outcome.err.constData();
    EXPECT_EQ(outcome.err.count("jpg"), 1);
    EXPECT_FALSE(outcome.err.contains("recognized"));
}

TEST_F(Program, VerifyTellsGoodFromDamaged)
{
    wav(u"good.wav"_s, 20'000);
    EXPECT_EQ(encode({u"--beside-source"_s, music}).status, 0);
    const Outcome good = run({u"verify"_s, u"good.flac"_s});
    EXPECT_EQ(good.status, 0);
    EXPECT_TRUE(good.out.contains("good.flac: ok\n")) << good.out.constData();

    QByteArray bytes = readFile(music + u"/good.flac"_s);
    bytes[bytes.size() / 2] = static_cast<char>(~bytes[bytes.size() / 2]);
    folder.write(u"music/bad.flac"_s, bytes);
    const Outcome both = run({u"verify"_s, u"--quiet"_s, u"bad.flac"_s, u"good.flac"_s});
    EXPECT_EQ(both.status, 1);
    EXPECT_TRUE(both.out.contains("good.flac: ok\n"));
    EXPECT_TRUE(both.out.contains("bad.flac: *** Got error code")) << both.out.constData();

    folder.write(u"music/cut.md5"_s, "#MD5 checksums generated by Kruv\n\n");
    const Outcome nothing = run({u"checksum"_s, u"verify"_s, u"cut.md5"_s});
    EXPECT_EQ(nothing.status, 1) << "a list that names no file has verified nothing";
    EXPECT_TRUE(nothing.err.contains("cut.md5 holds no checksums")) << nothing.err.constData();
}

TEST_F(Program, NamesOnTheCommandLineAreTakenAsTheyAre)
{
    wav(u"-x.wav"_s);
    wav(u"decode"_s + u".wav"_s);
    wav(u"new\nline.wav"_s);
    EXPECT_EQ(encode({u"--beside-source"_s, u"--"_s, u"-x.wav"_s, u"decode.wav"_s}).status, 0);
    EXPECT_EQ(files(u"*.flac"_s), (QStringList{u"-x.flac"_s, u"decode.flac"_s}));
    const Outcome outcome = encode({u"--beside-source"_s, u"new\nline.wav"_s});
    EXPECT_TRUE(outcome.err.contains("new?line.flac\n")) << outcome.err.constData();
    wav(QString(251, u'n') + u".wav"_s);
    EXPECT_TRUE(
        encode({u"--beside-source"_s, QString(251, u'n') + u".wav"_s}).err.contains("its name is too long"));

    for (const auto &[arguments, status] :
         {std::pair{"encode --to flac --beside-source \"$(printf 'l\\351t.wav')\"", 1},
          {"util rename --prefix \"$(printf 'l\\351t')\" -- -x.wav", 2}}) {
        QProcess shellProcess;
        shellProcess.start(u"/bin/sh"_s, {u"-c"_s, u"\"$0\" "_s + QString::fromLatin1(arguments), program});
        const Outcome notUtf8 = end(shellProcess);
        EXPECT_EQ(notUtf8.status, status);
        EXPECT_TRUE(notUtf8.err.contains("not valid UTF-8"));
    }
}

TEST_F(Program, ALinkToNothingIsReplacedByAReadableFile)
{
    wav(u"a.wav"_s);
    ASSERT_TRUE(QFile::link(folder.file(u"gone"_s), music + u"/a.flac"_s));
    EXPECT_EQ(encode({u"--beside-source"_s, u"--overwrite"_s, u"a.wav"_s}).status, 0);
    EXPECT_TRUE(QFile::permissions(music + u"/a.flac"_s).testFlag(QFile::ReadOwner));
}

TEST_F(Program, AClosedPipeStopsNoJob)
{
    for (int index = 0; index < 6; ++index) {
        wav(u"%1.wav"_s.arg(index));
    }
    const QString real = std::exchange(program, u"/bin/sh"_s);
    const Outcome outcome =
        run({u"-c"_s, u"\"$0\" encode --to flac --beside-source --json . | head -c 1"_s, real});
    EXPECT_EQ(outcome.out, QByteArray("{"));
    EXPECT_TRUE(waitUntil([this] { return files(u"*.flac"_s).size() == 6; }));
}

TEST_F(Program, OutputThatCantBeWrittenIsAFailure)
{
    wav(u"a.wav"_s);
    const QString real = std::exchange(program, u"/bin/sh"_s);
    for (const char *call :
         {"--help", "--version", "encode --help", "tools", "tools --json", "shntool len a.wav",
          "encode --to flac --json -o . --overwrite a.wav", "--complete kruv e"}) {
        const Outcome outcome =
            run({u"-c"_s, u"\"$0\" "_s + QString::fromLatin1(call) + u" > /dev/full"_s, real});
        EXPECT_EQ(outcome.status, 1) << call;
        EXPECT_TRUE(outcome.err.contains("standard output could not be written: No space left")) << call;
    }
}

TEST_F(Program, WhatIsThereAlreadyIsNamed)
{
    wav(u"a.wav"_s);
    ASSERT_EQ(encode({u"--beside-source"_s, u"a.wav"_s}).status, 0);
    const Outcome skipped = encode({u"--beside-source"_s, u"--skip-existing"_s, u"a.wav"_s});
    EXPECT_EQ(skipped.status, 0);
    EXPECT_EQ(skipped.err, "kruv: nothing to do: the output exists already\n");
    for (const QStringList &verb : {QStringList{u"fix"_s}, {u"shntool"_s, u"pad"_s}}) {
        const QStringList arguments = verb + QStringList{u"--to"_s, u"flac"_s, u"-o"_s, music, u"a.wav"_s};
        run(arguments);
        const Outcome refused = run(arguments);
        EXPECT_EQ(refused.status, 2);
        EXPECT_TRUE(refused.err.contains(music.toUtf8() + "/a")) << refused.err.constData();
    }
}

TEST_F(Program, ShntoolCommandsTakeTheirFiles)
{
    const QStringList shntool{u"shntool"_s};
    wav(u"-all.wav"_s, 132'300);
    wav(u"other.wav"_s);
    folder.write(u"points.txt"_s, "0:01\n0:02\n");
    folder.write(u"names.txt"_s, "One\nTwo\n");
    const Outcome split =
        run(shntool + QStringList{u"split"_s, u"--to"_s, u"wav"_s, u"--points"_s, u"../points.txt"_s, u"-o"_s,
                                  u"."_s, u"--"_s, u"-all.wav"_s});
    EXPECT_EQ(split.status, 0) << split.err.constData();
    const QStringList tracks = files(u"split*"_s);
    EXPECT_EQ(tracks.size(), 3);
    const Outcome lengths = run(shntool + QStringList{u"len"_s, u"--names"_s, u"../names.txt"_s} + tracks);
    EXPECT_TRUE(lengths.out.startsWith("01. One                00:01.00\n02. Two "))
        << lengths.out.constData();
    EXPECT_EQ(
        run(shntool + QStringList{u"join"_s, u"--to"_s, u"wav"_s, u"-s"_s, u"back.wav"_s} + tracks).status,
        0);
    EXPECT_EQ(run(shntool + QStringList{u"cmp"_s, u"--"_s, u"back.wav"_s, u"-all.wav"_s}).status, 0);
    EXPECT_EQ(run(shntool + QStringList{u"cmp"_s, u"back.wav"_s, u"other.wav"_s}).status, 1);
    EXPECT_EQ(run(shntool + QStringList{u"len"_s, u"--length"_s, u"tall"_s, u"back.wav"_s}).status, 2);
    EXPECT_EQ(run(shntool + QStringList{u"trim"_s, u"--to"_s, u"wav"_s, u"back.wav"_s}).status, 2);
    EXPECT_EQ(run(shntool + QStringList{u"cue"_s, u"-s"_s, u"back.wav"_s, u"other.wav"_s}).status, 2);
}

TEST_F(Program, DemoAndToolsWork)
{
    const Outcome demo = run({u"demo"_s, folder.file(u"demo album"_s)});
    EXPECT_EQ(demo.status, 0) << demo.err.constData();
    EXPECT_EQ(QDir(folder.file(u"demo album"_s)).entryList(QDir::Files).size(), 7);
    EXPECT_EQ(demo.out.count(": ok\n"), 3);
    const Outcome onFile = run({u"demo"_s, folder.write(u"file"_s, "x") + u"/below"_s});
    EXPECT_EQ(onFile.status, 2);

    EXPECT_TRUE(run({u"tools"_s}).out.contains("flac"));
    int found = 0;
    for (const QJsonObject &tool : objects(run({u"tools"_s, u"--json"_s}).out)) {
        EXPECT_FALSE(tool[u"for"].toString().isEmpty());
        found += tool[u"tool"].toString() == u"flac" && tool[u"version"].toString().startsWith(u"1.");
    }
    EXPECT_EQ(found, 1);
}

/// A program with 50 files queued whose tool waits for the file "release".
class Interruption : public Program
{
protected:
    /// The command's tool writes `made`, a line of the shell.
    void begin(const QStringList &command, const char *type, const QByteArray &made)
    {
        shell(u"flac"_s, "for last; do :; done\n" + made + "\necho $$ >> '" + m_log.toUtf8() +
                             "'\nwhile [ ! -e '" + folder.file(u"release"_s).toUtf8() +
                             "' ]; do sleep 0.02; done\n");
        for (int index = 0; index < 50; ++index) {
            writeWav(music + u"/%1.%2"_s.arg(QString::number(index), QString::fromUtf8(type)), {.frames = 1});
        }
        process = start(command + QStringList{music});
        ASSERT_TRUE(waitUntil([this] { return tools().size() == 2; }));
    }
    QList<QByteArray> tools() const
    {
        return QFile::exists(m_log) ? readFile(m_log).trimmed().split('\n') : QList<QByteArray>();
    }
    void interrupt(const QByteArray &answer)
    {
        send(*process, SIGINT);
        EXPECT_TRUE(waitUntil([&] { return (m_said += process->readAllStandardError()).contains(answer); }))
            << m_said.constData();
    }
    void expectCleanEnd()
    {
        EXPECT_EQ(end(*process).status, 130);
        EXPECT_EQ(tools().size(), 2) << "nothing new may start";
        for (const QByteArray &tool : tools()) {
            EXPECT_TRUE(endsSoon(tool)) << "an orphan is left";
        }
        EXPECT_EQ(files(u"*"_s).size(), 50) << "originals stay, and nothing else is there";
    }
    std::unique_ptr<QProcess> process;

private:
    QString m_log = folder.file(u"log"_s);
    QByteArray m_said;
};

TEST_F(Interruption, GivesUpWhatMakesFiles)
{
    begin({u"encode"_s, u"--to"_s, u"flac"_s, u"--beside-source"_s, u"--delete-originals"_s, u"--yes"_s},
          "wav", "echo part > \"$last\"");
    interrupt("What runs is given up");
    expectCleanEnd();
}

TEST_F(Interruption, LetsToolsThatOnlyReadFinish)
{
    begin({u"verify"_s}, "flac", ":");
    interrupt("Waiting for 2 running job(s)");
    folder.write(u"release"_s, "");
    expectCleanEnd();
}

TEST_F(Interruption, TwiceEndsAtOnce)
{
    begin({u"verify"_s}, "flac", ":");
    interrupt("Waiting for 2 running job(s)");
    interrupt("/0.flac\n");
    expectCleanEnd();
}

} // namespace kruv::test
