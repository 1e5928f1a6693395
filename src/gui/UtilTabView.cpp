// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/UtilTabView.h"

#include "gui/Bindings.h"
#include "gui/ChoiceGrid.h"
#include "gui/Follow.h"
#include "gui/OptionColumn.h"
#include "gui/QuietLabel.h"
#include "tabs/UtilTab.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace kruv {

namespace {

void addNote(QVBoxLayout *group, const QString &text)
{
    auto *note = new QuietLabel(text, group->parentWidget());
    note->setWordWrap(true);
    group->addWidget(note);
}

QLabel *figure(LabelControl &control, const QString &objectName, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(objectName);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Bindings::bind(control, label);
    return label;
}

} // namespace

UtilTabView::UtilTabView(UtilTab &tab, const QStringList &kinds, QWidget *parent)
    : TabView(tab, kinds.isEmpty() ? QStringList{tr("Any kind of file")} : kinds, parent)
    , m_tab(tab)
{
    QVBoxLayout *operation = options().addGroup(tr("Operation"));
    operation->addWidget(new ChoiceGrid(tab.commandMatrix(), {QStringLiteral("operation"), tr("Operation")},
                                        operation->parentWidget()));
    addPages();
    connect(&tab.commandMatrix(), &Control::changed, this, &UtilTabView::nameCommand);
    connect(&tab.replayGainMatrix(), &Control::changed, this, &UtilTabView::nameCommand);
    nameCommand();
}

void UtilTabView::addPages()
{
    QStackedWidget *pages = options().addPages();
    pages->setObjectName(QStringLiteral("operationPages"));
    // In the order of the operations.
    addDiscPage(pages);
    addNote(
        options().addPage(pages, tr("Names")),
        tr("The files get one prefix and their number in the list: Prefix01, Prefix02 … The prefix is asked "
           "for."));
    QVBoxLayout *gain = options().addPage(pages, tr("Replay gain"));
    gain->addWidget(new ChoiceGrid(m_tab.replayGainMatrix(),
                                   {QStringLiteral("replayGain"), tr("Replay gain")}, gain->parentWidget()));
    addNote(gain, tr("Album gain spans the FLAC files of a folder."));
    addNote(options().addPage(pages, tr("De-emphasis")),
            tr("For WAV and AIFF files of 44.1 or 48 kHz from discs with pre-emphasis. The originals stay."));
    addDvdPage(pages);
    addRatePage(pages);
    const auto showPage = [this, pages] {
        pages->setCurrentIndex(std::max(0, m_tab.commandMatrix().selectedIndex()));
    };
    connect(&m_tab.commandMatrix(), &Control::changed, pages, showPage);
    showPage();
}

void UtilTabView::addDiscPage(QStackedWidget *pages)
{
    QVBoxLayout *disc = options().addPage(pages, tr("Disc"));
    addNote(disc, tr("Drop the tracks of an audio disc, or list those of a drive:"));
    m_drives = new QComboBox(disc->parentWidget());
    m_drives->setObjectName(QStringLiteral("drives"));
    m_drives->setAccessibleName(tr("Drive"));
    disc->addWidget(m_drives);
    m_listTracks = new QPushButton(tr("&List tracks"), disc->parentWidget());
    m_listTracks->setObjectName(QStringLiteral("listTracks"));
    m_listTracks->setAutoDefault(false);
    disc->addWidget(m_listTracks, 0, Qt::AlignLeft);
    OptionColumn::addToggle(disc, m_tab.oneTrackButton(),
                            {.text = tr("All tracks into &one file"),
                             .objectName = QStringLiteral("oneTrackButton"),
                             .toolTip = {}});
    connect(m_listTracks, &QPushButton::clicked, this, [this] {
        m_listTracks->setEnabled(false);
        m_tab.addTracksOfDrive(m_drives->currentText().section(u' ', 0, 0));
    });
    connect(&m_tab, &UtilTab::tracksOfDriveListed, m_listTracks, [this] { m_listTracks->setEnabled(true); });
}

void UtilTabView::addDvdPage(QStackedWidget *pages)
{
    QVBoxLayout *dvd = options().addPage(pages, tr("Disc image"));
    auto *figures = new QFormLayout;
    figures->addRow(tr("Length"), figure(m_tab.dvdAudioDiscTime(), QStringLiteral("dvdAudioDiscTime"),
                                         dvd->parentWidget()));
    figures->addRow(tr("Size"), figure(m_tab.dvdAudioDiscSize(), QStringLiteral("dvdAudioDiscSize"),
                                       dvd->parentWidget()));
    dvd->addLayout(figures);
    addNote(dvd, tr("The files must share one format. A disc holds 4.7 GB."));
}

void UtilTabView::addRatePage(QStackedWidget *pages)
{
    QVBoxLayout *rate = options().addPage(pages, tr("Sample rate"));
    auto *box = new QComboBox(rate->parentWidget());
    box->setObjectName(QStringLiteral("sampleRateCombo"));
    box->setAccessibleName(tr("Sample rate"));
    box->addItems(UtilTab::sampleRates());
    follow(m_tab.sampleRateCombo(), box,
           [this, box] { box->setCurrentText(m_tab.sampleRateCombo().text()); });
    connect(box, &QComboBox::currentTextChanged, &m_tab.sampleRateCombo(), &TextControl::setText);
    rate->addWidget(box, 0, Qt::AlignLeft);
    addNote(rate, tr("For WAV and AIFF files. The originals stay."));
}

void UtilTabView::listDrives()
{
    const QString chosen = m_drives->currentText();
    m_drives->clear();
    m_drives->addItems(m_tab.drives());
    m_drives->setCurrentText(chosen);
    const bool any = m_drives->count() > 0;
    if (!any) {
        m_drives->addItem(tr("No optical drive"));
    }
    m_drives->setEnabled(any);
    m_listTracks->setEnabled(any);
}

void UtilTabView::showEvent(QShowEvent *event)
{
    TabView::showEvent(event);
    listDrives(); // they come and go with their plugs
}

void UtilTabView::nameCommand()
{
    switch (m_tab.commandMatrix().selectedIndex()) {
    case UtilTab::CdExtraction:
        return setCommand(tr("E&xtract"));
    case UtilTab::Rename:
        return setCommand(tr("&Rename"));
    case UtilTab::ReplayGain:
        return setCommand(m_tab.replayGainMatrix().selectedIndex() == 0 ? tr("Add &gain")
                                                                        : tr("Remove &gain"));
    case UtilTab::DeEmphasis:
        return setCommand(tr("A&pply"));
    case UtilTab::DvdAudio:
        return setCommand(tr("&Make image"));
    default:
        return setCommand(tr("Con&vert"));
    }
}

} // namespace kruv
