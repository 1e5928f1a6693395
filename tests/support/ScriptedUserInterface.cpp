// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/ScriptedUserInterface.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

template <typename Answer>
Answer next(std::deque<Answer> &script, const QString &asked, const Answer &cancelled)
{
    if (script.empty()) {
        ADD_FAILURE() << "no answer is scripted for: " << asked.toStdString();
        script.push_back(cancelled);
    }
    Answer answer = script.front();
    script.pop_front();
    return answer;
}

} // namespace

int ScriptedUserInterface::ask(Matter, const QString &title, const QString &text, const QStringList &buttons,
                               int defaultButton)
{
    questions.push_back({title, text, buttons, defaultButton});
    return next(buttonAnswers, title, defaultButton);
}

void ScriptedUserInterface::alert(const QString &title, const QString &text, const QString &button)
{
    alerts.push_back({title, text, button});
}

std::optional<QString> ScriptedUserInterface::chooseFolder(const QString &title)
{
    prompts << title;
    return next(textAnswers, title, {});
}

QStringList ScriptedUserInterface::chooseFiles(const QString &title, const QString &prompt,
                                               const QStringList &)
{
    prompts << title << prompt;
    return next(fileAnswers, title, {});
}

std::optional<QString> ScriptedUserInterface::chooseFile(const QString &title, const QStringList &types)
{
    prompts << title << types;
    return next(textAnswers, title, {});
}

std::optional<QString> ScriptedUserInterface::savePath(const QString &message, const QString &title,
                                                       const QString &proposedName)
{
    prompts << message << title << proposedName;
    return next(textAnswers, title, {});
}

std::optional<QString> ScriptedUserInterface::enterText(const QString &title, const QString &message,
                                                        const QString &initialText)
{
    prompts << title << message << initialText;
    return next(textAnswers, title, {});
}

std::optional<TrimCharsObject> ScriptedUserInterface::trimCharacters()
{
    return next(trimAnswers, u"characters to trim"_s, {});
}

UserInterface::CustomTagRows ScriptedUserInterface::editCustomTags(const CustomTagRows &rows)
{
    customTagRowsShown = rows;
    return next(customTagAnswers, u"custom tags"_s, rows);
}

void ScriptedUserInterface::openResultsWindow(const QString &text, const QString &title)
{
    resultsWindows.push_back({text, title});
}

bool ScriptedUserInterface::notify(const QString &title)
{
    if (hasNotifications) {
        notifications << title;
    }
    return hasNotifications;
}

} // namespace kruv::test
