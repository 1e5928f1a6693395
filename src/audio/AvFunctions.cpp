// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AvFunctions.h"

#include "audio/AudioError.h"

#include <QCoreApplication>

#include <dlfcn.h>

namespace kruv {

namespace {

const char *fileOf(AvLibrary library)
{
    switch (library) {
    case AvLibrary::Util:
        return "libavutil.so." AV_STRINGIFY(LIBAVUTIL_VERSION_MAJOR);
    case AvLibrary::Codec:
        return "libavcodec.so." AV_STRINGIFY(LIBAVCODEC_VERSION_MAJOR);
    case AvLibrary::Format:
        return "libavformat.so." AV_STRINGIFY(LIBAVFORMAT_VERSION_MAJOR);
    case AvLibrary::Resample:
        break;
    }
    return "libswresample.so." AV_STRINGIFY(LIBSWRESAMPLE_VERSION_MAJOR);
}

} // namespace

void *findInAvLibrary(AvLibrary library, const char *name)
{
    // Opened again for each function, which counts it up, and never closed.
    void *opened = dlopen(fileOf(library), RTLD_LAZY | RTLD_LOCAL);
    void *address = opened == nullptr ? nullptr : dlsym(opened, name);
    if (address == nullptr) {
        throw AudioError(
            QCoreApplication::translate("kruv::AvFunctions", "FFmpeg can't be used (%1). Install it again.")
                .arg(QString::fromUtf8(dlerror())));
    }
    return address;
}

} // namespace kruv
