// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/EntryRecord.h"
#include "journal/Receipt.h"

namespace kruv {

/// Something that was done.
struct DoneRecord
{
    EntryRecord entry = {};
    Receipt receipt = {};
};

} // namespace kruv
