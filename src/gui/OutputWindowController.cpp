// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/OutputWindowController.h"

#include "base/TextFile.h"
#include "gui/PromptStyle.h"
#include "gui/Spacing.h"

#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>

namespace kruv {

namespace {

/// A fixed-width face, so that what the tools print keeps its columns.
QFont outputFont()
{
    constexpr int points = 10;
    QFont font(QStringLiteral("Courier"), points);
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    return font;
}

} // namespace

OutputWindowController::OutputWindowController()
    : QWidget(nullptr, Qt::Window)
    , m_textField(new QPlainTextEdit(this))
    , m_findField(new QLineEdit(this))
    , m_font(outputFont())
{
    setObjectName(QStringLiteral("outputWindow"));
    m_textField->setObjectName(QStringLiteral("outputText"));
    m_textField->setAccessibleName(tr("Output"));
    m_textField->setReadOnly(true);
    m_textField->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_textField->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_textField->setFrameShape(QFrame::NoFrame);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_textField, 1);
    layout->addLayout(makeBar());
    resize(680, 460);
}

QLayout *OutputWindowController::makeBar()
{
    m_findField->setObjectName(QStringLiteral("find"));
    m_findField->setPlaceholderText(tr("Find (Ctrl+F)"));
    m_findField->setAccessibleName(tr("Find"));
    m_findField->setClearButtonEnabled(true);
    m_findField->setMaximumWidth(260);
    connect(m_findField, &QLineEdit::returnPressed, this, [this] { find(false); });
    connect(m_findField, &QLineEdit::textEdited, this, [this] {
        QTextCursor start = m_textField->textCursor();
        start.setPosition(start.selectionStart());
        m_textField->setTextCursor(start);
        find(false);
    });
    const auto onKeys = [this](QKeySequence::StandardKey keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    onKeys(QKeySequence::Find, [this] {
        m_findField->setFocus();
        m_findField->selectAll();
    });
    onKeys(QKeySequence::FindNext, [this] { find(false); });
    onKeys(QKeySequence::FindPrevious, [this] { find(true); });
    onKeys(QKeySequence::Save, [this] { saveAs(); });

    auto *copy = new QPushButton(tr("&Copy All"), this);
    copy->setObjectName(QStringLiteral("copyAll"));
    connect(copy, &QPushButton::clicked, this, &OutputWindowController::copyAll);
    auto *save = new QPushButton(tr("&Save As…"), this);
    save->setObjectName(QStringLiteral("saveAs"));
    connect(save, &QPushButton::clicked, this, &OutputWindowController::saveAs);

    auto *bar = new QHBoxLayout;
    bar->setContentsMargins(outerMargin, outerMargin / 2, outerMargin, outerMargin / 2);
    bar->addWidget(m_findField, 1);
    bar->addStretch();
    bar->addWidget(copy);
    bar->addWidget(save);
    return bar;
}

void OutputWindowController::setTextValue(const QString &text, const QString &title)
{
    m_textField->setFont(m_font);
    m_textField->setPlainText(text);
    setWindowTitle(title);
}

void OutputWindowController::addText(const QString &text, const QString &title)
{
    m_textField->appendPlainText(QStringLiteral("%1:\n%2\n").arg(title, text.trimmed()));
}

void OutputWindowController::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void OutputWindowController::find(bool backward)
{
    const QString wanted = m_findField->text();
    if (wanted.isEmpty()) {
        showFound(true);
        return;
    }
    const QTextDocument::FindFlags flags =
        backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    bool found = m_textField->find(wanted, flags);
    if (!found) {
        const QTextCursor before = m_textField->textCursor();
        m_textField->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
        found = m_textField->find(wanted, flags);
        if (!found) {
            m_textField->setTextCursor(before);
        }
    }
    showFound(found);
}

void OutputWindowController::showFound(bool found)
{
    QPalette palette = QGuiApplication::palette();
    if (!found) {
        palette.setColor(QPalette::Text, PromptStyle::warningColor(palette));
    }
    m_findField->setPalette(palette);
}

void OutputWindowController::copyAll()
{
    QGuiApplication::clipboard()->setText(m_textField->toPlainText());
}

void OutputWindowController::saveAs()
{
    const QString proposed = QString(windowTitle()).replace(u'/', u'-') + QStringLiteral(".txt");
    const QString path = QFileDialog::getSaveFileName(this, tr("Save output"), proposed);
    if (path.isEmpty()) {
        return;
    }
    const QString problem = TextFile::write(path, m_textField->toPlainText());
    if (!problem.isEmpty()) {
        PromptStyle::message(this, tr("The output could not be saved."),
                             QStringLiteral("%1\n%2").arg(path, problem))
            ->open();
    }
}

} // namespace kruv
