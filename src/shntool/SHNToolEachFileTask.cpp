// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolEachFileTask.h"

#include "base/PathNames.h"
#include "formats/SetProof.h"
#include "shntool/SHNToolArguments.h"
#include "shntool/SHNToolOutput.h"

#include <algorithm>

namespace kruv {

namespace {

/// What the tool says of a file that it makes nothing of.
constexpr QStringView passingOver[] = {
    u"already sector-aligned",
    u"no silence to trim",
    u"already has a canonical header",
    u"is not CD-quality",
};

bool isPassingOver(const QString &message)
{
    return std::ranges::any_of(passingOver, [&](QStringView words) { return message.contains(words); });
}

} // namespace

SHNToolEachFileTask::SHNToolEachFileTask(TaskCompletionSink *queue, Request request, const Mode &mode)
    : SHNToolOutputTask(queue, std::move(request), mode.progress)
    , m_mode(mode)
{
    setTitles(tr(mode.title));
}

QStringList SHNToolEachFileTask::outputs() const
{
    QStringList paths;
    for (const QString &source : request().files) {
        paths.append(request().folder + u'/' + PathNames::nameWithoutExtension(source) +
                     m_mode.postfix.toString() + u'.' + request().format);
    }
    return paths;
}

void SHNToolEachFileTask::make(StagedOutputs &outputs)
{
    for (const QString &path : this->outputs()) {
        outputs.add(path);
    }
    const QString staging = outputs.stagingFor(request().folder);
    const QString toolOutput =
        runShntool(SHNToolArguments::eachFile(m_mode.word, staging, request().format, request().files),
                   staging, request().folder);
    allowPassingOver(outputs, toolOutput);
}

void SHNToolEachFileTask::allowPassingOver(StagedOutputs &outputs, const QString &toolOutput)
{
    const QStringList messages =
        SHNToolOutput::takeApart(toolOutput).messages.split(u'\n', Qt::SkipEmptyParts);
    if (cancelled() || messages.isEmpty() || !std::ranges::all_of(messages, isPassingOver)) {
        return;
    }
    qsizetype passedOver = 0;
    for (const QString &path : this->outputs()) {
        if (!outputs.wasMade(path)) {
            outputs.withdraw(path);
            ++passedOver;
        }
    }
    if (passedOver == messages.size()) {
        setError(false);
        failAfterwards(tr("the tool passed over some of the files"));
    }
}

ProofNote SHNToolEachFileTask::prove(const StagedOutputs &outputs)
{
    qsizetype done = 0;
    SetProof proof(m_mode.change, [this, &done](double percent) {
        return showProof((100.0 * static_cast<double>(done) + percent) /
                         static_cast<double>(request().files.size()));
    });
    const QStringList paths = this->outputs();
    for (; done < paths.size() && mayGoOn(); ++done) {
        if (outputs.wasMade(paths[done])) { // and not passed over
            proof.show({request().files[done]}, {outputs.stagedPath(paths[done])});
        }
    }
    return proof.note();
}

} // namespace kruv
