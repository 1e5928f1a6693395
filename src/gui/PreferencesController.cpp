// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/PreferencesController.h"

#include "base/Preferences.h"
#include "gui/Bindings.h"
#include "gui/ChoiceGrid.h"
#include "gui/Glyphs.h"
#include "gui/LevelSlider.h"
#include "gui/PromptStyle.h"
#include "gui/QuietLabel.h"
#include "shntool/SHNtoolOutputNamingFormatParser.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSpinBox>
#include <QThread>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace kruv {

namespace {

constexpr int lameBest = 0;
constexpr int lameFastest = 9;
constexpr int paneMargin = 18;
constexpr int paneWidth = 500;

QFormLayout *makeForm(QWidget *pane)
{
    auto *form = new QFormLayout(pane);
    form->setContentsMargins(paneMargin, paneMargin, paneMargin, paneMargin);
    form->setVerticalSpacing(10);
    form->setHorizontalSpacing(12);
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setFormAlignment(Qt::AlignLeft | Qt::AlignTop);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    return form;
}

void addToggle(QFormLayout *form, const QString &label, ToggleControl &control, const QString &text,
               const QString &objectName)
{
    auto *box = new QCheckBox(text, form->parentWidget());
    box->setObjectName(objectName);
    Bindings::bind(control, box);
    form->addRow(label, box);
}

/// The texts that name an optical drive: the first of each kind, then the second to the sixth.
QStringList cdProviders()
{
    constexpr int mostDrives = 6;
    QStringList providers;
    for (const char *kind : {"IOCompactDiscServices", "IODVDServices", "IOBDServices"}) {
        const QString name = QString::fromLatin1(kind);
        providers << name;
        for (int number = 2; number <= mostDrives; ++number) {
            providers << QStringLiteral("%1/%2").arg(name).arg(number);
        }
    }
    return providers;
}

} // namespace

