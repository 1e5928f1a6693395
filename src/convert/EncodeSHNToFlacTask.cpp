// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/EncodeSHNToFlacTask.h"

#include "convert/TagCopy.h"

namespace kruv {

EncodeSHNToFlacTask::EncodeSHNToFlacTask(TaskCompletionSink *queue, const QString &launchPath,
                                         const QStringList &arguments, const QString &type,
                                         std::shared_ptr<KruvTaskResults> results)
    : ShntoolConvTask(queue, launchPath, arguments,
                      QStringLiteral("Encoding %1 to Flac: ").arg(type) + QStringLiteral("%1%"),
                      CodecOutput::shntoolWords)
    , m_type(type)
{
    setResults(std::move(results));
}

void EncodeSHNToFlacTask::copyTags()
{
    if (m_type != u"APE") {
        return;
    }
    setTopTextFieldString(QStringLiteral("Writing Flac Tags"));
    publish(&KruvTask::setTopTextFieldValue);
    TagCopy::write(outputPath(), *TagCopy::read(inputPath()));
}

} // namespace kruv
