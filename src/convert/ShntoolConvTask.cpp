// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/ShntoolConvTask.h"

#include "base/PathNames.h"
#include "tasks/OriginalFile.h"

namespace kruv {

namespace {

QString plannedOutput(const QStringList &arguments)
{
    const auto following = [&arguments](QStringView option) {
        return arguments.value(arguments.indexOf(option) + 1);
    };
    const QString encoder = following(u"-o");
    constexpr QStringView custom = u"cust ext=";
    const QString extension =
        encoder.startsWith(custom) ? encoder.sliced(custom.size()).section(u' ', 0, 0) : encoder;
    return PathNames::outputPath(following(u"-d"), arguments.last(), extension);
}

} // namespace

ShntoolConvTask::ShntoolConvTask(TaskCompletionSink *queue, const QString &launchPath,
                                 const QStringList &arguments, const QString &progress,
                                 CodecOutput::Reader read)
    : KruvAsyncNSTask(queue, launchPath, arguments)
    , m_fileName(arguments.last())
    , m_outFile(plannedOutput(arguments))
    , m_progress(progress)
    , m_read(read)
{
    setTitle(PathNames::lastPathComponent(m_fileName));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

void ShntoolConvTask::startTask()
{
    m_output = OutputWatch(m_outFile);
    KruvAsyncNSTask::startTask();
}

void ShntoolConvTask::processTaskOutput(const QString &text)
{
    const CodecOutput::Piece piece = m_read(text, title());
    if (piece.percentage) {
        setTopTextFieldString(m_progress.arg(piece.percentageText));
        setProgressIndicatorValue(*piece.percentage);
    }
    setTextFieldString(title());
    publish(&KruvTask::setCombinedStatus);
    appendResults(piece.results);
    m_encoderFailed = m_encoderFailed || text.contains(u"child encoder process");
}

void ShntoolConvTask::cleanup()
{
    if (m_encoderFailed && !cancelled()) {
        setError(true); // whatever the tool's own status
    }
    if (!error() && !cancelled()) {
        copyTags();
    }
    if (error() && m_encoderFailed) {
        appendResults(encoderLimits());
    }
    if (!OutputWatch::isSameFile(m_fileName, m_outFile)) {
        OriginalFile::deleteAfterSuccess(*this, m_fileName, m_output);
    }
    if (!error()) {
        results()->setHasResults(false);
    }
}

} // namespace kruv
