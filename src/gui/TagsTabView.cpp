// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/TagsTabView.h"

#include "base/PathNames.h"
#include "gui/Bindings.h"
#include "gui/FileListView.h"
#include "gui/Follow.h"
#include "gui/KruvDragAndDropImageView.h"
#include "gui/OptionColumn.h"
#include "gui/QuietLabel.h"
#include "tabs/TagsTab.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>
#include <limits>

namespace kruv {

namespace {

constexpr int narrowestForm = 432; // device-independent pixels
constexpr int widestForm = 640;
constexpr int gap = 8;

void keepRoom(QWidget *widget)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

} // namespace

TagsTabView::TagsTabView(TagsTab &tab, const QStringList &kinds, QWidget *parent)
    : TabView(tab, kinds, parent)
    , m_tab(tab)
{
    QVBoxLayout *form = options().addGroup(tr("Tags"));
    m_form = form->parentWidget();
    form->setSpacing(gap);
    form->addLayout(makeState());
    auto *top = new QHBoxLayout;
    top->setSpacing(gap + gap / 2);
    top->addLayout(makeTexts(), 1);
    top->addLayout(makePicture());
    form->addLayout(top);
    form->addLayout(makeNumbers());
    form->addLayout(makeOptions());
    orderTabs();
    setCommand(tr("&Write Tags"));

    connect(&list(), &FileListView::selectedRowsChanged, &tab, &TagsTab::tableViewSelectionDidChange);
    connect(&tab, &TagsTab::selectionChanged, this, &TagsTabView::showState);
    connect(&tab.autoName(), &Control::changed, this, &TagsTabView::showState);
    connect(&tab.albumArtImageView(), &Control::changed, this, &TagsTabView::showPicture);
    takeTone();
    showState();
}

void TagsTabView::takeTone()
{
    QPalette own;
    own.setColor(QPalette::PlaceholderText, QuietLabel::tone(QGuiApplication::palette()));
    for (QLineEdit *box : std::as_const(m_fields)) {
        box->setPalette(own);
    }
}

void TagsTabView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange) {
        takeTone();
    }
    TabView::changeEvent(event);
}

QLayout *TagsTabView::makeState()
{
    auto *selections = new QLabel(m_form);
    follow(m_tab.multipleSelectionsLabel(), selections, [this, selections] {
        selections->setText(m_tab.multipleSelectionsLabel().text());
        m_tab.multipleSelectionsLabel().setHidden(selections->text().isEmpty());
    });
    m_count = new QuietLabel({}, m_form);
    m_count->setObjectName(QStringLiteral("selectionCount"));
    m_count->setTextFormat(Qt::PlainText);
    m_progress = new QProgressBar(m_form);
    m_progress->setObjectName(QStringLiteral("readingProgress"));
    m_progress->setAccessibleName(tr("Files whose tags are read"));
    m_progress->setTextVisible(false);
    m_progress->setFixedHeight(gap);
    keepRoom(m_progress);
    auto *state = new QHBoxLayout;
    state->addWidget(selections);
    state->addWidget(m_count);
    state->addStretch();
    state->addWidget(m_progress);
    return state;
}

QLineEdit *TagsTabView::makeField(TagField field, const QString &name)
{
    static const QHash<TagField, QString> objectNames{
        {TagField::Title, QStringLiteral("titleText")},
        {TagField::Artist, QStringLiteral("artistText")},
        {TagField::AlbumArtist, QStringLiteral("albumArtistText")},
        {TagField::Album, QStringLiteral("albumText")},
        {TagField::Comment, QStringLiteral("commentText")},
        {TagField::Disc, QStringLiteral("discText")},
        {TagField::Track, QStringLiteral("trackText")},
        {TagField::TrackTotal, QStringLiteral("trackTotalText")},
        {TagField::DiscTotal, QStringLiteral("discTotalText")},
        {TagField::Year, QStringLiteral("yearText")},
        {TagField::Month, QStringLiteral("monthText")},
        {TagField::Day, QStringLiteral("dayText")},
        {TagField::Genre, QStringLiteral("genreText")},
        {TagField::Composer, QStringLiteral("composerText")},
    };
    auto *box = new QLineEdit(m_form);
    box->setObjectName(objectNames.value(field));
    box->setAccessibleName(name);
    box->setMaxLength(std::numeric_limits<int>::max()); // cut off here, a long comment would be lost
    Bindings::bind(m_tab.text(field), box);
    // What is at the beginning says most.
    connect(&m_tab.text(field), &Control::changed, box, [box] {
        if (!box->hasFocus()) {
            box->setCursorPosition(0);
        }
    });
    m_fields.insert(field, box);
    return box;
}

