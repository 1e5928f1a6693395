// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/PlanSheet.h"

#include "base/PathNames.h"
#include "gui/PlanModel.h"
#include "gui/PromptStyle.h"
#include "gui/QuietLabel.h"
#include "gui/Spacing.h"
#include "tabs/PlanWords.h"

#include <QButtonGroup>
#include <QDir>
#include <QGridLayout>
#include <QHeaderView>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QTreeView>

#include <utility>

namespace kruv {

namespace {

using Kind = PlanModel::Kind;

/// Rows as high as those of the list. Of a sentence the beginning is what counts, of a path the end.
class PlanDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        constexpr int roomAround = 6;
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, roomAround);
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->textElideMode = index.column() == PlanModel::Notes ? Qt::ElideRight
                                : option->text.contains(u'/')      ? Qt::ElideLeft
                                                                   : Qt::ElideMiddle;
    }
};

/// A label that makes no window wider, whatever it says.
template <typename Label> Label *modest(Label *label, const char *name)
{
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

/// Long paths may be broken behind each folder.
QString breakable(QString text)
{
    return text.replace(u'/', QStringLiteral("/\u200b"));
}

/// Why something can't be made, where one sentence says that of all.
QString commonReason(const Plan &plan)
{
    QSet<QString> reasons;
    QString source;
    for (const PlanEntry &entry : plan.entries()) {
        if (entry.action == PlanEntry::Action::Refuse) {
            reasons.insert(entry.reason);
            source = entry.sources.value(0);
        }
    }
    if (reasons.size() != 1 || source.isEmpty()) {
        return {};
    }
    return QString(*reasons.cbegin()).replace(source, PathNames::lastPathComponent(source));
}

QString kindText(Kind kind)
{
    switch (kind) {
    case Kind::All:
        return PlanSheet::tr("All");
    case Kind::Make:
        return PlanSheet::tr("Make");
    case Kind::Replace:
        return PlanSheet::tr("Replace");
    case Kind::Skip:
        return PlanSheet::tr("Skip");
    case Kind::Refuse:
        return PlanSheet::tr("Refuse");
    case Kind::Loss:
        break;
    }
    return PlanSheet::tr("Losses");
}

} // namespace

PlanSheet::PlanSheet(Review &review, QWidget *parent)
    : QWidget(parent)
    , m_review(review)
    , m_model(new PlanModel(this))
    , m_headline(modest(new QLabel(this), "planHeadline"))
    , m_facts(modest(new QuietLabel({}, this), "planFacts"))
    , m_warning(modest(new QLabel(this), "planWarning"))
    , m_folder(new QPushButton(tr("&Other Folder…"), this))
    , m_choices(new QGridLayout)
    , m_existing(addChoice(
          QStringLiteral("existing"),
          {{"skip", tr("&Skip existing")}, {"replace", tr("&Replace")}, {"both", tr("&Keep both")}}))
    , m_lossy(addChoice(QStringLiteral("lossy"),
                        {{"leave", tr("Leave out")}, {"encode", tr("Encode all the same")}}))
    , m_losses(addChoice(QStringLiteral("losses"),
                         {{"keep", tr("Keep these originals")}, {"delete", tr("Delete all the same")}}))
    , m_changed(addChoice(QStringLiteral("changed"),
                          {{"keep", tr("Keep these originals")}, {"delete", tr("Delete all the same")}}))
    , m_kinds(new QButtonGroup(this))
    , m_pages(new QStackedWidget(this))
    , m_table(new QTreeView(this))
    , m_empty(new QuietLabel(tr("None of these"), this))
    , m_details(modest(new QuietLabel({}, this), "planDetails"))
{
    setObjectName(QStringLiteral("planSheet"));
    makeTable();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addLayout(makeHead());
    layout->addLayout(m_choices);
    layout->addLayout(makeKinds());
    layout->addWidget(m_pages, 1);
    layout->addWidget(m_details);
    setTabOrder(m_kinds->buttons().constLast(), m_table);
    connect(m_folder, &QPushButton::clicked, this, &PlanSheet::folderWanted);
    connect(&review, &Review::planChanged, this, &PlanSheet::refresh);
}

