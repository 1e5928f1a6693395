// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/UserInterface.h"

#include <QDialog>

#include <array>

class QLineEdit;

namespace kruv {

/// The editor of up to eight free-form tags.
class CustomTagsPanel : public QDialog
{
    Q_OBJECT
public:
    explicit CustomTagsPanel(QWidget *parent);

    /// Returns the rows as edited; as they were when the person cancelled.
    UserInterface::CustomTagRows runPanel(const UserInterface::CustomTagRows &rows);

private:
    struct Row
    {
        QLineEdit *name = nullptr;
        QLineEdit *value = nullptr;
    };
    std::array<Row, std::tuple_size_v<UserInterface::CustomTagRows>> m_rows;
};

} // namespace kruv
