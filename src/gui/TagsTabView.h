// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/TabView.h"
#include "tags/TagsObject.h"

#include <QHash>

#include <functional>

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QMenu;
class QProgressBar;
class QPushButton;

namespace kruv {

class KruvDragAndDropImageView;
class TagsTab;

/// The form in which the selected files' tags are edited.
class TagsTabView : public TabView
{
    Q_OBJECT
public:
    TagsTabView(TagsTab &tab, const QStringList &kinds, QWidget *parent);

    /// Adds what can be done here by menu and key; `comeForward` brings the tab to the front first.
    void fillMenu(QMenu *menu, const std::function<void()> &comeForward);

protected:
    QString reasonToWait() const override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QLayout *makeState();
    /// What the widest label takes, so that all rows begin in one line.
    int labelWidth() const;
    QLayout *makeTexts();
    QLayout *makePicture();
    QLayout *makeNumbers();
    QLayout *makeOptions();
    QLineEdit *makeField(TagField field, const QString &name);
    QLayout *makePair(TagField number, TagField total, const QString &name);
    QLayout *makeDate();
    QPushButton *makeButton(const QString &text, const QString &objectName);
    void orderTabs();
    /// Desktops give dark palettes in which hints are written in black.
    void takeTone();
    void showState();
    void showSelection();
    void showPicture();
    void showField(TagField field, QLineEdit *box) const;
    void selectAllWhereNone();

    TagsTab &m_tab;
    QWidget *m_form = nullptr;
    QHash<TagField, QLineEdit *> m_fields;
    KruvDragAndDropImageView *m_picture = nullptr;
    QLabel *m_pictureDescription = nullptr;
    QPushButton *m_choosePicture = nullptr;
    QPushButton *m_removePicture = nullptr;
    QLabel *m_count = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_customTags = nullptr;
    QPushButton *m_trackNames = nullptr;
    QPushButton *m_previous = nullptr;
    QCheckBox *m_autoName = nullptr;
    QCheckBox *m_writeEmptyTags = nullptr;
};

} // namespace kruv
