// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/ExtAudioFileWriter.h"

#include "audio/AudioError.h"
#include "audio/CodecFileWriter.h"
#include "audio/PcmFileWriter.h"

#include <system_error>

namespace kruv {

std::unique_ptr<ExtAudioFileWriter> ExtAudioFileWriter::create(const QString &path, FileType fileType,
                                                               const AudioStreamFormat &format,
                                                               std::int64_t expectedFrames)
{
    if (fileType == FileType::M4af) {
        return std::make_unique<CodecFileWriter>(path, format);
    }
    return std::make_unique<PcmFileWriter>(path, fileType, format, expectedFrames);
}

void ExtAudioFileWriter::check(int result)
{
    if (result < 0) {
        throw AudioError(QStringLiteral("ExtAudioFileWrite failed"),
                         QString::fromStdString(std::generic_category().message(-result)));
    }
}

} // namespace kruv
