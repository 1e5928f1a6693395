// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/ExistingFiles.h"
#include "base/TrimCharsObject.h"

#include <QCoreApplication>
#include <QImage>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <utility>

namespace kruv {

/// The one seam through which the engine speaks to a person. All calls arrive on the main thread; the asking
/// ones return when the person has answered. The window, the command line and the tests each have their own.
class UserInterface
{
    Q_DECLARE_TR_FUNCTIONS(kruv::UserInterface)
public:
    /// Eight rows of tag name and value.
    using CustomTagRows = std::array<std::pair<QString, QString>, 8>;

    /// What a question is about, for those who answer by flags.
    enum class Matter { Other, DeletingOriginals, Overwriting, ReadingFormats };
    /// The usual answers and the title of what went wrong, which are known again by these words.
    static QString yes() { return tr("Yes"); }
    static QString no() { return tr("No"); }
    static QString cancel() { return tr("Cancel"); }
    static QString errorTitle() { return tr("Error"); }

    virtual ~UserInterface() = default;

    /// Returns the index of the pressed button; `defaultButton` is the one that Return presses.
    virtual int ask(Matter matter, const QString &title, const QString &text, const QStringList &buttons,
                    int defaultButton) = 0;
    /// The same with a picture beside the question, where pictures can be shown.
    virtual int askBesidePicture(const QString &title, const QString &text, const QStringList &buttons,
                                 int defaultButton, const QImage & /*picture*/)
    {
        return ask(Matter::Other, title, text, buttons, defaultButton);
    }
    /// Nothing where the command is not to go on. `existing` are those of its `outputs` whose names are
    /// taken.
    virtual std::optional<ExistingFiles> askAboutExisting(const QStringList &existing, qsizetype outputs);
    /// Whether what earlier runs made of the same is left as it is, without a question.
    virtual bool skipsDone() const { return false; }
    /// Whether, besides, the audio of outputs of which nothing is remembered is compared.
    virtual bool comparesOthers() const { return false; }
    /// Whether outputs that are there are brought up to date with their sources, without a question.
    virtual bool updates() const { return false; }
    /// They do and are to stay, so nothing happens: for a person who was not asked just now.
    virtual void allOutputsExist(qsizetype /*outputs*/) {}
    /// Whether these lossy files are to become lossless ones, which are larger and sound the same.
    virtual bool askAboutLossy(const QStringList &files);
    /// Whether these originals may go, too, whose outputs have other samples on purpose.
    virtual bool askAboutChanged(const QStringList &files);
    /// Whether originals may go although the new files can't hold all that is in them; `losses` are sentences
    /// that say what. False keeps those originals; nothing where the command is not to go on.
    virtual std::optional<bool> askAboutLosses(const QStringList &losses);
    /// Whether to begin although the disks are too small by all that is known; a sentence each.
    virtual bool askAboutSpace(const QStringList &shortages);
    /// Whether that was agreed to beforehand, so that nothing need be looked at.
    virtual bool agreesToLosses() const { return false; }
    /// Something a person should know, which is no reason to stop for.
    virtual void remark(const QString &sentence) = 0;
    virtual void alert(const QString &title, const QString &text, const QString &button) = 0;

    // Nothing is returned when the person cancels.
    virtual std::optional<QString> chooseFolder(const QString &title) = 0;
    /// `types` are extensions in upper case, those that are of use; none for any.
    virtual QStringList chooseFiles(const QString &title, const QString &prompt,
                                    const QStringList &types) = 0;
    /// One file; `types` are extensions in lower case.
    virtual std::optional<QString> chooseFile(const QString &title, const QStringList &types) = 0;
    virtual std::optional<QString> savePath(const QString &message, const QString &title,
                                            const QString &proposedName) = 0;
    virtual std::optional<QString> enterText(const QString &title, const QString &message,
                                             const QString &initialText) = 0;
    virtual std::optional<TrimCharsObject> trimCharacters() = 0;
    virtual CustomTagRows editCustomTags(const CustomTagRows &rows) = 0;

    virtual void showStatusPanel() = 0;
    virtual void closeStatusPanel() = 0;
    virtual void scrollStatusPanelTo(int row) = 0;
    virtual void openResultsWindow(const QString &text, const QString &title) = 0;

    /// Count shown on the application's icon; 0 removes it.
    virtual void setBadge(int count) = 0;
    /// False where the desktop has no notifications.
    virtual bool notify(const QString &title) = 0;
    virtual void requestAttention() = 0;
};

} // namespace kruv
