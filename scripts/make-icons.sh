#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kruv developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Draws the icon's PNG sizes anew from its SVG; run it after changing the SVG. Needs rsvg-convert (librsvg2-bin).
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../dist/icons"
for size in 16 22 24 32 48 64 128 256; do
    rsvg-convert --width "$size" --height "$size" --output "org.kruv.Kruv-$size.png" org.kruv.Kruv.svg
done
