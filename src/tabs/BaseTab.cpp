// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/BaseTab.h"

#include "base/FolderWalk.h"
#include "base/PathNames.h"
#include "base/Preferences.h"
#include "base/UserInterface.h"
#include "platform/Resources.h"
#include "tabs/Plan.h"

#include <QDir>
#include <QTimer>

#include <memory>
#include <utility>

namespace kruv {

namespace {
/// The first few of a list that may be long, a line each.
QString firstOf(const QStringList &names)
{
    constexpr qsizetype shown = 10;
    QString text = names.mid(0, shown).join(u'\n');
    if (names.size() > shown) {
        text += u'\n' + BaseTab::tr("… and %n more", nullptr, static_cast<int>(names.size() - shown));
    }
    return text;
}
} // namespace

/// One walk over what was handed in.
struct BaseTab::Intake
{
    FileList::Batch accepted;
    QStringList badExtensions;
    QStringList refused;
    QStringList folders;
    QStringList undecodable;
    QStringList unreadable;
};

BaseTab::BaseTab(const QString &label, TabHost &host)
    : m_label(label)
    , m_host(host)
    , m_pathToCommandLineTools(resourcesFolder())
{
}

void BaseTab::addCheckedFiles(const QStringList &paths)
{
    if (m_intakeInBackground) {
        takeInBackground(
            [paths](const std::stop_token &) { return Intake{FileList::Batch(paths), {}, {}, {}, {}, {}}; });
    } else if (m_fileList.add(paths) > 0) {
        filesAdded();
    }
}

void BaseTab::addFiles(const QStringList &paths)
{
    if (!m_intakeInBackground) {
        take(collect(paths, m_fileList.pathSet(), m_label, m_host, {}));
        return;
    }
    takeInBackground([paths, listed = m_fileList.pathSet(), label = m_label, &host = std::as_const(m_host)](
                         const std::stop_token &stop) { return collect(paths, listed, label, host, stop); });
}

void BaseTab::takeInBackground(std::function<Intake(std::stop_token)> collect)
{
    countIntakes(1);
    m_work.start([this, collect = std::move(collect)](const std::stop_token &stop) {
        auto intake = std::make_shared<Intake>(collect(stop));
        return [this, intake] {
            countIntakes(-1);
            take(std::move(*intake));
        };
    });
}

void BaseTab::countIntakes(int change)
{
    m_intakes += change;
    Q_EMIT takingInChanged();
}

BaseTab::Intake BaseTab::collect(const QStringList &paths, const QSet<QString> &listed, const QString &label,
                                 const TabHost &host, const std::stop_token &stop)
{
    QStringList accepted;
    QSet<QString> badExtensions;
    QStringList refused;
    FolderWalk walk(stop);
    for (const QString &path : paths) {
        walk.walk(path, [&](const QString &file) {
            if (listed.contains(file)) {
                return;
            }
            if (host.isValidFile(label, file)) {
                accepted.append(file);
            } else {
                badExtensions.insert(PathNames::extension(file));
                refused.append(file);
            }
        });
    }
    return {FileList::Batch(accepted), badExtensions.values(),  refused, walk.folders(),
            walk.undecodableNames(),   walk.unreadableFolders()};
}

void BaseTab::take(Intake intake)
{
    m_fileList.add(std::move(intake.accepted));
    noteFolders(intake.folders);
    filesAdded();
    if (intake.refused.removeIf([this](const QString &file) { return goesAlong(file); }) > 0) {
        QSet<QString> extensions;
        for (const QString &file : std::as_const(intake.refused)) {
            extensions.insert(PathNames::extension(file));
        }
        intake.badExtensions = extensions.values();
    }
    if (Plan *plan = m_host.plan()) {
        for (const QString &file : std::as_const(intake.refused)) {
            plan->add({.sources = {file},
                       .action = PlanEntry::Action::SkipOther,
                       .reason = tr("It is of no kind that this command takes.")});
        }
    }
    if (!intake.badExtensions.isEmpty()) {
        Q_EMIT filesRefused(intake.badExtensions, static_cast<int>(intake.refused.size()));
        if (m_alertsOfRefusedFiles && m_host.preferences().boolean(QStringLiteral("warnOnFilesSkipped"))) {
            showBadFileMessage(m_fileList.isEmpty()
                                   ? tr("File types not supported by this tab")
                                   : tr("Some files types were not recognized by this tab and were skipped"));
        }
    }
    reportUndecodable(m_host.userInterface(), intake.undecodable);
    reportUnreadable(m_host.userInterface(), intake.unreadable);
}

void BaseTab::reportUndecodable(UserInterface &userInterface, const QStringList &names)
{
    if (!names.isEmpty()) {
        userInterface.alert(
            tr("Files whose names are not valid UTF-8 were skipped. Rename them, for example with convmv, "
               "and add them again."),
            firstOf(names), acknowledgeButton());
    }
}

void BaseTab::reportUnreadable(UserInterface &userInterface, const QStringList &folders)
{
    if (!folders.isEmpty()) {
        userInterface.alert(tr("Folders that can't be read were skipped. Check that you may open them."),
                            firstOf(folders), acknowledgeButton());
    }
}

QStringList BaseTab::getFiles(const QString &path, QSet<QString> &badExtensions) const
{
    QStringList files;
    FolderWalk().walk(path, [&](const QString &file) {
        if (m_host.isValidFile(m_label, file)) {
            files.append(file);
        } else {
            badExtensions.insert(PathNames::extension(file));
        }
    });
    return files;
}

void BaseTab::addButtonClick()
{
    const QStringList chosen = m_host.userInterface().chooseFiles(
        tr("Choose files for processing"), tr("Add Files"), m_host.acceptedTypes(m_label));
    if (!chosen.isEmpty()) {
        addFiles(chosen);
    }
}

void BaseTab::clearFiles()
{
    m_work.abandon();
    countIntakes(-m_intakes);
    m_fileList.clear();
    m_folders.clear();
}

void BaseTab::deleteSelectedRows(const QList<int> &rows)
{
    m_fileList.removeRows(rows);
}

void BaseTab::filterGivenExtension(const QString &extension)
{
    m_fileList.removeExtension(extension);
}

QStringList BaseTab::getFilesFromOutputDirectory(const QString &folder, const QString &extension)
{
    QStringList found;
    const QString wanted = extension.toUpper();
    const QDir directory(folder);
    for (const QString &name :
         directory.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Unsorted)) {
        if (PathNames::fileType(name) == wanted) {
            found.append(directory.filePath(name));
        }
    }
    return found;
}

