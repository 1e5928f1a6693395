// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Author.h"
#include "common/ToolMain.h"

int main(int argc, char **argv)
{
    return kruv::tools::toolMain("dvda", [&] { return kruv::dvda::run({argv + 1, argv + argc}); });
}
