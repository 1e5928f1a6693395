// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/ChecksumTabView.h"

#include "gui/ChoiceGrid.h"
#include "gui/OptionColumn.h"
#include "tabs/ChecksumTab.h"

#include <QVBoxLayout>

namespace kruv {

ChecksumTabView::ChecksumTabView(ChecksumTab &tab, const QStringList &kinds, QWidget *parent)
    : TabView(tab, kinds, parent)
{
    QVBoxLayout *command = options().addGroup(tr("Command"));
    command->addWidget(new ChoiceGrid(tab.commandOptions(), {QStringLiteral("mode"), tr("Command")},
                                      command->parentWidget()));

    m_listHeading.setText(tr("Checksum file"));
    QVBoxLayout *list = options().addGroup(m_listHeading);
    auto *kind = new ChoiceGrid(tab.createChecksumOptions(),
                                {QStringLiteral("kind"), tr("Kind of checksum file")}, list->parentWidget());
    QSizePolicy policy = kind->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    kind->setSizePolicy(policy);
    list->addWidget(kind);
    OptionColumn::addToggle(list, tab.sourceSaveButton(),
                            {.text = tr("&Next to the source files"),
                             .objectName = QStringLiteral("sourceSaveButton"),
                             .toolTip = tr("Otherwise a place is asked for")});

    const auto nameCommand = [this, &tab] {
        const bool creates = tab.commandOptions().selectedRow() == ChecksumTab::CreateList;
        m_listHeading.setHidden(!creates);
        setCommand(creates ? tr("Cr&eate list") : tr("V&erify"));
    };
    connect(&tab.commandOptions(), &Control::changed, this, nameCommand);
    nameCommand();
}

} // namespace kruv
