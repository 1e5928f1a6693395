// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolJoinTask.h"

#include "base/PathNames.h"
#include "formats/SetProof.h"
#include "shntool/SHNToolArguments.h"

#include <QLoggingCategory>

namespace kruv {

namespace {
Q_LOGGING_CATEGORY(joinLog, "kruv.shntool", QtWarningMsg)
}

SHNToolJoinTask::SHNToolJoinTask(TaskCompletionSink *queue, Request given)
    : SHNToolOutputTask(
          queue, std::move(given),
          {.text = QT_TRANSLATE_NOOP("kruv::SHNToolDisplay", "Joining Files: %1%"), .namesFile = true})
    , m_toolName(QStringLiteral("joined.") + request().format)
    , m_fileName(request().folder + u'/' + m_toolName)
{
    setTitles(tr("Running SHNTool Join"));
}

void SHNToolJoinTask::make(StagedOutputs &outputs)
{
    const QString folder = PathNames::folderOf(m_fileName);
    outputs.add(m_fileName, m_toolName);
    const QString staging = outputs.stagingFor(folder);
    runShntool(SHNToolArguments::join(staging, request().format, request().files), staging, folder);
}

ProofNote SHNToolJoinTask::prove(const StagedOutputs &outputs)
{
    SetProof proof(Proof::Change::None, [this](double percent) { return showProof(percent); });
    proof.show(request().files, {outputs.stagedPath(m_fileName)});
    return proof.note();
}

void SHNToolJoinTask::committed(const StagedOutputs &outputs)
{
    qCInfo(joinLog, "Renaming %s to %s", qUtf8Printable(outputs.stagedPath(m_fileName)),
           qUtf8Printable(m_fileName));
}

} // namespace kruv
