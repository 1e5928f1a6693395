// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/CreateST5Task.h"

#include "base/PathNames.h"
#include "checksums/ListText.h"
#include "checksums/ShntoolHash.h"
#include "tasks/ToolCatalog.h"

#include <stdexcept>

namespace kruv {

namespace {

QStringList hashArguments(const QStringList &names)
{
    return QStringList{QStringLiteral("hash"), QStringLiteral("-m")} + names;
}

} // namespace

CreateST5Task::CreateST5Task(TaskCompletionSink *queue, const QString &launchPath, const QStringList &files,
                             const QString &outputPath)
    : KruvAsyncNSTask(queue, launchPath, {})
    , m_target(outputPath, files)
{
    const QString folder = PathNames::folderOf(files.at(0));
    QStringList names;
    for (const QString &file : files) {
        const QString name = PathNames::lastPathComponent(file);
        if (PathNames::folderOf(file) != folder) {
            m_leftOut.append(tr("%1 is not in the list: it lies in another folder.").arg(name));
        } else if (name.contains(u'\n') || name.contains(u'\r')) {
            m_leftOut.append(tr("%1 is not in the list: its name breaks the line.").arg(name));
        } else {
            names.append(name);
        }
    }
    setArguments(hashArguments(names));
    setDirectory(folder);
    m_runs = ShntoolHash::runs(names);
    m_unhashed = names.size();
    setTitle(tr("Create ST5"));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

void CreateST5Task::startTask()
{
    if (m_runs.isEmpty()) {
        throw std::runtime_error(m_leftOut.join(u'\n').toStdString());
    }
    m_list = ListText::st5Header();
    appendResults(m_list);
    for (const QString &reason : m_leftOut) {
        m_complaints += reason + u'\n';
        setError(true);
    }
    prepareNextRun();
    KruvAsyncNSTask::startTask();
}

void CreateST5Task::prepareNextRun()
{
    setArguments(hashArguments(m_runs.takeFirst()));
    m_output = TerminalText();
}

void CreateST5Task::processTaskOutput(const QString &text)
{
    m_output.append(text);
    const QString &line = m_output.currentLine();
    if (const auto percent = ShntoolHash::percentage(line)) {
        setTopTextFieldString(tr("Creating ST5: %1%").arg(*percent, 0, 'f', 6));
        setProgressIndicatorValue(*percent);
    }
    if (const QString name = ShntoolHash::currentName(line); !name.isEmpty()) {
        setTextFieldString(name);
    }
    publish(&KruvTask::setCombinedStatus);
}

void CreateST5Task::takeRunOutput()
{
    const QString text = m_output.text();
    for (const QString &line : ShntoolHash::hashLines(text)) {
        m_list += line + u'\n';
        --m_unhashed;
    }
    for (const QString &complaint : ShntoolHash::complaints(text)) {
        m_complaints += complaint + u'\n';
    }
    m_output = TerminalText();
}

bool CreateST5Task::runsAgain()
{
    if (m_runs.isEmpty()) {
        return false;
    }
    takeRunOutput();
    if (!ToolCatalog::isLaunchable(launchPath())) {
        m_complaints += ToolCatalog::missingToolMessage(launchPath()) + u'\n';
        setError(true);
        return false;
    }
    prepareNextRun();
    return true;
}

void CreateST5Task::willEnd()
{
    takeRunOutput();
    if (!wasStopped() && !error() && m_unhashed > 0) {
        m_complaints += tr("shntool told no hash of %1 of the files.\n").arg(m_unhashed);
        setError(true);
    }
    const bool anyHash = m_list.contains(ListText::st5Separator);
    const bool isWorthKeeping = !wasStopped() && (anyHash || !error());
    const QString problem = isWorthKeeping ? m_target.write(m_list, error() ? TextOutput::Content::LacksFiles
                                                                            : TextOutput::Content::Whole)
                                           : QString();
    if (!problem.isEmpty()) {
        m_complaints += tr("The list %1 could not be written: %2.\n").arg(m_target.path(), problem);
        setError(true);
    }
    results()->setResults(m_complaints + m_list, *this);
}

void CreateST5Task::finalCleanup()
{
    if (!error()) {
        results()->setHasResults(false);
    }
}

} // namespace kruv
