// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/VerifyListTask.h"

#include "base/PathNames.h"

#include <QFile>
#include <QFileInfo>

#include <climits>

namespace kruv {

namespace {

/// A list of a million files with long names fits; a film called .md5 does not.
constexpr qint64 largestList = 256LL * 1024 * 1024;

} // namespace

VerifyListTask::VerifyListTask(TaskCompletionSink *queue, const QString &fileName,
                               std::shared_ptr<KruvTaskResults> results, Kind kind)
    : ListJob(queue)
    , m_fileName(fileName)
    , m_folder(PathNames::folderOf(fileName))
    , m_kind(std::move(kind))
{
    setTitle(PathNames::lastPathComponent(fileName));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
    setResults(std::move(results));
}

QString VerifyListTask::firstLine() const
{
    return tr("Verify %1: %2\n").arg(m_kind.name, PathNames::lastPathComponent(m_fileName));
}

void VerifyListTask::startTask()
{
    results()->setResults(firstLine(), *this);
    ListJob::startTask();
}

void VerifyListTask::cancelTask()
{
    if (state().phase() < TaskState::Phase::Finishing) {
        results()->setResults(firstLine() + tr("Canceled\n"), *this);
    }
    ListJob::cancelTask();
}

QList<ListText::Line> VerifyListTask::readList()
{
    const QFileInfo info(m_fileName);
    QFile file(m_fileName);
    if (info.exists() && (!info.isFile() || info.size() > largestList)) {
        m_listProblem = tr("not a checksum list");
    } else if (!file.open(QIODevice::ReadOnly)) {
        m_listProblem = file.errorString();
    }
    if (!m_listProblem.isEmpty()) {
        setError(true);
        return {};
    }
    QList<ListText::Line> lines = ListText::lines(file.readAll());
    lines.removeIf([this](const ListText::Line &line) {
        return line.text.isEmpty() || m_kind.comments.contains(line.text[0]);
    });
    return lines;
}

void VerifyListTask::doStartTask()
{
    showStatus(m_kind.status);
    const QList<ListText::Line> lines = readList();
    if (!lines.isEmpty()) {
        prepare();
    }
    std::vector<Entry> entries(static_cast<std::size_t>(lines.size()));
    std::vector<QString> reports(entries.size());
    forEachFile(entries.size(), [&](std::size_t index, FileProgress &progress) {
        Checked checked = check(lines[static_cast<qsizetype>(index)], progress);
        entries[index] = std::move(checked.entry);
        reports[index] = std::move(checked.report);
    });
    QString text = firstLine();
    for (const QString &line : reports) {
        text += line;
    }
    text += cancelled() ? QString() : afterwards(entries);
    m_entries = std::move(entries);
    startFinishing();
    if (!cancelled()) {
        results()->setResults(text, *this);
    }
}

QString VerifyListTask::shown(const QString &name)
{
    constexpr qsizetype longest = 300;
    QString text = name.size() > longest ? name.left(longest) + u'…' : name;
    for (QChar &character : text) {
        if (character.category() == QChar::Other_Control) {
            character = QChar::ReplacementCharacter;
        }
    }
    return text;
}

bool VerifyListTask::isPossibleName(const QString &name)
{
    return !name.isEmpty() && !name.contains(u'\0') && name.size() < PATH_MAX;
}

} // namespace kruv
