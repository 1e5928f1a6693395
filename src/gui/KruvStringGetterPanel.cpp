// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/KruvStringGetterPanel.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace kruv {

KruvStringGetterPanel::KruvStringGetterPanel(QWidget *parent)
    : QDialog(parent)
    , m_message(new QLabel(this))
    , m_enteredText(new QLineEdit(this))
{
    setObjectName(QStringLiteral("StringGetterPanel"));
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_message->setBuddy(m_enteredText);
    m_enteredText->setObjectName(QStringLiteral("enteredText"));
    m_enteredText->setMinimumWidth(360);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_message);
    layout->addWidget(m_enteredText);
    layout->addWidget(buttons);
}

std::optional<QString> KruvStringGetterPanel::runPanel(const Question &question)
{
    setWindowTitle(question.title);
    m_message->setText(question.message);
    m_enteredText->setText(question.initialString);
    m_enteredText->selectAll();
    return exec() == Accepted ? std::optional(m_enteredText->text()) : std::nullopt;
}

} // namespace kruv
