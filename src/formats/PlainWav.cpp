// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/PlainWav.h"

#include "audio/FileDescriptor.h"
#include "common/InputStream.h"
#include "common/PcmReader.h"

#include <exception>

namespace kruv {

bool isPlainWav(const QString &path)
{
    try {
        tools::InputStream input(FileDescriptor::openForReading(path).release(), path.toStdString());
        return tools::PcmReader(input).frames().value_or(0) > 0;
    } catch (const std::exception &) {
        return true; // no integer PCM: the encoder has its own words for what it can't take
    }
}

} // namespace kruv
