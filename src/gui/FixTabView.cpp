// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/FixTabView.h"

#include "gui/ChoiceGrid.h"
#include "gui/Follow.h"
#include "gui/OptionColumn.h"
#include "gui/QuietLabel.h"
#include "tabs/FixTab.h"

#include <QVBoxLayout>

namespace kruv {

FixTabView::FixTabView(FixTab &tab, const QStringList &kinds, QWidget *parent)
    : TabView(tab, kinds, parent)
{
    QVBoxLayout *format = options().addGroup(tr("Format"));
    format->addWidget(new ChoiceGrid(tab.outputFormatMatrix(), {QStringLiteral("format"), tr("Format")},
                                     format->parentWidget()));
    OptionColumn::addLevel(format, tab.flacLevelSlider(), tr("FLAC &level"),
                           QStringLiteral("flacLevelSlider"));

    QVBoxLayout *lists = options().addGroup(tab.md5Label());
    lists->addWidget(new ChoiceGrid(tab.shnMd5Option(), {QStringLiteral("lists"), tr("MD5 files")},
                                    lists->parentWidget()));
    follow(tab.shnMd5Option(), OptionColumn::addDiscNote(lists), [] {});
    OptionColumn::addToggle(lists, tab.flacFingerprintButton(),
                            {.text = tr("Fingerprint f&ile"),
                             .objectName = QStringLiteral("flacFingerprintButton"),
                             .toolTip = tr("Write a list of FLAC fingerprints beside the outputs")});

    QVBoxLayout *output = options().addGroup(tr("Output"));
    OptionColumn::addToggle(output, tab.deleteOriginalsButton(),
                            {.text = tr("Delete &original files"),
                             .objectName = QStringLiteral("deleteOriginalsButton"),
                             .toolTip = tr("Once the outputs of the whole set are written")});
    setCommand(tr("&Fix"));
}

} // namespace kruv
