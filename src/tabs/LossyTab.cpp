// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/LossyTab.h"

#include "base/PathNames.h"
#include "base/Preferences.h"
#include "base/UserInterface.h"
#include "convert/EncodeAACTask.h"
#include "convert/EncodeHEAACTask.h"
#include "convert/EncodeMP3Task.h"
#include "convert/EncodeOpusTask.h"
#include "tabs/OutputPlan.h"
#include "tasks/KruvTask.h"
#include "tasks/KruvTaskQueue.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolOutput.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace kruv {

namespace {

const QString mp3 = QStringLiteral("LAME MP3");
const QString aac = QStringLiteral("AAC");
const QString heAac = QStringLiteral("HE-AAC");
const QString opus = QStringLiteral("Opus");

const QString cbr = QStringLiteral("CBR");
const QString abr = QStringLiteral("ABR");
const QString vbr = QStringLiteral("VBR");
const QString vbrConstrained = QStringLiteral("VBR Constrained");

constexpr int highestStep = 127;

QStringList bitRates(const char *list)
{
    return QString::fromLatin1(list).split(u' ');
}

/// The bit rates in kbit/s that a format offers, and what becomes of one that doesn't suit it.
struct BitRateRule
{
    QStringList list;
    int lowest;
    int highest;
    QString correction;
};

const BitRateRule &bitRateRule(const QString &format)
{
    static const BitRateRule heAacRule{bitRates("24 32 48 60"), 1, 60, QStringLiteral("60")};
    static const BitRateRule rule{bitRates("96 112 128 160 192 224 256 320"), 80,
                                  std::numeric_limits<int>::max(), QStringLiteral("256")};
    return format == heAac ? heAacRule : rule;
}

void show(Control &control, bool shown)
{
    control.setHidden(!shown);
    control.setEnabled(shown);
}

} // namespace

/// One output format: how its files are called, the tool without which there are none, and its jobs.
struct LossyTab::FormatRow
{
    QStringView title;
    QStringView extension;
    /// Empty where this program encodes by itself.
    QStringView tool;
    /// Whether outputs that are there already are asked about.
    bool guardsOutputs;
    Job (LossyTab::*make)(const QString &fileName, const QString &folder, bool overwrite);
};

const LossyTab::FormatRow LossyTab::formatRows[] = {
    {u"LAME MP3", u"mp3", u"lame", false, &LossyTab::makeMp3Job},
    {u"AAC", u"m4a", u"", true, &LossyTab::makeAacJob},
    {u"HE-AAC", u"m4a", u"aacplusenc", true, &LossyTab::makeHeAacJob},
    {u"Opus", u"opus", u"opusenc", false, &LossyTab::makeOpusJob},
};

LossyTab::LossyTab(TabHost &host)
    : ConversionTab(QStringLiteral("lossy"), host)
    , m_outputFormatMatrix({mp3, aac, heAac, opus}, 2)
    , m_mp3Matrix({cbr, abr, vbr})
    , m_aacMatrix({cbr, abr, vbrConstrained, vbr})
    , m_opusMatrix({cbr, vbrConstrained, vbr})
    , m_slider(0, 9, 3)
    , m_stepper(0, highestStep, 88)
    , m_comboBox(bitRateRule(mp3).list)
    , m_opusFrameSizeCombo({QStringLiteral("2.5"), QStringLiteral("5"), QStringLiteral("10"),
                            QStringLiteral("20"), QStringLiteral("40"), QStringLiteral("60")})
{
    m_bitrateTextField.setText(QStringLiteral("Bit rate, kbit/s"));
    m_frameSizeTextField.setText(QStringLiteral("Frame size, ms"));
    m_zeroNineTextField.setText(QStringLiteral("Quality, 0 to 9"));
    m_largerTextField.setText(QStringLiteral("Larger"));
    m_smallerTextField.setText(QStringLiteral("Smaller"));
    m_zeroTo127.setText(QStringLiteral("Quality, 0 to 127"));
    tieToPreferences();
    for (ChoiceControl *matrix : {&m_outputFormatMatrix, &m_mp3Matrix, &m_aacMatrix, &m_opusMatrix}) {
        connect(matrix, &Control::changed, this, &LossyTab::displayRelevantOptions);
    }
    connect(&m_stepper, &Control::changed, this, &LossyTab::stepperAction);
    connect(&m_stepperTextField, &Control::changed, this, &LossyTab::controlTextDidChange);
    LossyTab::displayRelevantOptions();
    stepperAction();
}

void LossyTab::tieToPreferences()
{
    Preferences &preferences = host().preferences();
    m_outputFormatMatrix.tieTo(preferences, QStringLiteral("lossyOutputFormat"));
    m_slider.tieTo(preferences, QStringLiteral("lossySliderLevel"));
    m_stepper.tieTo(preferences, QStringLiteral("lossyStepperLevel"));
    m_comboBox.tieTo(preferences, QStringLiteral("lossyComboLevel"));
    m_opusFrameSizeCombo.tieTo(preferences, QStringLiteral("opusFrameSizeIndex"));
    m_sourceEncodeButton.tieTo(preferences, QStringLiteral("encodeLossyToSourceDirectory"));
}

int LossyTab::comboLevel() const
{
    return static_cast<int>(ToolOutput::leadingNumber(m_comboBox.text()));
}

double LossyTab::opusFrameSizeLevel() const
{
    return ToolOutput::leadingNumber(m_opusFrameSizeCombo.selectedTitle());
}

