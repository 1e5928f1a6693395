// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/UserInterface.h"

#include <deque>
#include <vector>

namespace kruv::test {

/// A person who answers from a script. What the engine asked and showed is kept word for word; a question
/// without a scripted answer fails the test and is answered as by a person who cancels.
class ScriptedUserInterface : public UserInterface
{
public:
    struct Question
    {
        QString title;
        QString text;
        QStringList buttons;
        int defaultButton = 0;
        bool operator==(const Question &) const = default;
    };
    struct Alert
    {
        QString title;
        QString text;
        QString button;
        bool operator==(const Alert &) const = default;
    };
    struct Window
    {
        QString text;
        QString title;
        bool operator==(const Window &) const = default;
    };

    // The script, each list used from the front.
    std::deque<int> buttonAnswers;
    std::deque<std::optional<QString>> textAnswers; // folders, single files, save paths and entered texts
    std::deque<QStringList> fileAnswers;
    std::deque<std::optional<TrimCharsObject>> trimAnswers;
    std::deque<CustomTagRows> customTagAnswers;
    bool hasNotifications = true;

    // What happened.
    std::vector<Question> questions;
    std::vector<Alert> alerts;
    std::vector<Window> resultsWindows;
    QStringList prompts; // titles, messages and proposals of every prompt that is not a question
    QStringList remarks;
    QStringList notifications;
    CustomTagRows customTagRowsShown;
    int attentionRequests = 0;
    int badge = 0;
    bool statusPanelShown = false;
    int scrolledToRow = -1;

    int ask(Matter matter, const QString &title, const QString &text, const QStringList &buttons,
            int defaultButton) override;
    void remark(const QString &sentence) override { remarks << sentence; }
    void alert(const QString &title, const QString &text, const QString &button) override;
    std::optional<QString> chooseFolder(const QString &title) override;
    QStringList chooseFiles(const QString &title, const QString &prompt, const QStringList &types) override;
    std::optional<QString> chooseFile(const QString &title, const QStringList &types) override;
    std::optional<QString> savePath(const QString &message, const QString &title,
                                    const QString &proposedName) override;
    std::optional<QString> enterText(const QString &title, const QString &message,
                                     const QString &initialText) override;
    std::optional<TrimCharsObject> trimCharacters() override;
    CustomTagRows editCustomTags(const CustomTagRows &rows) override;
    void showStatusPanel() override { statusPanelShown = true; }
    void closeStatusPanel() override { statusPanelShown = false; }
    void scrollStatusPanelTo(int row) override { scrolledToRow = row; }
    void openResultsWindow(const QString &text, const QString &title) override;
    void setBadge(int count) override { badge = count; }
    bool notify(const QString &title) override;
    void requestAttention() override { ++attentionRequests; }
};

} // namespace kruv::test
