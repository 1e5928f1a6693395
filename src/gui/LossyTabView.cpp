// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/LossyTabView.h"

#include "formats/Records.h"
#include "formats/aac/AacOptions.h"
#include "formats/mp3/Mp3Tool.h"
#include "formats/opus/OpusTool.h"
#include "gui/Bindings.h"
#include "gui/ChoiceGrid.h"
#include "gui/FormatPages.h"
#include "gui/OptionColumn.h"
#include "gui/QuietLabel.h"
#include "tabs/LossyTab.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace kruv {

namespace {

void addPages(OptionColumn &column, LossyTab &tab)
{
    const FormatPages::Contents contents{.formats = tab.formats(),
                                         .controls = tab.formatControls(),
                                         .captions = {{&Mp3Tool::quality, &tab.zeroNineTextField()},
                                                      {&AacOptions::quality, &tab.zeroTo127()},
                                                      {&OpusTool::frameSize, &tab.frameSizeTextField()}},
                                         .smallEnd = &tab.largerTextField(),
                                         .largeEnd = &tab.smallerTextField()};
    const FormatPages pages(column, tab.outputFormatMatrix(), contents);
    for (const QComboBox *box : pages.pages()->findChildren<QComboBox *>()) {
        if (box->isEditable()) {
            // What was typed is put right when it is complete, not at each key.
            QObject::connect(box->lineEdit(), &QLineEdit::editingFinished, &tab,
                             &LossyTab::displayRelevantOptions);
        }
    }
    for (QSpinBox *stepper : pages.pages()->findChildren<QSpinBox *>()) {
        QObject::connect(stepper, &QSpinBox::textChanged, &tab.stepperTextField(), &TextControl::setText);
    }
}

} // namespace

LossyTabView::LossyTabView(LossyTab &tab, const QStringList &kinds, QWidget *parent)
    : ConversionTabView(tab, QStringList(kinds) << appleLosslessFormat.types.front().toString(), parent)
{
    QVBoxLayout *format = options().addGroup(tr("Format"));
    format->addWidget(new ChoiceGrid(tab.outputFormatMatrix(), {QStringLiteral("format"), tr("Format")},
                                     format->parentWidget()));
    addPages(options(), tab);
    QVBoxLayout *output = options().addOutputGroup({.beside = tab.sourceEncodeButton(),
                                                    .besideName = QStringLiteral("sourceEncodeButton"),
                                                    .keepFolders = tab.keepFoldersButton(),
                                                    .deletes = tab.deleteOriginalsButton()});
    auto *missing = new QuietLabel({}, this);
    missing->setObjectName(QStringLiteral("missingToolText"));
    missing->setWordWrap(true);
    missing->setTextInteractionFlags(Qt::TextSelectableByMouse);
    output->addWidget(missing);
    Bindings::bind(tab.missingToolText(), missing);
    setCommands(tr("&Encode"), tr("&Encode %1"));
}

} // namespace kruv
