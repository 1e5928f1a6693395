// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class QString;
class QWidget;

namespace kruv {

class KruvController;

/// Makes the view of the tab with that label. A label without a view is a programming error and gives null.
QWidget *makeTabView(const QString &label, KruvController &controller, QWidget *parent);

/// What the tab with that label is called in the window.
QString tabTitle(const QString &label);

} // namespace kruv
