// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/UserInterface.h"
#include "cli/CommonOptions.h"

#include <QObject>

namespace kruv {

/// Answers the engine's questions from the command's flags. A question that no flag answers throws
/// UsageError, which names the flag; nothing has been started by then.
class CliUserInterface : public QObject, public UserInterface
{
    Q_OBJECT
public:
    explicit CliUserInterface(const CommonOptions &options);

    int ask(Matter matter, const QString &title, const QString &text, const QStringList &buttons,
            int defaultButton) override;
    std::optional<ExistingFiles> askAboutExisting(const QStringList &existing, qsizetype outputs) override;
    void allOutputsExist(qsizetype outputs) override;
    bool skipsDone() const override { return m_options.skipDone; }
    bool comparesOthers() const override
    {
        return m_options.skipDone && !m_options.overwrite && !m_options.skipExisting && !m_options.keepBoth;
    }
    bool updates() const override { return m_options.update; }
    bool askAboutSpace(const QStringList &shortages) override;
    bool askAboutLossy(const QStringList &files) override;
    /// Without the flag the originals stay, and their jobs say so.
    bool askAboutChanged(const QStringList &) override { return m_options.deleteChanged; }
    std::optional<bool> askAboutLosses(const QStringList &losses) override;
    bool agreesToLosses() const override { return m_options.acceptLosses; }
    void remark(const QString &sentence) override;
    void alert(const QString &title, const QString &text, const QString &button) override;
    std::optional<QString> chooseFolder(const QString &title) override;
    QStringList chooseFiles(const QString &title, const QString &prompt, const QStringList &types) override;
    std::optional<QString> chooseFile(const QString &title, const QStringList &types) override;
    std::optional<QString> savePath(const QString &message, const QString &title,
                                    const QString &proposedName) override;
    std::optional<QString> enterText(const QString &title, const QString &message,
                                     const QString &initialText) override;
    std::optional<TrimCharsObject> trimCharacters() override;
    CustomTagRows editCustomTags(const CustomTagRows &rows) override { return rows; }
    void showStatusPanel() override {}
    void closeStatusPanel() override {}
    void scrollStatusPanelTo(int) override {}
    void openResultsWindow(const QString &text, const QString &title) override;
    void setBadge(int) override {}
    bool notify(const QString &) override { return true; }
    void requestAttention() override {}

    /// Of a dry run: whether the command itself would not begin before a question is answered by a flag.
    bool stops() const { return m_stops; }
    /// Of a dry run: the files that are refused because they are lossy.
    const QStringList &lossy() const { return m_lossy; }
    /// How often the engine had something to say that a person should look at.
    int alerts() const { return m_alerts; }

Q_SIGNALS:
    void remarked(const QString &sentence);
    void resultsReady(const QString &title, const QString &text);

private:
    const CommonOptions &m_options;
    int m_alerts = 0;
    QStringList m_lossy;
    bool m_stops = false;
};

} // namespace kruv
