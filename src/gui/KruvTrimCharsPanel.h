// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/TrimCharsObject.h"
#include "tabs/Controls.h"

#include <QDialog>

#include <optional>

class QSpinBox;

namespace kruv {

/// Asks how many characters to cut and from which end.
class KruvTrimCharsPanel : public QDialog
{
    Q_OBJECT
public:
    explicit KruvTrimCharsPanel(QWidget *parent);

    /// Nothing when the person cancelled.
    std::optional<TrimCharsObject> runPanel();

private:
    ChoiceControl m_positionMatrix;
    QSpinBox *m_numberField;
};

} // namespace kruv