QLayout *PlanSheet::makeHead()
{
    QFont bold = m_headline->font();
    bold.setBold(true);
    m_headline->setFont(bold);
    m_folder->setObjectName(QStringLiteral("otherFolder"));
    m_folder->setAutoDefault(false);
    m_folder->setToolTip(tr("Plan the same for another output folder"));
    auto *texts = new QVBoxLayout;
    texts->addWidget(m_headline);
    texts->addWidget(m_facts);
    texts->addWidget(m_warning);
    auto *head = new QHBoxLayout;
    head->addLayout(texts, 1);
    head->addWidget(m_folder, 0, Qt::AlignTop);
    return head;
}

PlanSheet::Choice PlanSheet::addChoice(const QString &name, const std::vector<Answer> &answers)
{
    const int row = m_choices->rowCount();
    Choice choice{.text = new QLabel(this), .answers = new QButtonGroup(this), .widgets = {}};
    m_choices->addWidget(choice.text, row, 0);
    choice.widgets.push_back(choice.text);
    int column = 1;
    for (const Answer &answer : answers) {
        auto *button = new QRadioButton(answer.text, this);
        button->setObjectName(name + u' ' + QLatin1StringView(answer.name));
        choice.answers->addButton(button, column - 1);
        choice.widgets.push_back(button);
        m_choices->addWidget(button, row, column++);
    }
    m_choices->setColumnStretch(4, 1); // behind the longest row of answers
    connect(choice.answers, &QButtonGroup::idClicked, this, &PlanSheet::takeAnswers);
    return choice;
}

QLayout *PlanSheet::makeKinds()
{
    auto *kinds = new QHBoxLayout;
    const std::pair<Kind, const char *> names[] = {{Kind::All, "all"},         {Kind::Make, "make"},
                                                   {Kind::Replace, "replace"}, {Kind::Skip, "skip"},
                                                   {Kind::Refuse, "refuse"},   {Kind::Loss, "loss"}};
    for (const auto &[kind, name] : names) {
        auto *button = new QToolButton(this);
        button->setObjectName(QStringLiteral("kind ") + QLatin1StringView(name));
        button->setCheckable(true);
        button->setAutoRaise(true); // the one that is chosen has a frame
        button->setFocusPolicy(Qt::StrongFocus);
        m_kinds->addButton(button, static_cast<int>(kind));
        kinds->addWidget(button);
    }
    kinds->addStretch();
    connect(m_kinds, &QButtonGroup::idClicked, this, [this](int id) {
        m_model->setKind(static_cast<Kind>(id));
        refreshTable();
    });
    return kinds;
}

void PlanSheet::makeTable()
{
    m_table->setObjectName(QStringLiteral("planTable"));
    m_table->setAccessibleName(tr("What will happen, file by file"));
    m_table->setModel(m_model);
    m_table->setRootIsDecorated(false);
    m_table->setItemsExpandable(false);
    m_table->setUniformRowHeights(true);
    m_table->setAllColumnsShowFocus(true);
    m_table->setItemDelegate(new PlanDelegate(m_table));
    m_table->header()->setStretchLastSection(false);
    m_table->header()->setSectionsMovable(false);
    m_table->header()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->header()->setSectionResizeMode(PlanModel::Action, QHeaderView::ResizeToContents);
    m_empty->setObjectName(QStringLiteral("planEmpty"));
    m_empty->setAlignment(Qt::AlignCenter);
    m_pages->addWidget(m_table);
    m_pages->addWidget(m_empty);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &PlanSheet::showDetails);
    connect(m_model, &QAbstractItemModel::modelReset, this, &PlanSheet::showDetails);
}

void PlanSheet::open()
{
    m_kinds->button(static_cast<int>(Kind::All))->setChecked(true);
    m_model->setKind(Kind::All);
    refresh();
    m_table->setCurrentIndex({});
    m_table->scrollToTop();
    m_table->setFocus();
}

QWidget *PlanSheet::lastControl() const
{
    return m_table;
}

void PlanSheet::show(const Choice &choice, const QString &text, int answer)
{
    choice.text->setText(text);
    choice.answers->button(answer)->setChecked(true);
    for (QWidget *widget : choice.widgets) {
        widget->setVisible(!text.isEmpty());
        widget->setAccessibleDescription(text);
    }
}

