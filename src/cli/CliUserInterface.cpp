// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/CliUserInterface.h"

#include "cli/Console.h"
#include "cli/UsageError.h"

#include <QDir>
#include <QFileInfo>

namespace kruv {

namespace {

/// A question and the flag that says yes to it.
struct Answer
{
    UserInterface::Matter matter;
    bool CommonOptions::*flag;
    const char *flagName;
};

constexpr Answer answers[] = {
    {UserInterface::Matter::DeletingOriginals, &CommonOptions::yes, "--yes"},
    {UserInterface::Matter::Overwriting, &CommonOptions::overwrite, "--overwrite"},
    {UserInterface::Matter::ReadingFormats, &CommonOptions::readFormats, ""},
};

} // namespace

CliUserInterface::CliUserInterface(const CommonOptions &options)
    : m_options(options)
{
}

int CliUserInterface::ask(Matter matter, const QString &title, const QString &text,
                          const QStringList &buttons, int)
{
    for (const Answer &answer : answers) {
        if (answer.matter != matter) {
            continue;
        }
        if (m_options.*answer.flag || m_options.dryRun) {
            return static_cast<int>(buttons.indexOf(yes()));
        }
        const QString names = QString(text).replace(u'\n', QStringLiteral(", "));
        throw UsageError(matter == Matter::Overwriting && !names.isEmpty()
                             ? tr("There already: %1. Add --overwrite to replace what is there.").arg(names)
                             : tr("%1 Add %2 to say yes.").arg(title, QLatin1StringView(answer.flagName)));
    }
    throw UsageError(title);
}

std::optional<ExistingFiles> CliUserInterface::askAboutExisting(const QStringList &existing, qsizetype)
{
    if (m_options.overwrite) {
        return ExistingFiles::Replace;
    }
    if (m_options.skipExisting) {
        return ExistingFiles::Skip;
    }
    if (m_options.keepBoth) {
        return ExistingFiles::KeepBoth;
    }
    if (m_options.onlyPlans()) {
        m_stops = !m_options.update;
        return ExistingFiles::Refuse;
    }
    if (m_options.update) {
        alert(tr("Older than their sources, but nothing tells that they were made of them. They were left as "
                 "they are; --overwrite replaces them."),
              existing.join(u'\n'), {});
        return ExistingFiles::Refuse;
    }
    QString names = Console::printable(existing.constFirst());
    if (existing.size() > 1) {
        names = tr("%1 (and %n more)", nullptr, static_cast<int>(existing.size()) - 1).arg(names);
    }
    throw UsageError(tr("%1: exists already. Add --overwrite to replace what is there, --skip-existing to "
                        "leave it as it is, --skip-done to leave what the same command made before, or "
                        "--keep-both to give the new ones a number.")
                         .arg(names));
}

bool CliUserInterface::askAboutLossy(const QStringList &files)
{
    if (m_options.fromLossy || m_options.onlyPlans()) {
        m_lossy = m_options.fromLossy ? QStringList() : files;
        m_stops = m_stops || !m_options.fromLossy;
        return true;
    }
    throw UsageError(tr("%1 is lossy: a lossless format makes it larger, but brings nothing "
                        "back. Add --from-lossy to encode such files all the same.")
                         .arg(Console::printable(files.constFirst())));
}

std::optional<bool> CliUserInterface::askAboutLosses(const QStringList &losses)
{
    if (m_options.onlyPlans()) {
        return false; // the plan says so of each file
    }
    for (const QString &sentence : losses) {
        Console::complain(sentence);
    }
    Console::writeError(tr("Their originals are kept. Add --accept-losses to delete them all the same.") +
                        u'\n');
    return false;
}

bool CliUserInterface::askAboutSpace(const QStringList &shortages)
{
    if (!m_options.ignoreSpace) {
        throw UsageError(tr("%1 Nothing was begun. Free some space, choose another folder, or add "
                            "--ignore-space to begin all the same.")
                             .arg(shortages.join(u' ')));
    }
    return true;
}

void CliUserInterface::allOutputsExist(qsizetype outputs)
{
    if (!m_options.quiet && !m_options.onlyPlans()) {
        const auto all = static_cast<int>(outputs);
        Console::complain(all == 1 ? tr("nothing to do: the output exists already")
                                   : tr("nothing to do: all %n outputs exist already", nullptr, all));
    }
}

void CliUserInterface::remark(const QString &sentence)
{
    Q_EMIT remarked(sentence);
}

void CliUserInterface::alert(const QString &title, const QString &text, const QString &)
{
    ++m_alerts;
    QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
    // Where the title says no more than that, the text is the message.
    Console::complain(title == errorTitle() && !lines.isEmpty() ? lines.takeFirst() : title);
    for (const QString &line : lines) {
        Console::writeError(QStringLiteral("  %1\n").arg(Console::printable(line)));
    }
}

std::optional<QString> CliUserInterface::chooseFolder(const QString &)
{
    if (m_options.output.empty() && !m_options.save.empty()) {
        // What is made goes where its final name is.
        return QFileInfo(QString::fromStdString(m_options.save)).absolutePath();
    }
    if (m_options.output.empty()) {
        throw UsageError(
            tr("Say where the output goes: --output DIR, or --beside-source for next to each source."));
    }
    return QDir::cleanPath(QDir().absoluteFilePath(QString::fromStdString(m_options.output)));
}

QStringList CliUserInterface::chooseFiles(const QString &, const QString &, const QStringList &)
{
    throw UsageError(tr("Name the files on the command line."));
}

std::optional<QString> CliUserInterface::chooseFile(const QString &title, const QStringList &)
{
    if (m_options.sideFile.empty()) {
        throw UsageError(
            m_options.sideFileFlag
                ? tr("%1: say which with %2 FILE.").arg(title, QLatin1StringView(m_options.sideFileFlag))
                : title);
    }
    return QDir::cleanPath(QDir().absoluteFilePath(QString::fromStdString(m_options.sideFile)));
}

std::optional<QString> CliUserInterface::savePath(const QString &, const QString &, const QString &)
{
    if (m_options.save.empty()) {
        throw UsageError(tr(
            "Say where the file goes: --save FILE, or --beside-source where all sources lie in one folder."));
    }
    const QString path = QDir::cleanPath(QDir().absoluteFilePath(QString::fromStdString(m_options.save)));
    if (QFileInfo::exists(path) && !m_options.overwrite && !m_options.onlyPlans()) {
        throw UsageError(tr("%1 is there already. Add --overwrite to replace it.").arg(path));
    }
    return path;
}

std::optional<QString> CliUserInterface::enterText(const QString &title, const QString &prompt,
                                                   const QString &)
{
    if (m_options.text.empty()) {
        throw UsageError(QStringLiteral("%1: %2").arg(title, prompt));
    }
    return QString::fromStdString(m_options.text);
}

std::optional<TrimCharsObject> CliUserInterface::trimCharacters()
{
    return std::nullopt;
}

void CliUserInterface::openResultsWindow(const QString &text, const QString &title)
{
    Q_EMIT resultsReady(title, text);
}

} // namespace kruv
