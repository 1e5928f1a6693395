// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/EncodeTabView.h"

#include "gui/ChoiceGrid.h"
#include "gui/FormatPages.h"
#include "gui/OptionColumn.h"
#include "tabs/EncodeTab.h"

#include <QVBoxLayout>

namespace kruv {

EncodeTabView::EncodeTabView(EncodeTab &tab, const QStringList &kinds, QWidget *parent)
    : ConversionTabView(tab, kinds, parent)
{
    QVBoxLayout *format = options().addGroup(tr("Format"));
    format->addWidget(new ChoiceGrid(tab.outputFormatMatrix(), {QStringLiteral("format"), tr("Format")},
                                     format->parentWidget()));
    const FormatPages pages(options(), tab.outputFormatMatrix(), {tab.formats(), tab.formatControls()});
    options().addOutputGroup({.beside = tab.sourceEncodeButton(),
                              .besideName = QStringLiteral("sourceEncodeButton"),
                              .keepFolders = tab.keepFoldersButton(),
                              .deletes = tab.deleteOriginalsButton()});
    setCommands(tr("&Encode"), tr("&Encode %1"));
}

} // namespace kruv
