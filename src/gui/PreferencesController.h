// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/BackgroundWork.h"
#include "tabs/Controls.h"
#include "tasks/FoundTool.h"

#include <QWidget>

class QActionGroup;
class QFormLayout;
class QToolBar;
class QTreeWidget;

namespace kruv {

enum class Glyph;
class Preferences;

/// The preferences window: three panes, of which it takes the size of the one that shows. Every change is
/// stored at once.
class PreferencesController : public QWidget
{
    Q_OBJECT
public:
    /// `preferences` must outlive the window.
    PreferencesController(Preferences &preferences, QWidget *parent);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void tieControls();
    void initToolbar();
    QWidget *addPane(const QString &identifier, Glyph glyph);
    void showPreferencesTab(QWidget *pane);
    void fillGeneral(QWidget *pane);
    void fillMetadata(QWidget *pane);
    void fillAdvanced(QWidget *pane);
    void addListingFormat(QFormLayout *form);
    void maxThreadsChanged();
    void lookForTools();
    void showTools(const QList<FoundTool> &tools);

    Preferences &m_preferences;
    NumberControl m_maxThreads;
    ChoiceControl m_trashOrDelete;
    ToggleControl m_proveOutputs;
    ToggleControl m_longestFirst;
    ToggleControl m_pauseOnBattery;
    ToggleControl m_warnOnDelete;
    ToggleControl m_warnOnFilesSkipped;
    ToggleControl m_checksumFileUsesOutputDirName;
    TextControl m_ffpExtension;
    TextControl m_shnlenTrackListingFormat;
    ToggleControl m_noPaddingFlac;
    ChoiceControl m_lameStereoOption;
    NumberControl m_lameQValue;
    TextControl m_cdProviderText;

    QToolBar *m_toolbar;
    QActionGroup *m_paneActions;
    QTreeWidget *m_tools = nullptr;
    BackgroundWork m_work;
};

} // namespace kruv
