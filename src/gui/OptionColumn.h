// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/ControlLook.h"

#include <QScrollArea>

class QCheckBox;
class QLabel;
class QStackedWidget;
class QVBoxLayout;

namespace kruv {

class LabelControl;
class NumberControl;
class QuietLabel;
class ToggleControl;

/// The options beside a tab's list: titled groups in one column of fixed width, which scrolls where the
/// window is too low.
class OptionColumn : public QScrollArea
{
    Q_OBJECT
public:
    explicit OptionColumn(QWidget *parent);

    /// Adds a group and returns the layout of what belongs to it.
    QVBoxLayout *addGroup(const QString &title);
    /// The same under a heading that a tab shows and hides.
    QVBoxLayout *addGroup(LabelControl &title);
    /// Adds room for groups of which one shows at a time; it is as high as the highest of them, so that
    /// nothing moves when they change.
    QStackedWidget *addPages();
    /// Adds a page with a group and returns the layout of what belongs to it.
    QVBoxLayout *addPage(QStackedWidget *pages, const QString &title);

    struct OutputControls
    {
        ToggleControl &beside;
        QString besideName; ///< object name
        ToggleControl &keepFolders;
        ToggleControl &deletes;
    };
    /// Adds where the outputs go and whether originals are deleted.
    QVBoxLayout *addOutputGroup(const OutputControls &controls);

    /// Adds a labelled slider tied to `control`, with that object name; its value stands beside it.
    static void addLevel(QVBoxLayout *group, NumberControl &control, const QString &text,
                         const QString &objectName);
    /// Adds what the asterisk of choices "by disc*" stands for.
    static QuietLabel *addDiscNote(QVBoxLayout *group);
    /// Adds a check box tied to `control`.
    static QCheckBox *addToggle(QVBoxLayout *group, ToggleControl &control, const ControlLook &look);

    /// For a tab whose options are a form: as wide as this, in device-independent pixels.
    void setColumnWidth(int width);

    QSize sizeHint() const override;

private:
    QVBoxLayout *addGroupLayout();
    static QLabel *addHeading(QVBoxLayout *group, const QString &title);
    static QVBoxLayout *addContents(QVBoxLayout *group);

    QWidget *m_column;
    QVBoxLayout *m_layout;
};

} // namespace kruv