int TagsTabView::labelWidth() const
{
    return fontMetrics().horizontalAdvance(tr("Album artist")) + gap / 2;
}

QLayout *TagsTabView::makeTexts()
{
    struct Row
    {
        TagField field;
        QString label;
    };
    const Row rows[] = {
        {TagField::Title, tr("T&itle")},
        {TagField::Artist, tr("A&rtist")},
        {TagField::AlbumArtist, tr("Al&bum artist")},
        {TagField::Album, tr("Alb&um")},
        {TagField::Composer, tr("Com&poser")},
        {TagField::Genre, tr("&Genre")},
    };
    auto *grid = new QGridLayout;
    grid->setSpacing(gap);
    int line = 0;
    for (const Row &row : rows) {
        auto *label = new QLabel(row.label, m_form);
        QLineEdit *box = makeField(row.field, QString(row.label).remove(u'&'));
        label->setBuddy(box);
        grid->addWidget(label, line, 0);
        grid->addWidget(box, line, 1);
        ++line;
    }
    grid->setRowStretch(line, 1);
    grid->setColumnMinimumWidth(0, labelWidth());
    return grid;
}

QPushButton *TagsTabView::makeButton(const QString &text, const QString &objectName)
{
    auto *button = new QPushButton(text, m_form);
    button->setObjectName(objectName);
    button->setAutoDefault(false);
    return button;
}

QLayout *TagsTabView::makePicture()
{
    m_picture = new KruvDragAndDropImageView(m_form);
    m_picture->setObjectName(QStringLiteral("albumArtImageView"));
    m_picture->setAccessibleName(tr("Album art"));
    m_picture->setToolTip(tr("Drop or paste a picture here; Space chooses one, Delete removes it"));
    m_pictureDescription = new QuietLabel({}, m_form);
    m_pictureDescription->setAlignment(Qt::AlignCenter);
    m_pictureDescription->setMinimumHeight(2 * m_pictureDescription->fontMetrics().lineSpacing());
    m_choosePicture = makeButton(tr("Choose…"), QStringLiteral("chooseAlbumArt"));
    m_removePicture = makeButton(tr("Remove"), QStringLiteral("removeAlbumArt"));
    for (QPushButton *button : {m_choosePicture, m_removePicture}) {
        button->setMinimumWidth(1);
    }
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(gap / 2);
    buttons->addWidget(m_choosePicture, 1);
    buttons->addWidget(m_removePicture, 1);
    auto *column = new QVBoxLayout;
    column->setSpacing(gap / 2);
    column->addWidget(m_picture, 0, Qt::AlignHCenter);
    column->addWidget(m_pictureDescription);
    column->addLayout(buttons);
    column->addStretch();

    const auto remove = [this] { m_tab.albumArtImageView().clear(); };
    connect(m_choosePicture, &QPushButton::clicked, &m_tab, qOverload<>(&TagsTab::chooseAlbumArt));
    connect(m_picture, &KruvDragAndDropImageView::chooseWanted, &m_tab,
            qOverload<>(&TagsTab::chooseAlbumArt));
    connect(m_removePicture, &QPushButton::clicked, &m_tab, remove);
    connect(m_picture, &KruvDragAndDropImageView::removeWanted, &m_tab, remove);
    connect(m_picture, &KruvDragAndDropImageView::fileGiven, &m_tab,
            qOverload<const QString &>(&TagsTab::chooseAlbumArt));
    connect(m_picture, &KruvDragAndDropImageView::imageGiven, &m_tab, [this](const QImage &image) {
        m_tab.albumArtImageView().show(AlbumArtControl::Shown::of(std::make_shared<const AlbumArt>(image)));
    });
    return column;
}

QLayout *TagsTabView::makePair(TagField number, TagField total, const QString &name)
{
    auto *pair = new QHBoxLayout;
    pair->setSpacing(gap / 2);
    pair->addWidget(makeField(number, name), 1);
    pair->addWidget(new QLabel(tr("of"), m_form));
    pair->addWidget(makeField(total, tr("%1 total").arg(name)), 1);
    return pair;
}

QLayout *TagsTabView::makeDate()
{
    auto *date = new QHBoxLayout;
    date->setSpacing(gap / 2);
    date->addWidget(makeField(TagField::Year, tr("Year")), 2);
    date->addWidget(makeField(TagField::Month, tr("Month")), 1);
    date->addWidget(makeField(TagField::Day, tr("Day")), 1);
    return date;
}

