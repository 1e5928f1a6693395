// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AudioError.h"
#include "formats/FileStart.h"
#include "formats/Formats.h"
#include "formats/Records.h"

#include <QCoreApplication>

#include <algorithm>
#include <stdexcept>

namespace kruv::Formats {

namespace {

constexpr const Format *formats[] = {
#define FORMAT(name) &name##Format,
#include "formats/Records.def"
#undef FORMAT
};

template <typename Condition> const Format *first(Condition condition)
{
    const auto *const found =
        std::ranges::find_if(formats, [&condition](const Format *format) { return condition(*format); });
    return found == std::end(formats) ? nullptr : *found;
}

} // namespace

std::span<const Format *const> all()
{
    return formats;
}

const Format *ofType(QStringView type)
{
    return first([type](const Format &format) { return std::ranges::count(format.types, type) > 0; });
}

const Format *identify(const QString &path)
{
    try {
        const FileStart start(path);
        return first([&start](const Format &format) { return format.isContent(start); });
    } catch (const AudioError &) {
        return nullptr;
    }
}

void requireContent(const QString &path, const Format *wanted)
{
    const Format *found = identify(path);
    if (found != (wanted == &heAacFormat ? &aacFormat : wanted)) { // HE-AAC is known as AAC
        throw std::runtime_error(QCoreApplication::translate("Formats", "What was made is no %1 file.")
                                     .arg(wanted->label)
                                     .toStdString());
    }
}

QStringList typesFor(bool TakenBy::*list)
{
    QStringList types;
    for (const Format *format : formats) {
        if (format->takenBy.*list) {
            for (const QStringView type : format->types) {
                types.append(type.toString());
            }
        }
    }
    types.removeDuplicates();
    return types;
}

QList<const Format *> made(bool lossy)
{
    QList<const Format *> found;
    for (const Format *format : formats) {
        if (format->recipe && format->isLossy() == lossy) {
            found.append(format);
        }
    }
    return found;
}

} // namespace kruv::Formats