QString BaseTab::withoutJobText(const QString &format)
{
    return tr("This version can't convert it to %1.").arg(format);
}

void BaseTab::reportWithoutJob(const QStringList &files, const QString &format)
{
    if (Plan *plan = m_host.plan()) {
        for (const QString &file : files) {
            plan->add(
                {.sources = {file}, .action = PlanEntry::Action::Refuse, .reason = withoutJobText(format)});
        }
    } else if (!files.isEmpty()) {
        m_host.userInterface().alert(
            tr("This version can't convert these files to %1. They were left as they are.").arg(format),
            firstOf(files), acknowledgeButton());
    }
}

std::optional<QString> BaseTab::chooseOutputFolder()
{
    return m_host.userInterface().chooseFolder(tr("Choose output directory"));
}

std::optional<QString> BaseTab::openSavePanel(const QString &message, const QString &title,
                                              const QString &proposedName)
{
    return m_host.userInterface().savePath(message, title, proposedName);
}

void BaseTab::showBadFileMessage(const QString &text)
{
    constexpr int untilTheDropIsOver = 500; // milliseconds
    QTimer::singleShot(untilTheDropIsOver, this,
                       [this, text] { m_host.userInterface().alert(text, QString(), acknowledgeButton()); });
}

bool BaseTab::confirmDeletion(bool deleteOriginals)
{
    if (!deleteOriginals || !m_host.preferences().boolean(QStringLiteral("warnOnDelete"))) {
        return true;
    }
    const int answer = m_host.userInterface().ask(
        UserInterface::Matter::DeletingOriginals,
        tr("You have chosen to delete the original files.  Are you sure you want to continue?"), QString(),
        {UserInterface::yes(), UserInterface::no()}, 0);
    return answer == 0;
}

bool BaseTab::askToOverwrite(const QString &detail)
{
    const int answer = m_host.userInterface().ask(
        UserInterface::Matter::Overwriting,
        tr("One of the output files already exists and will be overwritten.  Are you sure you "
           "want to continue?"),
        detail, {UserInterface::no(), UserInterface::yes()}, 0);
    return answer == 1;
}

std::optional<FileCommit::Existing> BaseTab::agreeOnExisting(const QStringList &outputs)
{
    QStringList taken = outputs;
    taken.removeIf([](const QString &path) { return !FileCommit::isTaken(path); });
    if (taken.isEmpty()) {
        return FileCommit::Existing::Keep;
    }
    taken.sort();
    return askToOverwrite(firstOf(taken)) ? std::optional(FileCommit::Existing::Replace) : std::nullopt;
}

} // namespace kruv