void PlanSheet::takeAnswers()
{
    constexpr ExistingFiles existing[] = {ExistingFiles::Skip, ExistingFiles::Replace,
                                          ExistingFiles::KeepBoth};
    m_review.answer({.existing = existing[m_existing.answers->checkedId()],
                     .takesLossy = m_lossy.answers->checkedId() == 1,
                     .acceptsLosses = m_losses.answers->checkedId() == 1,
                     .deletesChanged = m_changed.answers->checkedId() == 1});
}

void PlanSheet::refresh()
{
    if (!m_review.isUnderWay()) {
        return;
    }
    m_headline->setText(PlanWords::headline(m_review.plan()));
    m_facts->setText(breakable(facts().join(QStringLiteral(" · "))));
    const QStringList sentences = warnings();
    m_warning->setText(breakable(sentences.join(u'\n')));
    m_warning->setVisible(!sentences.isEmpty());
    QPalette palette;
    palette.setColor(QPalette::WindowText, PromptStyle::warningColor(palette));
    m_warning->setPalette(palette);
    refreshChoices();
    m_model->setEntries(m_review.plan().entries());
    refreshKinds();
    refreshTable();
}

QStringList PlanSheet::facts() const
{
    const QString folder = m_review.command().place.folder;
    QStringList facts{folder.isEmpty() ? tr("Outputs go beside their sources")
                                       : tr("Outputs go into %1").arg(QDir::toNativeSeparators(folder))};
    if (const auto unseen = static_cast<int>(m_review.unseen()); unseen > 0) {
        facts.append(unseen == 1 ? tr("1 file is still to be looked at")
                                 : tr("%Ln files are still to be looked at", nullptr, unseen));
    } else {
        facts += PlanWords::costs(m_review.plan().totals());
    }
    return facts;
}

QStringList PlanSheet::warnings() const
{
    constexpr qsizetype mostWarnings = 3;
    const Plan &plan = m_review.plan();
    QStringList warnings{commonReason(plan)};
    if (const auto deleted = static_cast<int>(plan.totals().originalsDeleted); deleted > 0) {
        warnings.append(deleted == 1 ? tr("1 original is deleted, once its output is proven.")
                                     : tr("%Ln originals are deleted, each once its output is proven.",
                                          nullptr, deleted));
    }
    warnings += plan.warnings().mid(0, mostWarnings);
    warnings.removeAll(QString());
    return warnings;
}

void PlanSheet::refreshChoices()
{
    const Review::Questions &asked = m_review.questions();
    const Review::Answers &answers = m_review.answers();
    const auto count = [](qsizetype number, const QString &one, const QString &many) {
        return number == 0 ? QString() : number == 1 ? one : many.arg(QLocale().toString(number));
    };
    show(m_existing, count(asked.existing, tr("1 name is taken:"), tr("%1 names are taken:")),
         static_cast<int>(answers.existing));
    show(m_lossy, count(asked.lossy, tr("1 source is lossy:"), tr("%1 sources are lossy:")),
         answers.takesLossy);
    show(m_losses, count(asked.losses, tr("1 original holds more:"), tr("%1 originals hold more:")),
         answers.acceptsLosses);
    show(m_changed, count(asked.changed, tr("1 changes its sound:"), tr("%1 change their sound:")),
         answers.deletesChanged);
}

void PlanSheet::refreshKinds()
{
    const QList<QAbstractButton *> buttons = m_kinds->buttons();
    for (QAbstractButton *button : buttons) {
        const auto kind = static_cast<Kind>(m_kinds->id(button));
        const qsizetype count = m_model->count(kind);
        button->setText(QStringLiteral("%1 %2").arg(kindText(kind), QLocale().toString(count)));
        button->setVisible(count > 0 || kind == Kind::All || kind == m_model->kind());
    }
}

void PlanSheet::refreshTable()
{
    m_pages->setCurrentWidget(m_model->rowCount() == 0 ? static_cast<QWidget *>(m_empty) : m_table);
    m_table->setColumnHidden(PlanModel::Notes, !m_model->hasNotes());
    showDetails();
}

void PlanSheet::showDetails()
{
    const QModelIndex current = m_table->currentIndex();
    m_details->setVisible(current.isValid());
    m_details->setText(current.isValid() ? breakable(m_model->detailsOf(current.row())) : QString());
}

} // namespace kruv
