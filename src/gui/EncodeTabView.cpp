// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/EncodeTabView.h"

#include "gui/ChoiceGrid.h"
#include "gui/OptionColumn.h"
#include "gui/QuietLabel.h"
#include "tabs/EncodeTab.h"

#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace kruv {

namespace {

void addNote(QVBoxLayout *group, const QString &text)
{
    group->addWidget(new QuietLabel(text, group->parentWidget()));
}

} // namespace

EncodeTabView::EncodeTabView(EncodeTab &tab, const QStringList &kinds, QWidget *parent)
    : TabView(tab, QStringList(kinds) << QStringLiteral("M4A"), parent) // of Apple Lossless
{
    QVBoxLayout *format = options().addGroup(tr("Format"));
    format->addWidget(
        new ChoiceGrid(tab.outputFormatMatrix(), QStringLiteral("Format"), format->parentWidget()));
    addFormatPages(tab);
    options().addOutputGroup(tab.sourceEncodeButton(), QStringLiteral("sourceEncodeButton"),
                             tab.deleteOriginalsButton());
    setCommand(tr("&Encode"));
}

void EncodeTabView::addFormatPages(EncodeTab &tab)
{
    QStackedWidget *pages = options().addPages();
    pages->setObjectName(QStringLiteral("formatPages"));
    // In the order of the format choice.
    OptionColumn::addToggle(options().addPage(pages, tr("SHN")), tab.generateMD5Button(), tr("&MD5 file"),
                            QStringLiteral("generateMD5Button"));
    QVBoxLayout *wavpack = options().addPage(pages, tr("WV"));
    wavpack->addWidget(
        new ChoiceGrid(tab.wavepackFormatMatrix(), QStringLiteral("WavPack mode"), wavpack->parentWidget()));
    addFlacPage(tab, pages);
    addNote(options().addPage(pages, tr("TTA")), tr("TTA has no options"));
    OptionColumn::addLevel(options().addPage(pages, tr("APE")), tab.apeSlider(), tr("&Level"),
                           QStringLiteral("apeSlider"));
    addNote(options().addPage(pages, tr("M4A")), tr("Apple Lossless has no options"));

    const auto showPage = [pages, &tab] {
        pages->setCurrentIndex(std::max(0, tab.outputFormatMatrix().selectedIndex()));
    };
    connect(&tab.outputFormatMatrix(), &Control::changed, pages, showPage);
    showPage();
}

void EncodeTabView::addFlacPage(EncodeTab &tab, QStackedWidget *pages)
{
    QVBoxLayout *flac = options().addPage(pages, tr("FLAC"));
    OptionColumn::addLevel(flac, tab.flacSlider(), tr("&Level"), QStringLiteral("flacSlider"));
    OptionColumn::addToggle(flac, tab.flacVerifyButton(), tr("Verif&y"), QStringLiteral("flacVerifyButton"),
                            tr("Decode what was encoded and compare it on the way"));
    OptionColumn::addToggle(flac, tab.flacLaxButton(), tr("La&x"), QStringLiteral("flacLaxButton"),
                            tr("Go outside the streamable subset; the level is then the tool's own"));
    OptionColumn::addToggle(flac, tab.flacKeepForeignMetadataButton(), tr("&Keep foreign metadata"),
                            QStringLiteral("flacKeepForeignMetadataButton"),
                            tr("Keep the chunks of WAV and AIFF files that are not audio"));
    OptionColumn::addToggle(flac, tab.generateFFPButton(), tr("Fingerprint f&ile"),
                            QStringLiteral("generateFFPButton"),
                            tr("Write a list of FLAC fingerprints beside the outputs"));
}

} // namespace kruv
