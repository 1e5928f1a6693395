// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/DropPage.h"

namespace kruv {

class KruvController;

/// What the program is. Files dropped here go to the tab that works on their kind.
class AboutView : public DropPage
{
    Q_OBJECT
public:
    /// `controller` must outlive the view.
    AboutView(KruvController &controller, QWidget *parent);

protected:
    void filesDropped(const QStringList &paths) override;

private:
    KruvController &m_controller;
};

} // namespace kruv