void LossyTab::displayRelevantOptions()
{
    const QString format = m_outputFormatMatrix.selectedTitle();
    const bool mp3ByQuality = format == mp3 && m_mp3Matrix.selectedTitle() == vbr;
    const bool aacByQuality = format == aac && m_aacMatrix.selectedTitle() == vbr;
    m_comboBox.setItems(bitRateRule(format).list);
    show(m_mp3Matrix, format == mp3);
    show(m_aacMatrix, format == aac);
    show(m_opusMatrix, format == opus);
    for (Control *each : std::initializer_list<Control *>{&m_slider, &m_zeroNineTextField, &m_largerTextField,
                                                          &m_smallerTextField}) {
        show(*each, mp3ByQuality);
    }
    for (Control *each : std::initializer_list<Control *>{&m_stepper, &m_stepperTextField, &m_zeroTo127}) {
        show(*each, aacByQuality);
    }
    show(m_opusFrameSizeCombo, format == opus);
    show(m_frameSizeTextField, format == opus);
    showBitrate(!mp3ByQuality && !aacByQuality);
    showMissingTool();
}

void LossyTab::showBitrate(bool shown)
{
    show(m_comboBox, shown);
    show(m_bitrateTextField, shown);
    const BitRateRule &rule = bitRateRule(m_outputFormatMatrix.selectedTitle());
    if (shown && (comboLevel() < rule.lowest || comboLevel() > rule.highest)) {
        m_comboBox.setText(rule.correction);
    }
}

void LossyTab::stepperAction()
{
    m_stepperTextField.setText(QString::number(m_stepper.value()));
}

void LossyTab::controlTextDidChange()
{
    bool isNumber = false;
    const int typed = m_stepperTextField.text().toInt(&isNumber);
    if (isNumber && typed >= 0 && typed <= highestStep) {
        m_stepper.setValue(typed);
    }
    stepperAction();
}

const LossyTab::FormatRow *LossyTab::chosenFormat() const
{
    const auto *row = std::ranges::find_if(formatRows, [this](const FormatRow &each) {
        return each.title == m_outputFormatMatrix.selectedTitle();
    });
    return row == std::end(formatRows) ? nullptr : row;
}

void LossyTab::showMissingTool()
{
    const FormatRow *row = chosenFormat();
    QString message;
    if (row && !row->tool.isEmpty()) {
        const QString path = tool(row->tool.toString());
        message = ToolCatalog::isLaunchable(path) ? QString() : ToolCatalog::missingToolMessage(path);
    }
    m_missingToolText.setText(message);
    m_missingToolText.setHidden(message.isEmpty());
}

void LossyTab::executeCommand()
{
    displayRelevantOptions(); // puts a bit rate right that is still being typed
    const FormatRow *row = chosenFormat();
    if (fileList().isEmpty() || !row || !confirmDeletion(m_deleteOriginalsButton.isOn())) {
        return;
    }
    const auto folder = chooseOutputFolderUnless(m_sourceEncodeButton);
    if (!folder) {
        return;
    }
    const OutputPlan plan(fileNames(), *folder, row->extension.toString());
    bool overwrite = false;
    if (mayWriteOutputs(*row, plan, !folder->isEmpty(), overwrite)) {
        queueJobs(*row, plan, overwrite);
        clearFiles();
    }
}

bool LossyTab::mayWriteOutputs(const FormatRow &row, const OutputPlan &plan, bool inChosenFolder,
                               bool &overwrite)
{
    const QString chooseAnother = QStringLiteral(
        "One of the output files already exists and will be overwritten.  Select a different output "
        "directory?");
    if (outputsCollide(plan, chooseAnother)) {
        return false;
    }
    if (!row.guardsOutputs || !replacesFiles(plan, row.extension.toString())) {
        return true;
    }
    if (inChosenFolder) {
        host().userInterface().alert(chooseAnother, QString(), acknowledgeButton());
        return false;
    }
    overwrite = askToOverwrite({});
    return overwrite;
}

void LossyTab::queueJobs(const FormatRow &row, const OutputPlan &plan, bool overwrite)
{
    std::vector<std::shared_ptr<KruvTask>> jobs;
    for (const OutputPlan::Entry &entry : plan.entries()) {
        auto job = (this->*row.make)(entry.source, entry.folder, overwrite);
        job->setDeleteOriginal(m_deleteOriginalsButton.isOn());
        jobs.push_back(std::move(job));
    }
    host().taskQueue().addTasks(jobs);
}

LossyTab::Job LossyTab::makeMp3Job(const QString &fileName, const QString &folder, bool)
{
    const QString type = m_mp3Matrix.selectedTitle();
    int level = 0;
    if (type == cbr || type == abr) {
        level = comboLevel();
    } else if (type == vbr) {
        level = sliderLevel();
    }
    return std::make_shared<EncodeMP3Task>(&host().taskQueue(), fileName, type, folder, level);
}

LossyTab::Job LossyTab::makeAacJob(const QString &fileName, const QString &folder, bool overwrite)
{
    const QString type = m_aacMatrix.selectedTitle();
    const int level = type == vbr ? stepperLevel() : comboLevel();
    return std::make_shared<EncodeAACTask>(&host().taskQueue(), fileName, type, folder, level, overwrite);
}

LossyTab::Job LossyTab::makeHeAacJob(const QString &fileName, const QString &folder, bool overwrite)
{
    return std::make_shared<EncodeHEAACTask>(&host().taskQueue(), fileName, m_aacMatrix.selectedTitle(),
                                             folder, comboLevel(), overwrite);
}

LossyTab::Job LossyTab::makeOpusJob(const QString &fileName, const QString &folder, bool)
{
    return std::make_shared<EncodeOpusTask>(&host().taskQueue(), fileName, m_opusMatrix.selectedTitle(),
                                            folder, comboLevel(), opusFrameSizeLevel());
}

} // namespace kruv
