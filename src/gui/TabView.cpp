// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/TabView.h"

#include "gui/FileListSummary.h"
#include "gui/FileListView.h"
#include "gui/Glyphs.h"
#include "gui/OptionColumn.h"
#include "gui/Spacing.h"
#include "tabs/BaseTab.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace kruv {

namespace {

constexpr int leastCommandWidth = 120;

QPushButton *barButton(const QString &text, const QString &objectName, QWidget *parent)
{
    auto *button = new QPushButton(text, parent);
    button->setObjectName(objectName);
    button->setAutoDefault(false);
    return button;
}

} // namespace

TabView::TabView(BaseTab &tab, const QStringList &kinds, QWidget *parent)
    : DropPage(parent)
    , m_tab(tab)
    , m_pages(new QStackedWidget(this))
    , m_list(new FileListView(tab, kinds, this))
    , m_options(new OptionColumn(this))
    , m_back(barButton(tr("&Back"), QStringLiteral("back"), this))
    , m_add(barButton(tr("&Add…"), QStringLiteral("add"), this))
    , m_clear(barButton(tr("&Clear"), QStringLiteral("clear"), this))
    , m_command(barButton({}, QStringLiteral("command"), this))
{
    setObjectName(tab.label());
    auto *middle = new QHBoxLayout;
    middle->setSpacing(outerMargin);
    m_pages->addWidget(m_list);
    middle->addWidget(m_pages, 1);
    middle->addWidget(m_options);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(outerMargin, outerMargin, outerMargin, outerMargin);
    layout->setSpacing(outerMargin);
    layout->addLayout(middle, 1);
    layout->addLayout(makeBar());

    connect(m_add, &QPushButton::clicked, &tab, &BaseTab::addButtonClick);
    connect(m_clear, &QPushButton::clicked, &tab, &BaseTab::clearButtonClick);
    connect(m_command, &QPushButton::clicked, this, &TabView::commandPressed);
    connect(m_back, &QPushButton::clicked, this, [this] { backPressed(); });
    connect(&tab.fileList(), &QAbstractItemModel::modelReset, this, &TabView::showWhetherCommandRuns);
    connect(&tab, &BaseTab::takingInChanged, this, &TabView::showWhetherCommandRuns);
}

QLayout *TabView::makeBar()
{
    m_add->setIcon(glyphIcon(Glyph::Add));
    m_add->setToolTip(tr("Add files to the list (Ctrl+O)"));
    m_clear->setToolTip(tr("Empty the list; the files stay where they are"));
    m_command->setMinimumWidth(leastCommandWidth);
    m_command->setDefault(true);
    m_back->setToolTip(tr("Back to the list; nothing is done (Esc)"));
    m_back->hide();
    auto *bar = new QHBoxLayout;
    bar->addWidget(m_back);
    bar->addWidget(m_add);
    bar->addWidget(m_clear);
    bar->addSpacing(outerMargin / 2);
    bar->addWidget(new FileListSummary(m_tab, this), 1);
    bar->addWidget(m_command);
    return bar;
}

void TabView::setCommand(const QString &text)
{
    m_command->setText(text);
    showWhetherCommandRuns();
}

void TabView::runCommand()
{
    m_command->click();
}

void TabView::commandPressed()
{
    m_tab.executeCommand();
}

void TabView::setSheet(QWidget *sheet, QWidget *last)
{
    m_pages->addWidget(sheet);
    setTabOrder(last, m_back);
    setTabOrder(m_back, m_command);
    auto *escape = new QShortcut(Qt::Key_Escape, sheet); // while the sheet is visible
    connect(escape, &QShortcut::activated, this, [this] { backPressed(); });
}

void TabView::showSheet(bool shown)
{
    m_pages->setCurrentIndex(shown ? 1 : 0);
    m_options->setHidden(shown);
    m_back->setVisible(shown);
    m_add->setHidden(shown);
    m_clear->setHidden(shown);
}

bool TabView::isSheetShown() const
{
    return m_pages->currentIndex() > 0;
}

void TabView::showWhetherCommandRuns()
{
    const bool empty = m_tab.fileList().isEmpty();
    const bool takingIn = m_tab.isTakingIn();
    m_clear->setEnabled(!empty || takingIn);
    const QString reason = takingIn ? tr("The folders are still being read") : reasonToWait();
    m_command->setEnabled(!empty && reason.isEmpty());
    if (!empty && !reason.isEmpty()) {
        m_command->setToolTip(reason);
    } else {
        m_command->setToolTip(empty ? tr("The list is empty: add files first") : tr("Ctrl+Return"));
    }
}

void TabView::filesDropped(const QStringList &paths)
{
    m_tab.addFiles(paths);
}

void TabView::showDrop(bool shown)
{
    m_list->setDropShown(shown);
}

} // namespace kruv
