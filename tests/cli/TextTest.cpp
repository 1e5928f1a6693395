// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/CommandRest.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/LaunchArguments.h"
#include "formats/FailureAdvice.h"
#include "support/Files.h"
#include "support/QtPrinters.h"
#include "tasks/ToolOutput.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

TEST(FailureText, IsTheToolsReasonAndWhatToDo)
{
    struct Case
    {
        QStringView recording;
        QStringView reason;
        QStringView advice;
    };
    for (const Case &each :
         {Case{u"encode-exists", u"ERROR: output file o/c.flac already exists, use -f to override",
               u"Move the existing"},
          Case{u"encode-no-folder", u"short.wav: ERROR initializing encoder",
               u"Check that the output folder exists"},
          Case{u"encode-full-disk", u"long.wav: ERROR during encoding", u"Free some space"},
          Case{u"encode-not-audio", u"WARNING: notes.wav is not a WAVE file; treating as a raw file",
               u"The file is not"},
          Case{u"encode-truncated",
               u"trunc.wav: WARNING: unexpected EOF; expected 44100 samples, got 24576 samples",
               u"The source ends"},
          Case{u"encode-short-flac",
               u"md5t.flac: ERROR: 2 consecutive FLAC__STREAM_DECODER_END_OF_STREAM events.",
               u"The source ends"},
          Case{u"decode-damaged", u"*** Got error code 0:FLAC__STREAM_DECODER_ERROR_STATUS_LOST_SYNC",
               u"The source is damaged"}}) {
        // As a job's results hold it: cleaned pieces, one behind the other.
        QString text;
        const QByteArray file = readFile(
            u"%1/flac-1.4.2/%2.txt"_s.arg(QStringLiteral(KRUV_TEST_DATA), each.recording.toString()));
        for (QByteArray line : file.split('\n').mid(1)) {
            line.replace("\\b", "\b").replace("\\n", "\n");
            text += ToolOutput::cleaned(QString::fromUtf8(line));
        }
        const QString essence = FailureAdvice::essence(text);
        EXPECT_TRUE(essence.startsWith(each.reason.toString())) << essence.toStdString();
        EXPECT_FALSE(essence.contains(u"Copyright"_s) || essence.contains(u"% complete"_s) ||
                     essence.contains(u"state = "_s))
            << essence.toStdString();
        EXPECT_TRUE(FailureAdvice::advice(text).startsWith(each.advice.toString()))
            << FailureAdvice::advice(text).toStdString();
    }
    const QString odd = u"flac 1. you are details.wav: ERROR: got partial sample"_s;
    EXPECT_EQ(FailureAdvice::essence(odd), odd);
    EXPECT_EQ(FailureAdvice::essence(u"a.flac: testing, 32.000000% complete\na.flac: lost"_s),
              u"a.flac: lost"_s);
    // The job writes down its arguments first: they must not hide the reason.
    EXPECT_EQ(FailureAdvice::essence(u"opusenc\n--hard-cbr\n--bitrate\n160\n--title\na\nb\n/m/a.wav\n"
                                     "/m/.kruv-abcdefgh/a.opus\nError opening output file\n"_s),
              u"Error opening output file"_s);
    EXPECT_EQ(FailureAdvice::essence(u"sox FAIL formats: can't open `/m/.kruv-abcdefgh/a.wav'"_s),
              u"sox FAIL formats: can't open `/m/a.wav'"_s);
    EXPECT_TRUE(FailureAdvice::advice(u"/m/a.wav can't be read: Permission denied."_s)
                    .startsWith(u"Check that the file"_s));
}

