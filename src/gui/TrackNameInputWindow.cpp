// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/TrackNameInputWindow.h"

#include "gui/ControlLook.h"
#include "gui/QuietLabel.h"
#include "tabs/TrackNameInputController.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QVBoxLayout>

namespace kruv {

namespace {

constexpr QSize firstDialogSize(460, 420);

QPushButton *barButton(const ControlLook &look, QWidget *parent)
{
    auto *button = new QPushButton(look.text, parent);
    button->setObjectName(look.objectName);
    button->setToolTip(look.toolTip);
    button->setAutoDefault(false);
    return button;
}

} // namespace

TrackNameInputWindow::TrackNameInputWindow(TrackNameInputController &controller, QWidget *parent)
    : QDialog(parent)
    , m_controller(controller)
    , m_names(new QPlainTextEdit(this))
    , m_count(new QuietLabel({}, this))
    , m_load(barButton({.text = tr("&Load…"),
                        .objectName = QStringLiteral("load"),
                        .toolTip = tr("Take the names from a numbered list")},
                       this))
    , m_trim(barButton({.text = tr("&Trim…"),
                        .objectName = QStringLiteral("trim"),
                        .toolTip = tr("Cut characters from the start or end of each selected line")},
                       this))
    , m_undo(barButton({.text = {}, .objectName = QStringLiteral("undo"), .toolTip = tr("Ctrl+Z")}, this))
{
    setObjectName(QStringLiteral("TrackNameInputWindow"));
    setWindowTitle(tr("Track Names"));
    m_names->setObjectName(QStringLiteral("names"));
    m_names->setAccessibleName(tr("Track names"));
    m_names->setPlaceholderText(tr("One name a line, typed, pasted or loaded"));
    m_names->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_names->setTabChangesFocus(true);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &TrackNameInputWindow::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &TrackNameInputWindow::reject);
    connect(new QShortcut(Qt::CTRL | Qt::Key_Return, this), &QShortcut::activated, this,
            &TrackNameInputWindow::accept);
    auto *bar = new QHBoxLayout;
    bar->addWidget(m_load);
    bar->addWidget(m_trim);
    bar->addWidget(m_undo);
    bar->addStretch();
    bar->addWidget(m_count);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_names, 1);
    layout->addLayout(bar);
    layout->addWidget(buttons);
    resize(firstDialogSize);
    follow();
}

void TrackNameInputWindow::follow()
{
    connect(&m_controller, &TrackNameInputController::shownChanged, this, &TrackNameInputWindow::showOrHide);
    connect(&m_controller, &TrackNameInputController::textReplaced, this, &TrackNameInputWindow::replaceText);
    connect(m_names, &QPlainTextEdit::textChanged, this, &TrackNameInputWindow::takeText);
    connect(m_names, &QPlainTextEdit::selectionChanged, this, &TrackNameInputWindow::takeSelection);
    connect(m_names->document(), &QTextDocument::undoCommandAdded, this, &TrackNameInputWindow::noteChange);
    connect(m_load, &QPushButton::clicked, &m_controller, [this] { m_controller.loadTrackNamesFromFile(); });
    connect(m_trim, &QPushButton::clicked, &m_controller,
            &TrackNameInputController::removeCharactersFromText);
    connect(m_undo, &QPushButton::clicked, m_names, &QPlainTextEdit::undo);
    replaceText(0, 0, m_controller.namesText(), {});
    m_names->document()->clearUndoRedoStacks();
    takeText();
    takeSelection();
}

void TrackNameInputWindow::showOrHide(bool shown)
{
    setVisible(shown);
    if (shown) {
        raise();
        activateWindow();
        m_names->setFocus();
    }
}

void TrackNameInputWindow::accept()
{
    m_controller.inputOK();
}

void TrackNameInputWindow::reject()
{
    m_controller.inputCancel();
}

void TrackNameInputWindow::replaceText(qsizetype start, qsizetype length, const QString &text,
                                       const QString &undoName)
{
    QTextCursor cursor(m_names->document());
    const auto first = static_cast<int>(start);
    {
        const QScopedValueRollback replacing(m_replacing, true);
        cursor.setPosition(first);
        cursor.setPosition(first + static_cast<int>(length), QTextCursor::KeepAnchor);
        cursor.beginEditBlock();
        cursor.insertText(text);
        cursor.endEditBlock();
        m_namedStep = undoName.isEmpty() ? -1 : m_names->document()->availableUndoSteps();
        m_undoName = undoName;
    }
    // What a named change made stays selected, for the next one.
    cursor.setPosition(undoName.isEmpty() ? 0 : first);
    cursor.setPosition(undoName.isEmpty() ? 0 : first + static_cast<int>(text.size()),
                       QTextCursor::KeepAnchor);
    m_names->setTextCursor(cursor);
    takeText();
}

void TrackNameInputWindow::noteChange()
{
    // Something new stands where the named change did before it was undone.
    if (!m_replacing && m_names->document()->availableUndoSteps() <= m_namedStep) {
        m_namedStep = -1;
    }
}

void TrackNameInputWindow::takeText()
{
    if (m_replacing) {
        return;
    }
    // The document's own text: the plain one has blanks for hard blanks.
    QString text = m_names->document()->toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    m_controller.textTyped(text);
    const auto count = text.split(u'\n', Qt::SkipEmptyParts).size();
    m_count->setText(count == 1 ? tr("1 name") : tr("%1 names").arg(count));
    const QTextDocument *document = m_names->document();
    m_undo->setEnabled(document->isUndoAvailable());
    m_undo->setText(document->availableUndoSteps() == m_namedStep ? tr("&Undo %1").arg(m_undoName)
                                                                  : tr("&Undo"));
}

void TrackNameInputWindow::takeSelection()
{
    const QTextCursor cursor = m_names->textCursor();
    m_controller.setSelection(cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart());
    m_trim->setEnabled(cursor.hasSelection());
}

} // namespace kruv
