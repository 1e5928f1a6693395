// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/DecodeTab.h"

#include "base/PathNames.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "formats/flac/FlacOptions.h"
#include "tabs/FormatControls.h"

namespace kruv {

DecodeTab::DecodeTab(TabHost &host)
    : ConversionTab(QStringLiteral("decode"), host)
    , m_outputFormatMatrix(FormatControls::choicesOf(targets()), 2)
{
    m_sourceDecodeButton.tieTo(host.preferences(), QStringLiteral("decodeToSourceDirectory"));
    tieKeepFolders(QStringLiteral("decodeKeepFolders"), m_sourceDecodeButton);
    m_flacOptionsLabel.setText(tr("FLAC options"));
    showFLacOptions(false);
}

QList<const Format *> DecodeTab::targets()
{
    return {&wavFormat, &aiffFormat};
}

void DecodeTab::showFLacOptions(bool show)
{
    m_decodeFlacThroughErrors.setHidden(!show);
    m_flacKeepForeignMetadataButton.setHidden(!show);
    m_flacOptionsLabel.setHidden(!show);
}

void DecodeTab::filesAdded()
{
    FileList &list = fileList();
    for (int row = 0; row < list.count(); ++row) {
        if (Formats::ofType(PathNames::fileType(list.at(row))) == &flacFormat) {
            showFLacOptions(true);
            break;
        }
    }
    BaseTab::filesAdded();
}

void DecodeTab::clearFiles()
{
    showFLacOptions(false);
    BaseTab::clearFiles();
}

std::optional<ConversionTab::Command> DecodeTab::command()
{
    const Format *target = targets().value(m_outputFormatMatrix.selectedIndex());
    if (!target) {
        return std::nullopt;
    }
    ConversionOrder order{.target = target, .decodes = true};
    order.options.set(FlacOptions::throughErrors, m_decodeFlacThroughErrors.isOn());
    order.options.set(FlacOptions::keepForeignMetadata, m_flacKeepForeignMetadataButton.isOn());
    return Command{.order = order, .besideSources = m_sourceDecodeButton, .deletes = m_deleteOriginalsButton};
}

} // namespace kruv
