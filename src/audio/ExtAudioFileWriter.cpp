// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/ExtAudioFileWriter.h"

#include "audio/AudioError.h"

#include <QString>

#include <system_error>

namespace kruv {

void ExtAudioFileWriter::check(int result)
{
    if (result < 0) {
        throw AudioError(QStringLiteral("ExtAudioFileWrite failed"),
                         QString::fromStdString(std::generic_category().message(-result)));
    }
}

} // namespace kruv
