// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/Format.h"

#include <QStringList>

/// Questions to the list of all formats. Any thread.
namespace kruv::Formats {

std::span<const Format *const> all();

/// The first of the formats whose files have this type (upper-case extension); null for a type of none.
const Format *ofType(QStringView type);

/// What a file is by its content, whatever its name says; null for what can't be opened or is of none. Reads
/// the begin of the file.
const Format *identify(const QString &path);

/// A tool that makes something else than it was asked for has not made the output: throws where the file is
/// not of the format `wanted`.
void requireContent(const QString &path, const Format *wanted);

/// The types of the formats that a list takes, in the registry's order.
QStringList typesFor(bool TakenBy::*list);
/// The formats that can be made, of one kind.
QList<const Format *> made(bool lossy);

} // namespace kruv::Formats
