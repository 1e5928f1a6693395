// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/shorten/DecodeSHNTask.h"

#include "base/PathNames.h"
#include "formats/ShntoolConversion.h"

namespace kruv {

void DecodeSHNTask::makeOutput()
{
    runShntool(
        ShntoolConversion::convert(PathNames::extension(staged()), PathNames::folderOf(staged()), fileName()),
        ShntoolConversion::readPlain, tr("Decoding SHN: %1%"));
}

} // namespace kruv