QLayout *TagsTabView::makeNumbers()
{
    auto *grid = new QGridLayout;
    grid->setSpacing(gap);
    int line = 0;
    const auto label = [&](const QString &text, int row, int column) {
        auto *made = new QLabel(text, m_form);
        grid->addWidget(made, row, column);
        return made;
    };
    QLabel *track = label(tr("Trac&k"), line, 0);
    grid->addLayout(makePair(TagField::Track, TagField::TrackTotal, tr("Track")), line, 1);
    track->setBuddy(m_fields[TagField::Track]);
    QLabel *disc = label(tr("&Disc"), line, 2);
    grid->addLayout(makePair(TagField::Disc, TagField::DiscTotal, tr("Disc")), line, 3);
    disc->setBuddy(m_fields[TagField::Disc]);
    ++line;
    QLabel *date = label(tr("Dat&e"), line, 0);
    grid->addLayout(makeDate(), line, 1);
    date->setBuddy(m_fields[TagField::Year]);
    m_customTags = makeButton({}, QStringLiteral("customTags"));
    m_customTags->setToolTip(tr("Tags of any name, which FLAC files keep (Ctrl+K)"));
    connect(m_customTags, &QPushButton::clicked, &m_tab, &TagsTab::editCustomTags);
    grid->addWidget(m_customTags, line, 2, 1, 2);
    ++line;
    QLabel *comment = label(tr("Co&mment"), line, 0);
    grid->addWidget(makeField(TagField::Comment, tr("Comment")), line, 1, 1, 3);
    comment->setBuddy(m_fields[TagField::Comment]);
    grid->setColumnMinimumWidth(0, labelWidth());
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return grid;
}

QLayout *TagsTabView::makeOptions()
{
    m_autoName = new QCheckBox(tr("Titles and numbers from the track names"), m_form);
    m_autoName->setObjectName(QStringLiteral("autoName"));
    m_autoName->setToolTip(tr("The first selected file gets the first name, and so on"));
    Bindings::bind(m_tab.autoName(), m_autoName);
    m_trackNames = makeButton({}, QStringLiteral("trackNames"));
    m_trackNames->setToolTip(tr("Type, paste or load the names of the tracks (Ctrl+N)"));
    connect(m_trackNames, &QPushButton::clicked, &m_tab, &TagsTab::showNamesWindow);
    m_writeEmptyTags = new QCheckBox(tr("Write empty fields"), m_form);
    m_writeEmptyTags->setObjectName(QStringLiteral("writeEmptyTags"));
    m_writeEmptyTags->setToolTip(tr(
        "Empty fields clear what the files have there.\nTags and pictures that are not shown here go too."));
    Bindings::bind(m_tab.writeEmptyTags(), m_writeEmptyTags);
    m_previous = makeButton(tr("Use Previ&ous Tags"), QStringLiteral("usePreviousTagsButton"));
    m_previous->setToolTip(tr("Fill in what was last written, but for title and track (Ctrl+R)"));
    follow(m_tab.usePreviousTagsButton(), m_previous, [] {});
    connect(m_previous, &QPushButton::clicked, &m_tab, &TagsTab::usePreviousTags);
    auto *grid = new QGridLayout;
    grid->setSpacing(gap);
    grid->addWidget(m_autoName, 0, 0);
    grid->addWidget(m_trackNames, 0, 1);
    grid->addWidget(m_writeEmptyTags, 1, 0);
    grid->addWidget(m_previous, 1, 1);
    grid->setColumnStretch(0, 1);
    return grid;
}

void TagsTabView::orderTabs()
{
    QList<QWidget *> order;
    for (const TagField field :
         {TagField::Title, TagField::Artist, TagField::AlbumArtist, TagField::Album, TagField::Composer,
          TagField::Genre, TagField::Track, TagField::TrackTotal, TagField::Disc, TagField::DiscTotal,
          TagField::Year, TagField::Month, TagField::Day}) {
        order << m_fields[field];
    }
    order << m_customTags << m_fields[TagField::Comment] << m_picture << m_choosePicture << m_removePicture
          << m_autoName << m_trackNames << m_writeEmptyTags << m_previous;
    for (qsizetype index = 1; index < order.size(); ++index) {
        setTabOrder(order[index - 1], order[index]);
    }
}