PreferencesController::PreferencesController(Preferences &preferences, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_preferences(preferences)
    , m_maxThreads({.minimum = 1, .maximum = std::max(1, QThread::idealThreadCount()), .step = 1},
                   preferences.integer(QStringLiteral("maxThreads")))
    , m_trashOrDelete(
          {{QStringLiteral("remove"), tr("Remove")}, {QStringLiteral("trash"), tr("Move to the trash")}}, 2)
    , m_lameStereoOption(
          {{QStringLiteral("stereo"), tr("Stereo")}, {QStringLiteral("joint"), tr("Joint stereo")}}, 2)
    , m_lameQValue({.minimum = lameBest, .maximum = lameFastest, .step = 1}, lameBest)
    , m_toolbar(new QToolBar(this))
    , m_paneActions(new QActionGroup(this))
{
    setObjectName(QStringLiteral("preferences"));
    tieControls();
    initToolbar();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(m_toolbar);
    QWidget *general = addPane(tr("General"), Glyph::General);
    fillGeneral(general);
    fillMetadata(addPane(tr("Metadata"), Glyph::Metadata));
    fillAdvanced(addPane(tr("Advanced"), Glyph::Advanced));
    m_paneActions->actions().constFirst()->setChecked(true);
    showPreferencesTab(general);
}

void PreferencesController::tieControls()
{
    m_trashOrDelete.tieTo(m_preferences, QStringLiteral("trashOrDelete"));
    m_proveOutputs.tieTo(m_preferences, QStringLiteral("proveOutputs"));
    m_longestFirst.tieTo(m_preferences, QStringLiteral("longestFirst"));
    m_pauseOnBattery.tieTo(m_preferences, QStringLiteral("pauseOnBattery"));
    m_warnOnDelete.tieTo(m_preferences, QStringLiteral("warnOnDelete"));
    m_warnOnFilesSkipped.tieTo(m_preferences, QStringLiteral("warnOnFilesSkipped"));
    m_checksumFileUsesOutputDirName.tieTo(m_preferences, QStringLiteral("checksumFileUsesOutputDirName"));
    m_ffpExtension.tieTo(m_preferences, QStringLiteral("ffpExtension"));
    m_shnlenTrackListingFormat.tieTo(m_preferences, QStringLiteral("shntoolNamesFormat"));
    m_noPaddingFlac.tieTo(m_preferences, QStringLiteral("noPaddingFlacTags"));
    m_lameStereoOption.tieTo(m_preferences, QStringLiteral("lameStereoOption"));
    m_lameQValue.tieTo(m_preferences, QStringLiteral("lameQValue"));
    m_cdProviderText.tieTo(m_preferences, QStringLiteral("cdProviderText"));
    connect(&m_maxThreads, &Control::changed, this, &PreferencesController::maxThreadsChanged);
}

void PreferencesController::initToolbar()
{
    constexpr int iconSize = 28;
    m_toolbar->setObjectName(QStringLiteral("PrefsToolbar"));
    m_toolbar->setMovable(false);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    m_toolbar->setIconSize({iconSize, iconSize});
    m_toolbar->setContentsMargins(6, 4, 6, 4);
    m_paneActions->setExclusive(true);
}

QWidget *PreferencesController::addPane(const QString &identifier, Glyph glyph)
{
    auto *pane = new QWidget(this);
    pane->setObjectName(identifier);
    pane->setMinimumWidth(paneWidth);
    layout()->addWidget(pane);
    QAction *action = m_toolbar->addAction(glyphIcon(glyph), identifier);
    action->setCheckable(true);
    m_paneActions->addAction(action);
    connect(action, &QAction::triggered, this, [this, pane] { showPreferencesTab(pane); });
    return pane;
}

void PreferencesController::showPreferencesTab(QWidget *pane)
{
    setWindowTitle(tr("Preferences: %1").arg(pane->objectName()));
    for (QWidget *each : findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        if (each != m_toolbar) {
            each->setVisible(each == pane);
        }
    }
    if (m_tools && pane->isAncestorOf(m_tools)) {
        lookForTools();
    }
}

void PreferencesController::fillGeneral(QWidget *pane)
{
    QFormLayout *form = makeForm(pane);
    auto *threads = new QSpinBox(pane);
    threads->setObjectName(QStringLiteral("maxThreads"));
    Bindings::bind(m_maxThreads, threads);
    constexpr int roomForTwoDigits = 72;
    threads->setFixedWidth(roomForTwoDigits);
    form->addRow(tr("&Jobs at once:"), threads);
    form->addRow(
        tr("Deleted originals:"),
        new ChoiceGrid(m_trashOrDelete, {QStringLiteral("trashOrDelete"), tr("Deleted originals:")}, pane));
    addToggle(form, tr("Outputs:"), m_proveOutputs,
              tr("&Prove every output (always done before originals go)"), QStringLiteral("proveOutputs"));
    addToggle(form, tr("Order:"), m_longestFirst, tr("&Longest files of a conversion first"),
              QStringLiteral("longestFirst"));
    addToggle(form, tr("Power:"), m_pauseOnBattery, tr("Pause &while on battery"),
              QStringLiteral("pauseOnBattery"));
    addToggle(form, tr("Warnings:"), m_warnOnDelete, tr("&Ask before originals are deleted"),
              QStringLiteral("warnOnDelete"));
    addToggle(form, {}, m_warnOnFilesSkipped, tr("&Say when files were skipped"),
              QStringLiteral("warnOnFilesSkipped"));
    addToggle(form, tr("Checksum files:"), m_checksumFileUsesOutputDirName,
              tr("&Name them after the output folder"), QStringLiteral("checksumFileUsesOutputDirName"));
    auto *extension = new QLineEdit(pane);
    extension->setObjectName(QStringLiteral("ffpExtension"));
    Bindings::bind(m_ffpExtension, extension);
    form->addRow(tr("&Fingerprint file extension:"), extension);
    addListingFormat(form);
}

void PreferencesController::addListingFormat(QFormLayout *form)
{
    auto *format = new QLineEdit(form->parentWidget());
    format->setObjectName(QStringLiteral("shnlenTrackListingFormat"));
    format->setToolTip(tr("%number, %name and %time stand for a track's number, name and length"));
    Bindings::bind(m_shnlenTrackListingFormat, format);
    form->addRow(tr("&Track listing format:"), format);
    auto *preview = new QuietLabel({}, form->parentWidget());
    preview->setObjectName(QStringLiteral("currentFormat"));
    preview->setTextFormat(Qt::PlainText);
    const auto show = [this, preview] {
        const SHNtoolOutputNamingFormatParser parser(m_shnlenTrackListingFormat.text());
        preview->setText(parser
                             .getFormattedLineWithName(QStringLiteral("FileName"), QStringLiteral("01:00:00"),
                                                       QStringLiteral("01"))
                             .chopped(1));
    };
    connect(&m_shnlenTrackListingFormat, &Control::changed, preview, show);
    show();
    form->addRow({}, preview);
}

void PreferencesController::fillMetadata(QWidget *pane)
{
    QFormLayout *form = makeForm(pane);
    addToggle(form, tr("FLAC:"), m_noPaddingFlac, tr("Write tags without &padding"),
              QStringLiteral("noPaddingFlacTags"));
    form->addRow(tr("MP3 stereo mode:"),
                 new ChoiceGrid(m_lameStereoOption,
                                {QStringLiteral("lameStereoOption"), tr("MP3 stereo mode:")}, pane));
    auto *quality = new LevelSlider(
        m_lameQValue, QStringLiteral("lameQValue"), [](int value) { return QString::number(value); }, pane);
    form->addRow(tr("MP3 &quality:"), quality);
    form->addRow({}, new QuietLabel(tr("0 takes the most care and time, 9 the least."), pane));
}

void PreferencesController::fillAdvanced(QWidget *pane)
{
    QFormLayout *form = makeForm(pane);
    auto *provider = new QComboBox(pane);
    provider->setObjectName(QStringLiteral("cdProviderText"));
    provider->setEditable(true);
    provider->addItems(QStringList{QString()} + cdProviders());
    provider->lineEdit()->setPlaceholderText(tr("Found by itself"));
    Bindings::bind(m_cdProviderText, provider->lineEdit());
    form->addRow(tr("&CD provider:"), provider);
    m_tools = new QTreeWidget(pane);
    m_tools->setObjectName(QStringLiteral("tools"));
    m_tools->setAccessibleName(tr("Tools"));
    m_tools->setHeaderLabels({tr("Tool"), tr("Version"), tr("Needed for")});
    m_tools->setRootIsDecorated(false);
    m_tools->setSelectionMode(QAbstractItemView::NoSelection);
    m_tools->setMinimumHeight(280);
    m_tools->setMinimumWidth(paneWidth + 100);
    form->addRow(m_tools);
}

void PreferencesController::maxThreadsChanged()
{
    m_preferences.setMaxThreads(m_maxThreads.value());
}

void PreferencesController::lookForTools()
{
    m_work.abandon();
    m_work.start([this](const std::stop_token &stop) {
        QList<FoundTool> found;
        for (const ToolInfo &tool : ToolCatalog::all()) {
            if (stop.stop_requested()) {
                break;
            }
            found.append(ToolCatalog::find(tool));
        }
        return [this, found] { showTools(found); };
    });
}

void PreferencesController::showTools(const QList<FoundTool> &tools)
{
    m_tools->clear();
    for (const FoundTool &tool : tools) {
        const bool missing = tool.path.isEmpty();
        const QString version = tool.version.isEmpty() ? tr("found") : tool.version;
        auto *row = new QTreeWidgetItem(m_tools, {QString::fromLatin1(tool.info.name),
                                                  missing ? tr("missing") : version,
                                                  QString::fromLatin1(tool.info.functions)});
        if (missing) {
            row->setForeground(1, PromptStyle::warningColor(palette()));
        }
        const QString package = tool.info.package
                                    ? tr("Package: %1").arg(QString::fromLatin1(tool.info.package))
                                    : tr("Comes with Kruv");
        for (int column = 0; column < m_tools->columnCount(); ++column) {
            row->setToolTip(column, missing ? package : tool.path);
        }
    }
    for (int column = 0; column < m_tools->columnCount(); ++column) {
        m_tools->resizeColumnToContents(column);
    }
}

void PreferencesController::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace kruv
