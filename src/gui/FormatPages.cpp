// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/FormatPages.h"

#include "formats/FormatOption.h"
#include "gui/Bindings.h"
#include "gui/ChoiceGrid.h"
#include "gui/Follow.h"
#include "gui/LevelSlider.h"
#include "gui/OptionColumn.h"
#include "gui/QuietLabel.h"
#include "tabs/FormatControls.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace kruv {

namespace {

constexpr int contentsLength = 5; // characters that a combo box has room for, so that all are of one width
constexpr int mostMarks = 20;     // of a slider; a number of more steps is typed
constexpr int mostInGrid = 4;     // choices; more are a list to open

QString translated(const char *text)
{
    return QCoreApplication::translate("FormatOption", text);
}

QString nameOf(const FormatOption &option)
{
    return QString::fromLatin1(option.controlName ? option.controlName : option.id);
}

} // namespace

FormatPages::FormatPages(OptionColumn &column, ChoiceControl &chosen, const Contents &contents)
    : m_contents(contents)
    , m_pages(column.addPages())
{
    m_pages->setObjectName(QStringLiteral("formatPages"));
    for (const Format *format : m_contents.formats) {
        addPage(column, *format);
    }
    reserveHeight();
    const auto showPage = [pages = m_pages, &chosen] {
        pages->setCurrentIndex(std::max(0, chosen.selectedIndex()));
    };
    QObject::connect(&chosen, &Control::changed, m_pages, showPage);
    showPage();
}

void FormatPages::addPage(OptionColumn &column, const Format &format)
{
    QVBoxLayout *group = column.addPage(m_pages, format.label.toString());
    for (const FormatOption *option : format.options) {
        addOption(group, format, *option);
    }
    if (format.options.empty()) {
        group->addWidget(new QuietLabel(tr("%1 has no options").arg(format.label), group->parentWidget()));
    }
}

void FormatPages::reserveHeight()
{
    int height = 0;
    for (int index = 0; index < m_pages->count(); ++index) {
        QWidget *page = m_pages->widget(index);
        QWidgetList hidden = page->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        hidden.removeIf([](const QWidget *each) { return !each->isHidden(); });
        for (QWidget *each : hidden) {
            each->show();
        }
        height = std::max(height, page->sizeHint().height());
        for (QWidget *each : hidden) {
            each->hide();
        }
    }
    m_pages->setMinimumHeight(height);
}

void FormatPages::addOption(QVBoxLayout *group, const Format &format, const FormatOption &option) const
{
    const FormatControls &controls = m_contents.controls;
    switch (option.kind) {
    case FormatOption::Kind::Toggle:
        OptionColumn::addToggle(group, controls.toggle(option),
                                {.text = translated(option.label),
                                 .objectName = nameOf(option),
                                 .toolTip = translated(option.help)});
        break;
    case FormatOption::Kind::Number:
        addNumber(group, option);
        break;
    case FormatOption::Kind::Rate:
        addRate(group, option);
        break;
    case FormatOption::Kind::Choice:
        if (option.choices.size() <= mostInGrid) {
            const ChoiceGrid::Name name{nameOf(option), tr("%1 mode").arg(format.label)};
            group->addWidget(new ChoiceGrid(controls.choice(option), name, group->parentWidget()));
            break;
        }
        auto *box = new QComboBox(group->parentWidget());
        box->setMinimumContentsLength(contentsLength);
        Bindings::bind(controls.choice(option), box);
        addField(group, option, box);
    }
}

void FormatPages::addNumber(QVBoxLayout *group, const FormatOption &option) const
{
    NumberControl &control = m_contents.controls.number(option);
    if ((option.maximum - option.minimum) / option.step > mostMarks) {
        auto *stepper = new QSpinBox(group->parentWidget());
        Bindings::bind(control, stepper);
        addField(group, option, stepper);
        return;
    }
    LabelControl *caption = captionOf(option);
    if (!caption) {
        OptionColumn::addLevel(group, control, translated(option.label), nameOf(option));
        return;
    }
    auto *slider = new LevelSlider(
        control, nameOf(option), [](int level) { return QString::number(level); }, group->parentWidget());
    auto *label = new QLabel(group->parentWidget());
    Bindings::bind(*caption, label);
    label->setBuddy(slider->slider());
    slider->slider()->setAccessibleName(label->text());
    group->addWidget(label);
    group->addWidget(slider);
    addEnds(group);
}

void FormatPages::addEnds(QVBoxLayout *group) const
{
    auto *ends = new QHBoxLayout;
    for (LabelControl *end : {m_contents.smallEnd, m_contents.largeEnd}) {
        auto *label = new QuietLabel({}, group->parentWidget());
        Bindings::bind(*end, label);
        ends->addWidget(label);
    }
    ends->insertStretch(1);
    group->addLayout(ends);
}

void FormatPages::addRate(QVBoxLayout *group, const FormatOption &option) const
{
    constexpr int highestTyped = 9999; // kbit/s
    auto *box = new QComboBox(group->parentWidget());
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setMinimumContentsLength(contentsLength);
    box->setValidator(new QIntValidator(1, highestTyped, box));
    Bindings::bind(m_contents.controls.rate(option), box);
    addField(group, option, box);
}

void FormatPages::addField(QVBoxLayout *group, const FormatOption &option, QWidget *field) const
{
    field->setObjectName(nameOf(option));
    auto *row = new QHBoxLayout;
    auto *label = new QLabel(translated(option.label), group->parentWidget());
    if (LabelControl *caption = captionOf(option)) {
        Bindings::bind(*caption, label);
    } else {
        follow(m_contents.controls.control(option), label, [] {});
    }
    label->setBuddy(field);
    field->setAccessibleName(label->text());
    row->addWidget(label, 1);
    row->addWidget(field);
    group->addLayout(row);
}

LabelControl *FormatPages::captionOf(const FormatOption &option) const
{
    const auto found = std::ranges::find(m_contents.captions, &option, &Caption::option);
    return found == m_contents.captions.end() ? nullptr : found->label;
}

} // namespace kruv
