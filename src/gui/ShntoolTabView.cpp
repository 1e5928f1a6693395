// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/ShntoolTabView.h"

#include "gui/Bindings.h"
#include "gui/ChoiceGrid.h"
#include "gui/Follow.h"
#include "gui/OptionColumn.h"
#include "gui/QuietLabel.h"
#include "tabs/SHNtoolTab.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QStackedWidget>

#include <algorithm>

namespace kruv {

namespace {

/// What a command is called and does, in the order of the tab's choice.
struct CommandText
{
    const char *button;
    const char *note;
};

constexpr CommandText commandTexts[] = {
    {QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "Show &lengths"),
     QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "The lengths of the files")},
    {QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "Show &info"),
     QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "All that is to be known of each file")},
    {QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "Com&pare"),
     QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "Whether two files hold the same audio")},
    {QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "&Trim"),
     QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "Copies without the silence at both ends")},
    {QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "&Split"),
     QT_TRANSLATE_NOOP("kruv::ShntoolTabView",
                       "The first file, cut at the points of a cue sheet or text file")},
    {QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "&Join"),
     QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "One file of all, in the order of the list")},
    {QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "&Write cue sheet"),
     QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "A cue sheet for the files as though they were joined")},
    {QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "&Pad"),
     QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "Copies filled up to whole CD sectors")},
    {QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "&Strip"),
     QT_TRANSLATE_NOOP("kruv::ShntoolTabView", "Copies without extra chunks and odd headers")},
};

enum Page { LengthPage, OutputPage, EmptyPage };

} // namespace

ShntoolTabView::ShntoolTabView(SHNtoolTab &tab, const QStringList &kinds, QWidget *parent)
    : TabView(tab, kinds, parent)
{
    QVBoxLayout *command = options().addGroup(tr("Command"));
    command->addWidget(new ChoiceGrid(tab.shntoolCommandMatrix(), {QStringLiteral("mode"), tr("Command")},
                                      command->parentWidget()));
    auto *note = new QuietLabel({}, command->parentWidget());
    note->setWordWrap(true);
    note->setMinimumHeight(2 * note->fontMetrics().lineSpacing());
    note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    command->addWidget(note);

    QStackedWidget *pages = options().addPages();
    addLengthOptions(tab, pages);
    addOutputOptions(tab, pages);
    options().addPage(pages, {});

    const auto show = [this, &tab, note, pages] {
        const CommandText &text = commandTexts[std::max(0, tab.shntoolCommandMatrix().selectedIndex())];
        setCommand(tr(text.button));
        note->setText(tr(text.note));
        pages->setCurrentIndex(!tab.shnLenMatrix().isHidden()         ? LengthPage
                               : !tab.outputFormatMatrix().isHidden() ? OutputPage
                                                                      : EmptyPage);
    };
    connect(&tab.shntoolCommandMatrix(), &Control::changed, this, show);
    show();
}

void ShntoolTabView::addLengthOptions(SHNtoolTab &tab, QStackedWidget *pages)
{
    QVBoxLayout *lengths = options().addPage(pages, tr("Lengths"));
    lengths->addWidget(new ChoiceGrid(tab.shnLenMatrix(), {QStringLiteral("lengths"), tr("Lengths")},
                                      lengths->parentWidget()));
    OptionColumn::addDiscNote(lengths);
    auto *names = new QPushButton(tr("Track na&mes…"), lengths->parentWidget());
    names->setObjectName(QStringLiteral("namesButton"));
    names->setToolTip(tr("Without names, the tracks go by their file names"));
    names->setAutoDefault(false);
    auto *entered = new QuietLabel({}, lengths->parentWidget());
    auto *row = new QHBoxLayout;
    row->addWidget(names);
    row->addWidget(entered, 1);
    lengths->addLayout(row);
    connect(names, &QPushButton::clicked, &tab, &SHNtoolTab::showNamesWindow);
    follow(tab.namesButton(), names, [] {});
    Bindings::bind(tab.namesText(), entered);
}

void ShntoolTabView::addOutputOptions(SHNtoolTab &tab, QStackedWidget *pages)
{
    QVBoxLayout *output = options().addPage(pages, tab.outputFormatText().text());
    output->addWidget(new ChoiceGrid(
        tab.outputFormatMatrix(), {QStringLiteral("format"), tr("Output format")}, output->parentWidget()));
    OptionColumn::addToggle(output, tab.sourceEncodeButton(),
                            {.text = tr("&Next to the first file"),
                             .objectName = QStringLiteral("sourceEncodeButton"),
                             .toolTip = tr("Otherwise one folder is asked for")});
    OptionColumn::addToggle(output, tab.deleteOriginalsButton(),
                            {.text = tr("Delete &original files"),
                             .objectName = QStringLiteral("deleteOriginalsButton"),
                             .toolTip = tr("All once the outputs are written and the job succeeded")});
}

} // namespace kruv
