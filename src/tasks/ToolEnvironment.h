// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QProcessEnvironment>
#include <QString>

#include <string>
#include <vector>

/// The environment that every external tool is run in.
namespace kruv::ToolEnvironment {

/// The inherited environment with PATH = inherited PATH, ":", the resources folder; a UTF-8 character type
/// where the inherited locale has none (tools convert tag text from it); and NSUnbufferedIO = YES, which asks
/// tools that know it not to hold back their output. Any thread.
QProcessEnvironment base();

/// PATH = its current value, ":", `folder`.
void appendToPath(QProcessEnvironment &environment, const QString &folder);

/// As the "NAME=value" that the system takes. What was inherited keeps its bytes, text or not.
std::vector<std::string> entries(const QProcessEnvironment &environment);

} // namespace kruv::ToolEnvironment
