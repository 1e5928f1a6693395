// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/LossyTabView.h"

#include "gui/Bindings.h"
#include "gui/ChoiceGrid.h"
#include "gui/LevelSlider.h"
#include "gui/OptionColumn.h"
#include "gui/QuietLabel.h"
#include "tabs/LossyTab.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>

#include <algorithm>

namespace kruv {

namespace {

constexpr int contentsLength = 5; // characters that a combo box has room for, so that all are of one width

/// A caption with the field that it names beside it.
void addField(QVBoxLayout *group, LabelControl &caption, QWidget *field)
{
    auto *row = new QHBoxLayout;
    auto *label = new QLabel(group->parentWidget());
    Bindings::bind(caption, label);
    label->setBuddy(field);
    field->setAccessibleName(caption.text());
    row->addWidget(label, 1);
    row->addWidget(field);
    group->addLayout(row);
}

void addModes(QVBoxLayout *group, ChoiceControl &control, const QString &name)
{
    group->addWidget(new ChoiceGrid(control, name, group->parentWidget()));
}

void addBitRate(QVBoxLayout *group, LossyTab &tab)
{
    constexpr int highestTyped = 9999; // kbit/s
    auto *box = new QComboBox(group->parentWidget());
    box->setObjectName(QStringLiteral("comboBox"));
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setMinimumContentsLength(contentsLength);
    box->setValidator(new QIntValidator(1, highestTyped, box));
    Bindings::bind(tab.comboBox(), box);
    // What was typed is put right when it is complete, not at each key.
    QObject::connect(box->lineEdit(), &QLineEdit::editingFinished, &tab, &LossyTab::displayRelevantOptions);
    addField(group, tab.bitrateTextField(), box);
}

void addFrameSize(QVBoxLayout *group, LossyTab &tab)
{
    auto *box = new QComboBox(group->parentWidget());
    box->setObjectName(QStringLiteral("opusFrameSizeCombo"));
    box->setMinimumContentsLength(contentsLength);
    Bindings::bind(tab.opusFrameSizeCombo(), box);
    addField(group, tab.frameSizeTextField(), box);
}

void addMp3Quality(QVBoxLayout *group, LossyTab &tab)
{
    QWidget *parent = group->parentWidget();
    auto *slider = new LevelSlider(
        tab.slider(), QStringLiteral("slider"), [](int level) { return QString::number(level); }, parent);
    auto *caption = new QLabel(parent);
    Bindings::bind(tab.zeroNineTextField(), caption);
    caption->setBuddy(slider->slider());
    slider->slider()->setAccessibleName(caption->text());
    auto *ends = new QHBoxLayout;
    for (LabelControl *end : {&tab.largerTextField(), &tab.smallerTextField()}) {
        auto *label = new QuietLabel({}, parent);
        Bindings::bind(*end, label);
        ends->addWidget(label);
    }
    ends->insertStretch(1);
    group->addWidget(caption);
    group->addWidget(slider);
    group->addLayout(ends);
}

void addAacQuality(QVBoxLayout *group, LossyTab &tab)
{
    auto *stepper = new QSpinBox(group->parentWidget());
    stepper->setObjectName(QStringLiteral("stepper"));
    Bindings::bind(tab.stepper(), stepper);
    QObject::connect(stepper, &QSpinBox::textChanged, &tab.stepperTextField(), &TextControl::setText);
    addField(group, tab.zeroTo127(), stepper);
}

} // namespace

LossyTabView::LossyTabView(LossyTab &tab, const QStringList &kinds, QWidget *parent)
    : TabView(tab, QStringList(kinds) << QStringLiteral("M4A"), parent) // of Apple Lossless
{
    QVBoxLayout *format = options().addGroup(tr("Format"));
    format->addWidget(
        new ChoiceGrid(tab.outputFormatMatrix(), QStringLiteral("Format"), format->parentWidget()));
    addFormatPages(tab);
    QVBoxLayout *output = options().addOutputGroup(
        tab.sourceEncodeButton(), QStringLiteral("sourceEncodeButton"), tab.deleteOriginalsButton());
    auto *missing = new QuietLabel({}, this);
    missing->setObjectName(QStringLiteral("missingToolText"));
    missing->setWordWrap(true);
    missing->setTextInteractionFlags(Qt::TextSelectableByMouse);
    output->addWidget(missing);
    Bindings::bind(tab.missingToolText(), missing);
    setCommand(tr("&Encode"));
}

void LossyTabView::addFormatPages(LossyTab &tab)
{
    QStackedWidget *pages = options().addPages();
    pages->setObjectName(QStringLiteral("formatPages"));
    // In the order of the format choice.
    QVBoxLayout *mp3 = options().addPage(pages, tr("LAME MP3"));
    addModes(mp3, tab.mp3Matrix(), QStringLiteral("MP3 mode"));
    addBitRate(mp3, tab);
    addMp3Quality(mp3, tab);
    QVBoxLayout *aac = options().addPage(pages, tr("AAC"));
    addModes(aac, tab.aacMatrix(), QStringLiteral("AAC mode"));
    addBitRate(aac, tab);
    addAacQuality(aac, tab);
    addBitRate(options().addPage(pages, tr("HE-AAC")), tab);
    QVBoxLayout *opus = options().addPage(pages, tr("Opus"));
    addModes(opus, tab.opusMatrix(), QStringLiteral("Opus mode"));
    addBitRate(opus, tab);
    addFrameSize(opus, tab);

    const auto showPage = [pages, &tab] {
        pages->setCurrentIndex(std::max(0, tab.outputFormatMatrix().selectedIndex()));
    };
    connect(&tab.outputFormatMatrix(), &Control::changed, pages, showPage);
    showPage();
}

} // namespace kruv
