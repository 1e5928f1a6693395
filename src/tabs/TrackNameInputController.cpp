// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/TrackNameInputController.h"

#include "base/PathNames.h"
#include "base/TextFile.h"
#include "base/UserInterface.h"
#include "tags/TrackNameText.h"

#include <algorithm>

namespace kruv {

namespace {

QString onePerLine(const QStringList &names)
{
    QString text;
    for (const QString &name : names) {
        text += name + u'\n';
    }
    return text;
}

} // namespace

TrackNameInputController::TrackNameInputController(UserInterface &userInterface, QObject *parent)
    : QObject(parent)
    , m_userInterface(userInterface)
{
}

void TrackNameInputController::show(const QObject *asker)
{
    m_asker = asker;
    setShown(true);
}

void TrackNameInputController::setShown(bool shown)
{
    m_shown = shown;
    Q_EMIT shownChanged(shown);
}

void TrackNameInputController::setNames(const QStringList &names)
{
    setInputTextString(onePerLine(names));
}

void TrackNameInputController::setInputTextString(const QString &text)
{
    replace(0, m_text.size(), TrackNameText::withPlainLineBreaks(text));
}

void TrackNameInputController::setSelection(qsizetype start, qsizetype length)
{
    m_selectionStart = std::clamp<qsizetype>(start, 0, m_text.size());
    m_selectionLength = std::clamp<qsizetype>(length, 0, m_text.size() - m_selectionStart);
}

void TrackNameInputController::replace(qsizetype start, qsizetype length, const QString &text,
                                       const QString &undoName)
{
    m_text.replace(start, length, text);
    setSelection(start, undoName.isEmpty() ? 0 : text.size());
    Q_EMIT textReplaced(start, length, text, undoName);
}

void TrackNameInputController::removeCharactersFromText()
{
    const qsizetype start = m_selectionStart;
    const qsizetype length = m_selectionLength;
    const auto trim = m_userInterface.trimCharacters();
    if (trim && trim->number > 0 && length > 0) {
        replace(start, length, TrackNameText::trimmed(m_text.sliced(start, length), *trim), trimUndoName());
    }
}

std::optional<QString> TrackNameInputController::chooseTrackNamesFile()
{
    return m_userInterface.chooseFile(tr("Choose file with track names"), {QStringLiteral("txt")});
}

bool TrackNameInputController::loadTrackNamesFromFile()
{
    const auto path = chooseTrackNamesFile();
    return path && loadTrackNamesFromFile(*path);
}

bool TrackNameInputController::loadTrackNamesFromFile(const QString &path)
{
    const auto text = TextFile::read(path);
    const QStringList names = text ? TrackNameText::namesInTrackList(*text) : QStringList();
    if (names.isEmpty()) {
        m_userInterface.alert(
            text ? tr("There are no track names in %1.").arg(PathNames::lastPathComponent(path))
                 : tr("%1 could not be read.").arg(PathNames::lastPathComponent(path)),
            text ? tr("A track's line begins with its number, and the first number is 1.") : QString(),
            QStringLiteral("OK"));
        return false;
    }
    setNames(names);
    return true;
}

void TrackNameInputController::inputOK()
{
    setShown(false);
    Q_EMIT kruvTrackNamesEnteredNotification(m_text.split(u'\n', Qt::SkipEmptyParts));
}

void TrackNameInputController::inputCancel()
{
    setShown(false);
}

} // namespace kruv
