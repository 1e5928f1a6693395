// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/CommandRest.h"

#include "base/SystemError.h"
#include "journal/History.h"
#include "journal/JournalFile.h"
#include "tabs/ConversionOrder.h"
#include "tasks/RunRecorder.h"
#include "util/UndoMeans.h"
#include "util/UndoTask.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iterator>
#include <map>
#include <stdexcept>
#include <unistd.h>

namespace kruv::CommandRest {

namespace {

const std::string pathsOption = "paths";

/// What each option of the innermost command is given; nothing where the arguments are wrong.
using Given = std::map<std::string, std::vector<std::string>>;
std::optional<Given> parsed(CLI::App &root, const QStringList &arguments)
{
    std::vector<std::string> backwards; // as the parser takes them
    for (const QString &argument : arguments) {
        backwards.insert(backwards.begin(), argument.toStdString());
    }
    try {
        root.parse(backwards);
    } catch (const CLI::ParseError &) {
        return std::nullopt;
    }
    const CLI::App *command = &root;
    while (!command->get_subcommands().empty()) {
        command = command->get_subcommands().front();
    }
    Given given;
    for (const CLI::Option *option : command->get_options()) {
        given[option->get_name(true)] = option->results();
    }
    return given;
}

} // namespace

std::vector<HistoryRun> runs()
{
    std::vector<HistoryRun> found;
    History(JournalFile::usualPath()).forEachRunWith(History::Jobs::NotDone, [&found](const HistoryRun &run) {
        if (!ConversionOrder::fromText(run.plan) && run.done + run.failed < run.all &&
            RunRecorder::isOver(run)) {
            found.push_back(run);
        }
    });
    return found;
}

bool isByFile(const HistoryRun &run)
{
    const QStringView commands[] = {u"verify", u"checksum verify", u"tags set", u"util resample",
                                    u"util de-emphasis"};
    return !run.arguments.isEmpty() &&
           std::ranges::find(commands, QStringView(run.command)) != std::end(commands);
}

QStringList filesOf(const HistoryRun &run)
{
    QStringList files;
    History(JournalFile::usualPath()).forEachEntryOf(run.id, [&files](const HistoryEntry &entry) {
        if (entry.isLeft()) {
            files.append(entry.source);
        }
    });
    files.removeDuplicates();
    return files;
}

void takeBackHalves(const HistoryRun &run)
{
    UndoMeans means(JournalFile::usualPath());
    History(JournalFile::usualPath()).forEachEntryOf(run.id, [&means](const HistoryEntry &entry) {
        if (entry.isLeft()) {
            UndoTask::takeBackHalves(entry, means);
        }
    });
}

std::optional<QStringList> withPaths(CLI::App &root, const QStringList &arguments, const QStringList &paths)
{
    const auto before = parsed(root, arguments);
    if (!before || !before->contains(pathsOption)) {
        return std::nullopt;
    }
    QStringList changed = arguments;
    changed.removeOne(QStringLiteral("--"));
    for (const std::string &path : before->at(pathsOption)) {
        const auto place = changed.lastIndexOf(QString::fromStdString(path));
        if (place < 0) {
            return std::nullopt;
        }
        changed.removeAt(place);
    }
    changed += QStringList{QStringLiteral("--")} + paths;
    Given wanted = *before;
    wanted[pathsOption].clear();
    for (const QString &path : paths) {
        wanted[pathsOption].push_back(path.toStdString());
    }
    return parsed(root, changed) == wanted ? std::optional(changed) : std::nullopt;
}

void become(const QStringList &arguments, const QString &folder)
{
    std::vector<QByteArray> encoded{"kruv"};
    for (const QString &argument : arguments) {
        encoded.push_back(QFile::encodeName(argument));
    }
    std::vector<char *> pointers;
    pointers.reserve(encoded.size() + 1);
    for (QByteArray &argument : encoded) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    std::fflush(nullptr);
    if (chdir(QFile::encodeName(folder).constData()) == 0) {
        execv("/proc/self/exe", pointers.data());
    }
    throw std::runtime_error(systemErrorText(errno).toStdString());
}

} // namespace kruv::CommandRest
