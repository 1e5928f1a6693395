// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/LossyTab.h"

#include "base/Preferences.h"
#include "formats/Formats.h"
#include "formats/aac/AacOptions.h"
#include "formats/mp3/Mp3Tool.h"
#include "formats/opus/OpusTool.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolOutput.h"

namespace kruv {

namespace {

void show(Control &control, bool shown)
{
    control.setHidden(!shown);
    control.setEnabled(shown);
}

} // namespace

LossyTab::LossyTab(TabHost &host)
    : ConversionTab(QStringLiteral("lossy"), host)
    , m_formats(Formats::made(true))
    , m_outputFormatMatrix(FormatControls::choicesOf(m_formats), 2)
    , m_controls(m_formats, host.preferences())
{
    m_bitrateTextField.setText(tr("Bit rate, kbit/s"));
    m_frameSizeTextField.setText(tr("Frame size, ms"));
    m_zeroNineTextField.setText(QStringLiteral("Quality, 0 to 9"));
    m_largerTextField.setText(tr("Larger"));
    m_smallerTextField.setText(tr("Smaller"));
    m_zeroTo127.setText(QStringLiteral("Quality, 0 to 127"));
    m_outputFormatMatrix.tieTo(host.preferences(), QStringLiteral("lossyOutputFormat"));
    m_sourceEncodeButton.tieTo(host.preferences(), QStringLiteral("encodeLossyToSourceDirectory"));
    tieKeepFolders(QStringLiteral("lossyKeepFolders"), m_sourceEncodeButton);
    connectControls();
    LossyTab::displayRelevantOptions();
    stepperAction();
}

void LossyTab::connectControls()
{
    connect(&m_outputFormatMatrix, &Control::changed, this, &LossyTab::displayRelevantOptions);
    for (const Format *format : m_formats) {
        for (const FormatOption *option : format->options) {
            if (option->dependsOn) {
                connect(&m_controls.control(*option->dependsOn), &Control::changed, this,
                        &LossyTab::displayRelevantOptions, Qt::UniqueConnection);
            }
        }
    }
    connect(&stepper(), &Control::changed, this, &LossyTab::stepperAction);
    connect(&m_stepperTextField, &Control::changed, this, &LossyTab::controlTextDidChange);
}

ChoiceControl &LossyTab::mp3Matrix() const
{
    return m_controls.choice(Mp3Tool::mode);
}

ChoiceControl &LossyTab::aacMatrix() const
{
    return m_controls.choice(AacOptions::mode);
}

ChoiceControl &LossyTab::opusMatrix() const
{
    return m_controls.choice(OpusTool::mode);
}

NumberControl &LossyTab::slider() const
{
    return m_controls.number(Mp3Tool::quality);
}

NumberControl &LossyTab::stepper() const
{
    return m_controls.number(AacOptions::quality);
}

ComboControl &LossyTab::comboBox() const
{
    return m_controls.rate(Mp3Tool::bitRate);
}

ChoiceControl &LossyTab::opusFrameSizeCombo() const
{
    return m_controls.choice(OpusTool::frameSize);
}

int LossyTab::comboLevel() const
{
    return static_cast<int>(ToolOutput::leadingNumber(comboBox().text()));
}

double LossyTab::opusFrameSizeLevel() const
{
    return ToolOutput::leadingNumber(opusFrameSizeCombo().selectedId());
}

void LossyTab::displayRelevantOptions()
{
    const Format *chosen = chosenFormat();
    const FormatOption *rate = nullptr;
    for (const Format *format : m_formats) {
        for (const FormatOption *option : format->options) {
            const bool relevant = m_controls.isRelevant(*option, chosen);
            if (option->kind != FormatOption::Kind::Rate) {
                show(m_controls.control(*option), relevant);
            } else if (relevant) {
                rate = option;
            }
        }
    }
    show(comboBox(), rate != nullptr);
    show(m_bitrateTextField, rate != nullptr);
    if (rate) {
        m_controls.fitRate(*rate);
    }
    for (Control *each : {&m_zeroNineTextField, &m_largerTextField, &m_smallerTextField}) {
        show(*each, m_controls.isRelevant(Mp3Tool::quality, chosen));
    }
    show(m_stepperTextField, m_controls.isRelevant(AacOptions::quality, chosen));
    show(m_zeroTo127, m_controls.isRelevant(AacOptions::quality, chosen));
    show(m_frameSizeTextField, m_controls.isRelevant(OpusTool::frameSize, chosen));
    showMissingTool();
}

void LossyTab::stepperAction()
{
    m_stepperTextField.setText(QString::number(stepper().value()));
}

void LossyTab::controlTextDidChange()
{
    bool isNumber = false;
    const int typed = m_stepperTextField.text().toInt(&isNumber);
    if (isNumber && typed >= stepper().minimum() && typed <= stepper().maximum()) {
        stepper().setValue(typed);
    }
    stepperAction();
}

void LossyTab::showMissingTool()
{
    const Format *format = chosenFormat();
    QString message;
    if (format && format->encoderTool) {
        const QString path = tool(QString::fromLatin1(format->encoderTool));
        message = ToolCatalog::isLaunchable(path) ? QString() : ToolCatalog::missingToolMessage(path);
    }
    m_missingToolText.setText(message);
    m_missingToolText.setHidden(message.isEmpty());
}

std::optional<ConversionTab::Command> LossyTab::command()
{
    displayRelevantOptions(); // puts a bit rate right that is still being typed
    const Format *format = chosenFormat();
    if (!format) {
        return std::nullopt;
    }
    return Command{.order = {.target = format, .options = m_controls.values(*format)},
                   .besideSources = m_sourceEncodeButton,
                   .deletes = m_deleteOriginalsButton};
}

} // namespace kruv
