// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/KruvTrimCharsPanel.h"

#include "gui/ChoiceGrid.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>

namespace kruv {

KruvTrimCharsPanel::KruvTrimCharsPanel(QWidget *parent)
    : QDialog(parent)
    , m_positionMatrix({{QStringLiteral("beginning"), tr("Beginning")}, {QStringLiteral("end"), tr("End")}},
                       2)
    , m_numberField(new QSpinBox(this))
{
    constexpr int longestName = 255;
    setObjectName(QStringLiteral("TrimCharsPanel"));
    setWindowTitle(tr("Trim Characters"));
    m_numberField->setObjectName(QStringLiteral("numberField"));
    m_numberField->setRange(0, longestName);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *form = new QFormLayout(this);
    form->addRow(tr("&Characters to trim:"), m_numberField);
    form->addRow(tr("From the:"),
                 new ChoiceGrid(m_positionMatrix, {QStringLiteral("positionMatrix"), tr("From the:")}, this));
    form->addRow(buttons);
}

std::optional<TrimCharsObject> KruvTrimCharsPanel::runPanel()
{
    m_numberField->setFocus();
    m_numberField->selectAll();
    if (exec() != Accepted) {
        return std::nullopt;
    }
    return TrimCharsObject{.number = m_numberField->value(), .position = m_positionMatrix.selectedColumn()};
}

} // namespace kruv
