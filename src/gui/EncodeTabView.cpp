// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/EncodeTabView.h"

#include "gui/ChoiceGrid.h"
#include "gui/LevelSlider.h"
#include "gui/OptionColumn.h"
#include "gui/QuietLabel.h"
#include "lossless/EncodeTab.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QStackedWidget>

#include <algorithm>

namespace kruv {

namespace {

void addLevel(QVBoxLayout *group, NumberControl &control, const QString &name,
              const LevelSlider::ValueText &valueText)
{
    auto *row = new QHBoxLayout;
    auto *label = new QLabel(QObject::tr("&Level"), group->parentWidget());
    auto *slider = new LevelSlider(control, name, valueText, group->parentWidget());
    label->setBuddy(slider->slider());
    row->addWidget(label);
    row->addWidget(slider, 1);
    group->addLayout(row);
}

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
    QVBoxLayout *output = options().addGroup(tr("Output"));
    OptionColumn::addToggle(output, tab.sourceEncodeButton(), tr("&Next to the source files"),
                            QStringLiteral("sourceEncodeButton"), tr("Otherwise one folder is asked for"));
    OptionColumn::addToggle(output, tab.deleteOriginalsButton(), tr("Delete &original files"),
                            QStringLiteral("deleteOriginalsButton"),
                            tr("Each once its output is written and its job succeeded"));
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
    addLevel(options().addPage(pages, tr("APE")), tab.apeSlider(), QStringLiteral("apeSlider"),
             [](int level) { return QString::number(level); });
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
    addLevel(flac, tab.flacSlider(), QStringLiteral("flacSlider"),
             [](int level) { return QString::number(level); });
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