void TagsTabView::fillMenu(QMenu *menu, const std::function<void()> &comeForward)
{
    const auto add = [&](const QString &text, const QKeySequence &key, const std::function<void()> &act) {
        menu->addAction(text, key, this, [comeForward, act] {
            comeForward();
            act();
        });
    };
    add(tr("Load Tags From CUE Sheet..."), Qt::CTRL | Qt::Key_U, [this] {
        selectAllWhereNone();
        m_tab.loadTagsFromCueSheet();
    });
    add(tr("Track &Names…"), Qt::CTRL | Qt::Key_N, [this] {
        selectAllWhereNone();
        m_tab.showNamesWindow();
    });
    add(tr("&Custom Tags…"), Qt::CTRL | Qt::Key_K, [this] { m_tab.editCustomTags(); });
    add(tr("Use Previ&ous Tags"), Qt::CTRL | Qt::Key_R, [this] { m_tab.usePreviousTags(); });
    menu->addSeparator();
    add(tr("Choose Album &Art…"), Qt::CTRL | Qt::Key_P, [this] { m_tab.chooseAlbumArt(); });
    add(tr("&Paste Album Art"), Qt::CTRL | Qt::SHIFT | Qt::Key_V, [this] { m_picture->paste(); });
    menu->addSeparator();
    add(tr("P&revious File"), Qt::CTRL | Qt::Key_Up, [this] { list().selectBeside(-1); });
    add(tr("N&ext File"), Qt::CTRL | Qt::Key_Down, [this] { list().selectBeside(1); });
    add(tr("&Select All Files"), Qt::CTRL | Qt::SHIFT | Qt::Key_A, [this] { list().selectAll(); });
}

void TagsTabView::selectAllWhereNone()
{
    if (!list().hasSelection()) {
        list().selectAll();
    }
}

QString TagsTabView::reasonToWait() const
{
    if (m_tab.selectedFiles().isEmpty()) {
        return tr("Select the files that are to be written");
    }
    return m_tab.isBusy() ? tr("Tags are still being read") : QString();
}

void TagsTabView::resizeEvent(QResizeEvent *event)
{
    TabView::resizeEvent(event);
    options().setColumnWidth(std::clamp(width() * 11 / 20, narrowestForm, widestForm));
}

void TagsTabView::showField(TagField field, QLineEdit *box) const
{
    const bool several = m_tab.selectedFiles().size() > 1;
    box->setReadOnly(m_tab.isReading());
    const bool perFile = field == TagField::Title || field == TagField::Track;
    if (perFile && several) {
        const bool named = m_tab.autoName().isOn();
        const QString title = named ? tr("from the track names") : tr("each file's own");
        box->setPlaceholderText(field == TagField::Title ? title : QStringLiteral("…"));
        return;
    }
    static const QHash<TagField, QString> usual{
        {TagField::Year, tr("yyyy")}, {TagField::Month, tr("mm")}, {TagField::Day, tr("dd")}};
    static const QSet<TagField> narrow{TagField::TrackTotal, TagField::Disc,  TagField::DiscTotal,
                                       TagField::Year,       TagField::Month, TagField::Day};
    const QString differing = narrow.contains(field) ? QStringLiteral("…") : tr("several values");
    box->setPlaceholderText(m_tab.differs(field) ? differing : usual.value(field));
}

void TagsTabView::showSelection()
{
    constexpr int roomForName = 280; // device-independent pixels
    const qsizetype count = m_tab.selectedFiles().size();
    const qsizetype read = m_tab.filesRead();
    const QLocale locale;
    if (count == 0) {
        m_count->setText(tr("Select files to see and change their tags"));
    } else if (m_tab.isReading() && read > 0) {
        m_count->setText(tr("reading %1 of %2…").arg(locale.toString(read), locale.toString(count)));
    } else if (count == 1) {
        const QString name = PathNames::lastPathComponent(m_tab.selectedFiles().constFirst());
        m_count->setText(fontMetrics().elidedText(name, Qt::ElideMiddle, roomForName));
    } else {
        m_count->setText(tr("%1 files").arg(locale.toString(count)));
    }
    m_progress->setRange(0, static_cast<int>(std::max<qsizetype>(count, 1)));
    m_progress->setValue(static_cast<int>(read));
    m_progress->setVisible(m_tab.isReading() && read > 0);
}

void TagsTabView::showState()
{
    showSelection();
    for (auto field = m_fields.cbegin(); field != m_fields.cend(); ++field) {
        showField(field.key(), field.value());
    }
    const qsizetype names = m_tab.names().size();
    m_trackNames->setText(names > 0 ? tr("Track &Names (%1)…").arg(names) : tr("Track &Names…"));
    int custom = 0;
    for (int row = 1; row <= KruvCustomTagsPanel::rowCount; ++row) {
        custom += m_tab.customTagsPanel().customTagNameText(row).isEmpty() ? 0 : 1;
    }
    m_customTags->setText(custom > 0 ? tr("Cu&stom Tags (%1)…").arg(custom) : tr("Cu&stom Tags…"));
    showPicture();
    showWhetherCommandRuns();
}

void TagsTabView::showPicture()
{
    const AlbumArtControl &field = m_tab.albumArtImageView();
    m_picture->setPicture(field.preview(),
                          m_tab.picturesDiffer() ? tr("several pictures") : tr("Drop a picture here"));
    m_pictureDescription->setText(field.description());
    m_removePicture->setEnabled(field.art() != nullptr);
}

} // namespace kruv
