// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/DecodeTabView.h"

#include "gui/ChoiceGrid.h"
#include "gui/OptionColumn.h"
#include "tabs/DecodeTab.h"

#include <QVBoxLayout>

namespace kruv {

DecodeTabView::DecodeTabView(DecodeTab &tab, const QStringList &kinds, QWidget *parent)
    : ConversionTabView(tab, kinds, parent)
{
    QVBoxLayout *format = options().addGroup(tr("Format"));
    format->addWidget(new ChoiceGrid(tab.outputFormatMatrix(), {QStringLiteral("format"), tr("Format")},
                                     format->parentWidget()));

    options().addOutputGroup({.beside = tab.sourceDecodeButton(),
                              .besideName = QStringLiteral("sourceDecodeButton"),
                              .keepFolders = tab.keepFoldersButton(),
                              .deletes = tab.deleteOriginalsButton()});

    QVBoxLayout *flac = options().addGroup(tab.flacOptionsLabel());
    OptionColumn::addToggle(flac, tab.decodeFlacThroughErrors(),
                            {.text = tr("Decode through e&rrors"),
                             .objectName = QStringLiteral("decodeFlacThroughErrors"),
                             .toolTip = tr("Go on after damaged places and put silence there")});
    OptionColumn::addToggle(
        flac, tab.flacKeepForeignMetadataButton(),
        {.text = tr("&Keep foreign metadata"),
         .objectName = QStringLiteral("flacKeepForeignMetadataButton"),
         .toolTip = tr("Write back the chunks of the WAV or AIFF file that were kept in the FLAC file")});
    setCommands(tr("&Decode"), tr("&Decode %1"));
}

} // namespace kruv
