// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QProcessEnvironment>
#include <QString>

class QProcess;

/// How every external tool is run: its environment and its standard streams.
namespace kruv::ToolEnvironment {

/// The inherited environment with PATH = inherited PATH, ":", the resources folder, and a UTF-8 character
/// type where the inherited locale has none (tools convert tag text from it). Any thread.
QProcessEnvironment base();

/// PATH = its current value, ":", `folder`.
void appendToPath(QProcessEnvironment &environment, const QString &folder);

/// `environment` with NSUnbufferedIO = YES, which asks tools that know it not to hold back their output.
QProcessEnvironment unbuffered(QProcessEnvironment environment);

/// Joins standard output and error, decides what standard input is (inherited where a person sits at a
/// terminal, else /dev/null, so that no tool waits for an answer nobody can give), keeps Ctrl-C for the
/// program itself, and lets the tool end when the program dies.
void prepare(QProcess &process);

} // namespace kruv::ToolEnvironment
