// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/ConversionTabView.h"

#include "gui/FileListView.h"
#include "gui/PlanSheet.h"
#include "tabs/ConversionTab.h"

#include <QApplication>
#include <QLocale>

#include <algorithm>

namespace kruv {

ConversionTabView::ConversionTabView(ConversionTab &tab, const QStringList &kinds, QWidget *parent)
    : TabView(tab, kinds, parent)
    , m_conversionTab(tab)
    , m_sheet(new PlanSheet(tab.review(), this))
{
    setSheet(m_sheet, m_sheet->lastControl());
    tab.setReviewsCommands(true);
    connect(&tab.review(), &Review::stateChanged, this, &ConversionTabView::showState);
    connect(&tab.review(), &Review::planChanged, this, &ConversionTabView::showCommand);
    connect(m_sheet, &PlanSheet::folderWanted, &tab, &ConversionTab::changeFolderOfReview);
}

void ConversionTabView::setCommands(const QString &command, const QString &counted)
{
    m_command = command;
    m_countedCommand = counted;
    setCommand(command);
}

void ConversionTabView::showPlan()
{
    m_conversionTab.showPlan();
}

bool ConversionTabView::canShowPlan() const
{
    return !m_conversionTab.fileList().isEmpty() && !m_conversionTab.review().isUnderWay();
}

QString ConversionTabView::reasonToWait() const
{
    const Review &review = m_conversionTab.review();
    if (!review.isUnderWay() || review.mayStart()) {
        return {};
    }
    return !review.isShown() || review.unseen() > 0 ? tr("The files are still being looked at")
                                                    : tr("There is nothing to do");
}

void ConversionTabView::commandPressed()
{
    if (!m_conversionTab.review().isShown()) {
        TabView::commandPressed();
    } else if (m_sinceShown.elapsed() > QApplication::doubleClickInterval()) {
        m_conversionTab.startReviewed(); // whoever clicked twice has seen nothing yet
    }
}

void ConversionTabView::backPressed()
{
    m_conversionTab.review().end();
}

void ConversionTabView::showState()
{
    const bool isShown = m_conversionTab.review().isShown();
    if (isShown != isSheetShown()) {
        const bool hadFocus = isAncestorOf(QApplication::focusWidget());
        showSheet(isShown);
        if (isShown) {
            m_sinceShown.start();
            m_sheet->open();
        } else if (hadFocus) {
            list().setFocus();
        }
    }
    showCommand();
}

void ConversionTabView::showCommand()
{
    const Review &review = m_conversionTab.review();
    if (!review.isShown()) {
        setCommand(m_command);
        return;
    }
    const auto made = std::ranges::count_if(review.plan().entries(), [](const PlanEntry &entry) {
        return entry.isMade() && !entry.sources.isEmpty();
    });
    setCommand(m_countedCommand.arg(QLocale().toString(made)));
}

} // namespace kruv
