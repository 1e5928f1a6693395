// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/PlainWav.h"

#include "audio/FileDescriptor.h"
#include "common/InputStream.h"
#include "common/WavReader.h"

#include <QFile>

#include <exception>

namespace kruv {

bool isPlainWav(const QString &path)
{
    try {
        tools::InputStream input(FileDescriptor::openForReading(path).release(), path.toStdString());
        const tools::WavReader reader(input, tools::WavTolerance::Repair);
        return reader.statesLength() && reader.audioBytes().value_or(0) > 0;
    } catch (const std::exception &) {
        return true; // no integer PCM: the encoder has its own words for what it can't take
    }
}

bool isRiffWav(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(4) == "RIFF";
}

} // namespace kruv
