// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/Format.h"

#include <QCoreApplication>
#include <QList>

class QStackedWidget;
class QVBoxLayout;
class QWidget;

namespace kruv {

class ChoiceControl;
class FormatControls;
class LabelControl;
class OptionColumn;

/// The settings of the formats that a tab makes, a page a format, built from their declarations; the page of
/// the chosen format shows.
class FormatPages
{
    Q_DECLARE_TR_FUNCTIONS(kruv::FormatPages)
public:
    /// A label of the tab's that stands before a setting.
    struct Caption
    {
        const FormatOption *option;
        LabelControl *label;
    };
    struct Contents
    {
        QList<const Format *> formats;
        const FormatControls &controls;
        QList<Caption> captions = {};
        /// What stands below the ends of a slider.
        LabelControl *smallEnd = nullptr;
        LabelControl *largeEnd = nullptr;
    };

    /// `chosen` is the tab's choice of format; it and the controls outlive the pages.
    FormatPages(OptionColumn &column, ChoiceControl &chosen, const Contents &contents);

    QStackedWidget *pages() const { return m_pages; }

private:
    void addPage(OptionColumn &column, const Format &format);
    /// Room for all settings of any page, so that nothing below moves while they come and go.
    void reserveHeight();
    void addOption(QVBoxLayout *group, const Format &format, const FormatOption &option) const;
    void addNumber(QVBoxLayout *group, const FormatOption &option) const;
    void addRate(QVBoxLayout *group, const FormatOption &option) const;
    void addField(QVBoxLayout *group, const FormatOption &option, QWidget *field) const;
    void addEnds(QVBoxLayout *group) const;
    LabelControl *captionOf(const FormatOption &option) const;

    const Contents m_contents;
    QStackedWidget *m_pages;
};

} // namespace kruv
