// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

namespace kruv {

/// The files of a job, as far as they are known before it starts.
struct JobOutline
{
    QStringList sources = {};
    QStringList outputs = {};
};

} // namespace kruv