TEST(ConsoleText, FitsIntoTheTerminal)
{
    EXPECT_EQ(Console::elidedMiddle(u"short.wav"_s, 9), u"short.wav"_s);
    EXPECT_EQ(Console::elidedMiddle(u"0123456789"_s, 5), u"01\u202689"_s);
    EXPECT_EQ(Console::elidedMiddle(u"\u6b4c\u6b4c\u6b4c\u6b4c"_s, 5), u"\u6b4c\u2026\u6b4c"_s)
        << "two columns each";
    EXPECT_EQ(Console::elidedMiddle(u"\U0001F3B5\U0001F3B5\U0001F3B5"_s, 3), u"\U0001F3B5\u2026"_s)
        << "no half character";
    EXPECT_EQ(Console::elidedMiddle(u"abc"_s, 0), QString());
    EXPECT_EQ(Console::printable(u"a\nb\x1b[31m\u00fc"_s), u"a?b?[31m\u00fc"_s);
}

TEST(Completion, FollowsCommandsFlagsAndTheirValues)
{
    CLI::App app;
    const auto verbs = Commands::declare(app);
    struct Case
    {
        std::vector<std::string> words;
        std::string found;
    };
    for (const Case &each :
         {Case{{"checksum", "v"}, "verify\tVerify checksum lists\n"},
          Case{{"decode", "--to", ""}, "wav\naiff\n"}, Case{{"decode", "--output", "x"}, ":folders\n"},
          Case{{"decode", "--output", "x", "y"}, ":files\n"}, Case{{"decode", "--jobs", ""}, ""},
          Case{{"--tab", "fix"}, "fix SBE\n"}}) {
        EXPECT_EQ(Commands::completions(app, each.words), each.found);
    }
}

TEST(LaunchArguments, AskForTheWindowOrACommand)
{
    const TemporaryFolder folder;
    const QString file = folder.write(u"a b.wav"_s, "x");
    struct Case
    {
        QStringList arguments;
        bool opensWindow = false;
        QString tab = {};
        QStringList paths = {};
        bool inNewWindow = false;
    };
    for (const Case &each :
         {Case{{}, true}, Case{{u"encode"_s}}, Case{{u"--version"_s}}, Case{{u"no such file"_s}},
          Case{{file}, true, {}, {file}}, Case{{u"--new-window"_s, file}, true, {}, {file}, true},
          Case{{u"--new-window"_s, u"--tab"_s, u"Tags"_s}, true, u"Tags"_s, {}, true},
          Case{{u"--tab"_s, u"Tags"_s, u"--new-window"_s, u"encode"_s},
               true,
               u"Tags"_s,
               {u"encode"_s},
               true}}) {
        SCOPED_TRACE(each.arguments.join(u' ').toStdString());
        const auto launch = LaunchArguments::parse(each.arguments);
        EXPECT_EQ(launch.opensWindow, each.opensWindow);
        EXPECT_EQ(launch.tab, each.tab);
        EXPECT_EQ(launch.paths, each.paths);
        EXPECT_EQ(launch.inNewWindow, each.inNewWindow);
    }
}

TEST(CommandRest, GivesACommandOtherPathsOnlyWhereItIsPlainWhichTheyAre)
{
    struct Case
    {
        QStringList arguments;
        std::optional<QStringList> with;
    };
    const QStringList paths{u"/-x"_s, u"/a b"_s};
    for (const Case &each : {Case{{u"verify"_s, u"a"_s, u"--jobs"_s, u"2"_s, u"b"_s},
                                  QStringList{u"verify"_s, u"--jobs"_s, u"2"_s, u"--"_s} + paths},
                             Case{{u"tags"_s, u"set"_s, u"--title"_s, u"--x"_s, u"--"_s, u"-f"_s},
                                  QStringList{u"tags"_s, u"set"_s, u"--title"_s, u"--x"_s, u"--"_s} + paths},
                             Case{{u"tags"_s, u"set"_s, u"a"_s, u"--title"_s, u"a"_s}, std::nullopt},
                             Case{{u"undo"_s, u"3"_s}, std::nullopt}, Case{{u"verify"_s}, std::nullopt}}) {
        CLI::App app;
        const auto verbs = Commands::declare(app);
        app.require_subcommand(1);
        EXPECT_EQ(CommandRest::withPaths(app, each.arguments, paths), each.with)
            << each.arguments.join(u' ').toStdString();
    }
}

} // namespace kruv::test
