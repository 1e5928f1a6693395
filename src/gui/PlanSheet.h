// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/Review.h"

#include <QString>
#include <QWidget>

#include <vector>

class QAbstractButton;
class QButtonGroup;
class QGridLayout;
class QLabel;
class QPushButton;
class QStackedWidget;
class QTreeView;

namespace kruv {

class PlanModel;
class QuietLabel;

/// What a command would do, file by file, in place of a tab's list: in one sentence, in a table that can be
/// narrowed down to what happens, and with the choices that change it.
class PlanSheet : public QWidget
{
    Q_OBJECT
public:
    /// `review` must outlive the sheet.
    PlanSheet(Review &review, QWidget *parent);

    /// Shows all entries again, and gives the table the keyboard.
    void open();
    /// What the Tab key reaches last.
    QWidget *lastControl() const;

Q_SIGNALS:
    void folderWanted();

private:
    /// A question and its answers, in one row.
    struct Choice
    {
        QLabel *text;
        QButtonGroup *answers;
        std::vector<QWidget *> widgets;
    };
    struct Answer
    {
        const char *name;
        QString text;
    };
    Choice addChoice(const QString &name, const std::vector<Answer> &answers);
    void show(const Choice &choice, const QString &text, int answer);
    void takeAnswers();
    QLayout *makeHead();
    QLayout *makeKinds();
    void makeTable();
    void refresh();
    QStringList facts() const;
    QStringList warnings() const;
    void refreshChoices();
    void refreshKinds();
    void refreshTable();
    void showDetails();

    Review &m_review;
    PlanModel *m_model;
    QLabel *m_headline;
    QuietLabel *m_facts;
    QLabel *m_warning;
    QPushButton *m_folder;
    QGridLayout *m_choices;
    Choice m_existing;
    Choice m_lossy;
    Choice m_losses;
    Choice m_changed;
    QButtonGroup *m_kinds;
    QStackedWidget *m_pages;
    QTreeView *m_table;
    QuietLabel *m_empty;
    QuietLabel *m_details;
};

} // namespace kruv
