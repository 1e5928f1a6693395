// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/CustomTagsPanel.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include <limits>

namespace kruv {

CustomTagsPanel::CustomTagsPanel(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("CustomTagsPanel"));
    setWindowTitle(tr("Custom Tags"));
    auto *grid = new QGridLayout(this);
    grid->addWidget(new QLabel(tr("Name"), this), 0, 0);
    grid->addWidget(new QLabel(tr("Value"), this), 0, 1);
    int number = 0;
    for (Row &row : m_rows) {
        ++number;
        row = {new QLineEdit(this), new QLineEdit(this)};
        row.name->setObjectName(QStringLiteral("customTagNameText%1").arg(number));
        row.name->setAccessibleName(tr("Name of tag %1").arg(number));
        row.value->setObjectName(QStringLiteral("customTagValueText%1").arg(number));
        row.value->setAccessibleName(tr("Value of tag %1").arg(number));
        row.value->setMinimumWidth(280);
        row.value->setMaxLength(std::numeric_limits<int>::max()); // lyrics and cue sheets are long
        grid->addWidget(row.name, number, 0);
        grid->addWidget(row.value, number, 1);
    }
    grid->setColumnStretch(1, 1);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    grid->addWidget(buttons, number + 1, 0, 1, 2);
}

UserInterface::CustomTagRows CustomTagsPanel::runPanel(const UserInterface::CustomTagRows &rows)
{
    for (std::size_t index = 0; index < rows.size(); ++index) {
        m_rows.at(index).name->setText(rows.at(index).first);
        m_rows.at(index).value->setText(rows.at(index).second);
    }
    if (exec() != Accepted) {
        return rows;
    }
    UserInterface::CustomTagRows edited;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        edited.at(index) = {m_rows.at(index).name->text(), m_rows.at(index).value->text()};
    }
    return edited;
}

} // namespace kruv
