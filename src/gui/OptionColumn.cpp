// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/OptionColumn.h"

#include "gui/Bindings.h"
#include "gui/Follow.h"
#include "gui/LevelSlider.h"
#include "gui/QuietLabel.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QStackedWidget>
#include <QStyle>
#include <QVBoxLayout>

namespace kruv {

namespace {
constexpr int columnWidth = 264; // device-independent pixels
constexpr int indent = 10;
constexpr int groupGap = 18;
constexpr int optionGap = 6;
} // namespace

OptionColumn::OptionColumn(QWidget *parent)
    : QScrollArea(parent)
    , m_column(new QWidget(this))
    , m_layout(new QVBoxLayout(m_column))
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setFixedWidth(columnWidth);
    setWidget(m_column);
    // The page behind shows through, whatever the style paints there.
    viewport()->setAutoFillBackground(false);
    m_column->setAutoFillBackground(false);
    m_layout->setContentsMargins(4, 2, 4, 2);
    m_layout->setSpacing(groupGap);
    m_layout->addStretch();
}

QSize OptionColumn::sizeHint() const
{
    return {minimumWidth(), m_column->sizeHint().height()};
}

void OptionColumn::setColumnWidth(int width)
{
    setFixedWidth(width);
}

QLabel *OptionColumn::addHeading(QVBoxLayout *group, const QString &title)
{
    auto *heading = new QLabel(title, group->parentWidget());
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    group->addWidget(heading);
    return heading;
}

QVBoxLayout *OptionColumn::addContents(QVBoxLayout *group)
{
    auto *contents = new QVBoxLayout;
    contents->setSpacing(optionGap);
    contents->setContentsMargins(indent, 2, 0, 0);
    group->addLayout(contents);
    return contents;
}

QVBoxLayout *OptionColumn::addGroupLayout()
{
    auto *group = new QVBoxLayout;
    group->setSpacing(optionGap);
    m_layout->insertLayout(m_layout->count() - 1, group);
    return group;
}

QVBoxLayout *OptionColumn::addGroup(const QString &title)
{
    QVBoxLayout *group = addGroupLayout();
    addHeading(group, title);
    return addContents(group);
}

QVBoxLayout *OptionColumn::addGroup(LabelControl &title)
{
    QVBoxLayout *group = addGroupLayout();
    Bindings::bind(title, addHeading(group, {}));
    return addContents(group);
}

QStackedWidget *OptionColumn::addPages()
{
    auto *pages = new QStackedWidget(m_column);
    m_layout->insertWidget(m_layout->count() - 1, pages);
    return pages;
}

QVBoxLayout *OptionColumn::addPage(QStackedWidget *pages, const QString &title)
{
    auto *page = new QWidget(pages);
    auto *outer = new QVBoxLayout(page);
    outer->setSpacing(optionGap);
    outer->setContentsMargins({});
    addHeading(outer, title);
    QVBoxLayout *contents = addContents(outer);
    outer->addStretch();
    pages->addWidget(page);
    return contents;
}

QCheckBox *OptionColumn::addToggle(QVBoxLayout *group, ToggleControl &control, const ControlLook &look)
{
    auto *box = new QCheckBox(look.text, group->parentWidget());
    box->setObjectName(look.objectName);
    box->setToolTip(look.toolTip);
    QSizePolicy policy = box->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    box->setSizePolicy(policy);
    group->addWidget(box);
    Bindings::bind(control, box);
    return box;
}

void OptionColumn::addLevel(QVBoxLayout *group, NumberControl &control, const QString &text,
                            const QString &objectName)
{
    auto *row = new QHBoxLayout;
    auto *label = new QLabel(text, group->parentWidget());
    auto *slider = new LevelSlider(
        control, objectName, [](int level) { return QString::number(level); }, group->parentWidget());
    label->setBuddy(slider->slider());
    follow(control, label, [] {});
    row->addWidget(label);
    row->addWidget(slider, 1);
    group->addLayout(row);
}

QuietLabel *OptionColumn::addDiscNote(QVBoxLayout *group)
{
    auto *note = new QuietLabel(tr("* The number between d and t in the names: d2t05.flac is of disc 2"),
                                group->parentWidget());
    note->setWordWrap(true);
    group->addWidget(note);
    return note;
}

QVBoxLayout *OptionColumn::addOutputGroup(const OutputControls &controls)
{
    QVBoxLayout *output = addGroup(tr("Output"));
    addToggle(output, controls.beside,
              {.text = tr("&Next to the source files"),
               .objectName = controls.besideName,
               .toolTip = tr("Otherwise one folder is asked for")});
    addToggle(output, controls.keepFolders,
              {.text = tr("Kee&p folders"),
               .objectName = QStringLiteral("keepFoldersButton"),
               .toolTip = tr("Keep the tree below each folder: A/B/x.wav becomes OUT/B/x.flac")});
    addToggle(output, controls.deletes,
              {.text = tr("Delete &original files"),
               .objectName = QStringLiteral("deleteOriginalsButton"),
               .toolTip = tr("Each once its output is written and its job succeeded")});
    return output;
}

} // namespace kruv
