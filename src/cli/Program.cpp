// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/Program.h"

#include "base/Version.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "cli/UsageError.h"

#include <QCoreApplication>

#include <csignal>
#include <exception>
#include <sstream>
#include <string_view>

namespace kruv::Program {

namespace {

struct ProgramText
{
    Q_DECLARE_TR_FUNCTIONS(kruv::Program)
};

/// Help and version print and succeed; anything else is one line and the usage status.
int reportParse(const CLI::App &app, const CLI::ParseError &result)
{
    if (result.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        std::ostringstream text;
        const int status = app.exit(result, text, text);
        Console::writeOut(QString::fromStdString(text.str()));
        return status;
    }
    QString problem = QString::fromUtf8(result.what());
    if (app.get_subcommands().empty() && !app.remaining().empty()) {
        problem =
            ProgramText::tr("%1: no such command.").arg(QString::fromStdString(app.remaining().front()));
    }
    Console::complain(problem + QStringLiteral(" (kruv --help, kruv COMMAND --help)"));
    return Usage;
}

/// Paths are taken one by one by their verbs; a text of another kind can't be told from what was meant.
void checkEncoding(const CLI::App &app)
{
    for (const CLI::Option *option : app.get_options()) {
        for (const std::string &value :
             option->get_name(true) == "paths" ? std::vector<std::string>() : option->results()) {
            const QString text = QString::fromStdString(value);
            if (text.toStdString() != value) {
                throw UsageError(QCoreApplication::translate("Program", "%1: %2 is not valid UTF-8")
                                     .arg(QString::fromStdString(option->get_name(false, true)),
                                          Console::printable(text)));
            }
        }
    }
    for (const CLI::App *command : app.get_subcommands()) {
        checkEncoding(*command);
    }
}

int runCommand(int argc, char **argv)
{
    CLI::App app(
        ProgramText::tr("Kruv: converts, verifies and keeps collections of lossless audio.\n"
                        "Without a command, alone or with files, it opens the window, or hands them to the\n"
                        "one that is open (--new-window: opens another one; --tab NAME: on that tab).")
            .toStdString(),
        "kruv");
    app.set_version_flag("--version", "kruv " + shortVersion().toStdString());
    app.require_subcommand(1);
    app.footer(
        ProgramText::tr("Exit status: 0 all jobs succeeded, 1 a job failed or a verification did not match,\n"
                        "2 wrong usage or a question that no flag answered, 130 canceled.")
            .toStdString());
    const auto verbs = Commands::declare(app);
    if (argc > 1 && std::string_view(argv[1]) == "--complete") {
        Console::writeOut(QString::fromStdString(Commands::completions(app, {argv + 2, argv + argc})));
        return Success;
    }
    try {
        app.parse(argc, argv);
        checkEncoding(app);
        for (const auto &verb : verbs) {
            if (verb->wasGiven()) {
                return verb->run();
            }
        }
    } catch (const CLI::ParseError &result) {
        return reportParse(app, result);
    } catch (const UsageError &problem) {
        Console::complain(QString::fromUtf8(problem.what()));
    } catch (const std::exception &failure) {
        Console::complain(QString::fromUtf8(failure.what()));
        return Failure;
    }
    return Usage;
}

} // namespace

bool isCommand(const std::string &name)
{
    CLI::App app;
    const auto verbs = Commands::declare(app);
    return !app.get_subcommands([&name](const CLI::App *command) { return command->get_name() == name; })
                .empty();
}

int run(int argc, char **argv)
{
    // A reader that goes away (kruv verify ... | head) must not end the jobs.
    std::signal(SIGPIPE, SIG_IGN);
    const int status = runCommand(argc, argv);
    const QString problem = Console::outputProblem();
    if (problem.isEmpty()) {
        return status;
    }
    Console::complain(ProgramText::tr("standard output could not be written: %1").arg(problem));
    return status == Success ? static_cast<int>(Failure) : status;
}

} // namespace kruv::Program
