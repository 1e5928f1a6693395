// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

namespace kruv {

class UserInterface;

/// The entry of track names, one a line: typed, pasted or loaded from a track list. Holds no widgets: the
/// window that shows it follows its signals and tells it what the person typed and selected. One serves all
/// tabs that take names. Main thread only.
class TrackNameInputController : public QObject
{
    Q_OBJECT
public:
    /// Name under which trimming can be undone.
    static QString trimUndoName() { return tr("Trim Text"); }

    /// `userInterface` must outlive the controller.
    explicit TrackNameInputController(UserInterface &userInterface, QObject *parent = nullptr);

    /// Whether the window shows. show() on one that shows already brings it to the front.
    bool isShown() const { return m_shown; }
    /// `asker` is the tab whose names the person is to enter.
    void show(const QObject *asker);
    /// The tab that showed the window last, or null. Only to be compared.
    const QObject *asker() const { return m_asker; }

    /// The text as it stands in the window; its lines end with "\n" only.
    const QString &namesText() const { return m_text; }
    /// The text becomes these names, each followed by a line break.
    void setNames(const QStringList &names);
    /// Any kind of line break is taken and becomes "\n".
    void setInputTextString(const QString &text);
    void clear() { setInputTextString({}); }

    /// What the person typed into the window's field, which has it already, so that textReplaced() isn't
    /// sent.
    void textTyped(const QString &text) { m_text = text; }
    /// What the person selected, in UTF-16 units.
    void setSelection(qsizetype start, qsizetype length);

    /// Asks how many characters to cut from which end, and cuts them from each line of the selection that has
    /// that many. Can be undone in the window.
    void removeCharactersFromText();

    /// Asks for a track list and makes its names the text. False when the person cancelled, the file couldn't
    /// be read or holds no track names; the text then stays, and the person is told.
    bool loadTrackNamesFromFile();
    bool loadTrackNamesFromFile(const QString &path);
    std::optional<QString> chooseTrackNamesFile();

    /// Hides the window and announces the lines that are not empty.
    void inputOK();
    void inputCancel();

Q_SIGNALS:
    /// The window is to be shown (or brought to the front) or hidden.
    void shownChanged(bool shown);
    /// `length` units from `start` on were replaced by `text`. `undoName` names the change for undoing and is
    /// empty where it has no name.
    void textReplaced(qsizetype start, qsizetype length, const QString &text, const QString &undoName);
    /// The names that were entered, in order; may be empty.
    void kruvTrackNamesEnteredNotification(const QStringList &names);

private:
    void setShown(bool shown);
    void replace(qsizetype start, qsizetype length, const QString &text, const QString &undoName = {});

    UserInterface &m_userInterface;
    bool m_shown = false;
    const QObject *m_asker = nullptr;
    QString m_text;
    qsizetype m_selectionStart = 0;
    qsizetype m_selectionLength = 0;
};

} // namespace kruv
