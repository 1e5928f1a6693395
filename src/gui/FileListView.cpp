// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/FileListView.h"

#include "formats/Formats.h"
#include "gui/Glyphs.h"
#include "gui/NameWidth.h"
#include "gui/QuietLabel.h"
#include "tabs/BaseTab.h"

#include <QAction>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRubberBand>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace kruv {

namespace {

constexpr int narrowestColumn = 211;
constexpr double columnMargin = 1.1;

/// A name that is wider than what shows of the column loses its middle, until a person scrolls sideways to
/// read all of it.
class FileNameDelegate : public QStyledItemDelegate
{
public:
    explicit FileNameDelegate(QTreeView *view)
        : QStyledItemDelegate(view)
        , m_view(view)
    {
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        constexpr int roomAround = 6;
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, roomAround);
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem visible = option;
        if (m_view->horizontalScrollBar()->value() == 0) {
            visible.rect.setRight(std::min(visible.rect.right(), m_view->viewport()->rect().right()));
        }
        QStyledItemDelegate::paint(painter, visible, index);
    }

private:
    QTreeView *m_view;
};

template <typename Label> Label *centered(const QString &text, QWidget *parent)
{
    auto *label = new Label(text, parent);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    return label;
}

const QString dropIconName = QStringLiteral("dropIcon");

QPixmap dropIcon()
{
    constexpr int size = 64;
    return glyphIcon(Glyph::DropFiles).pixmap(size, QIcon::Disabled);
}

/// "FLAC, WAV or AIFF"; other spellings of a format's type go without saying.
QString kindsText(QStringList kinds)
{
    kinds.removeIf([](const QString &kind) {
        const Format *format = Formats::ofType(kind);
        return format && format->types.front() != kind;
    });
    if (kinds.size() < 2) {
        return kinds.value(0);
    }
    const QString last = kinds.takeLast();
    return FileListView::tr("%1 or %2").arg(kinds.join(QStringLiteral(", ")), last);
}

} // namespace

FileListView::FileListView(BaseTab &tab, const QStringList &kinds, QWidget *parent)
    : QStackedWidget(parent)
    , m_tab(tab)
    , m_empty(makeEmptyPage(kinds))
    , m_list(new QTreeView(this))
{
    makeList();
    addWidget(m_empty);
    addWidget(m_list);
    connect(&tab.tableModel(), &QAbstractItemModel::modelReset, this, &FileListView::showFittingPage);
    showFittingPage();
}

QWidget *FileListView::makeEmptyPage(const QStringList &kinds)
{
    auto *page = new QFrame(this);
    page->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    page->setBackgroundRole(QPalette::Base);
    page->setAutoFillBackground(true);

    auto *icon = new QLabel(page);
    icon->setObjectName(dropIconName);
    icon->setPixmap(dropIcon());
    icon->setAlignment(Qt::AlignCenter);
    auto *invitation = centered<QLabel>(tr("Drop files or folders here"), page);
    QFont large = invitation->font();
    large.setPointSizeF(large.pointSizeF() * 1.25);
    invitation->setFont(large);
    auto *types = centered<QuietLabel>(kindsText(kinds), page);
    types->setObjectName(QStringLiteral("emptyHint"));
    auto *add = new QPushButton(tr("Add Files…"), page);
    add->setObjectName(QStringLiteral("emptyAdd"));
    connect(add, &QPushButton::clicked, &m_tab, &BaseTab::addButtonClick);

    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(24, 12, 24, 12);
    layout->setSpacing(8);
    layout->addStretch(2);
    layout->addWidget(icon);
    layout->addWidget(invitation);
    layout->addWidget(types);
    layout->addSpacing(8);
    layout->addWidget(add, 0, Qt::AlignHCenter);
    layout->addStretch(3);
    return page;
}

void FileListView::makeList()
{
    m_list->setObjectName(QStringLiteral("fileList"));
    m_list->setAccessibleName(tr("Files"));
    m_list->setModel(&m_tab.tableModel());
    m_list->setItemDelegate(new FileNameDelegate(m_list));
    m_list->setRootIsDecorated(false);
    m_list->setIndentation(0);
    m_list->setUniformRowHeights(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setMinimumSectionSize(1);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->viewport()->installEventFilter(this);
    connect(m_list, &QWidget::customContextMenuRequested, this, &FileListView::showContextMenu);

    // The room for the names is known once the list has decided whether it needs a scroll bar.
    connect(m_list->verticalScrollBar(), &QScrollBar::rangeChanged, this, &FileListView::fitColumn,
            Qt::QueuedConnection);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { Q_EMIT selectedRowsChanged(selectedRows()); });

    // Names change their shape when scrolling begins or ends.
    connect(m_list->horizontalScrollBar(), &QScrollBar::valueChanged, m_list->viewport(),
            qOverload<>(&QWidget::update));

    auto *remove = new QAction(tr("Delete selected file(s)"), m_list);
    remove->setObjectName(QStringLiteral("deleteSelected"));
    remove->setShortcuts({QKeySequence::Delete, Qt::Key_Backspace});
    remove->setShortcutContext(Qt::WidgetShortcut);
    m_list->addAction(remove);
    connect(remove, &QAction::triggered, this, &FileListView::deleteSelected);
}

void FileListView::showFittingPage()
{
    const bool empty = m_tab.fileList().isEmpty();
    const bool hadFocus = isAncestorOf(focusWidget()) && focusWidget()->hasFocus();
    setCurrentWidget(empty ? m_empty : m_list);
    setFocusProxy(empty ? m_empty->findChild<QPushButton *>() : static_cast<QWidget *>(m_list));
    if (hadFocus) {
        setFocus();
    }
    m_list->setHeaderHidden(m_list->model()->columnCount() == 1);
    const int widest = widestName(m_tab.fileList(), m_list->font());
    m_columnWidth = std::max(narrowestColumn, static_cast<int>(std::ceil(widest * columnMargin)));
    fitColumn();
}

void FileListView::fitColumn()
{
    int room = m_list->viewport()->width();
    for (int column = 1; column < m_list->model()->columnCount(); ++column) {
        room -= m_list->columnWidth(column);
    }
    m_list->setColumnWidth(0, std::max(room, m_columnWidth));
}

void FileListView::resizeEvent(QResizeEvent *event)
{
    QStackedWidget::resizeEvent(event);
    if (m_dropMark) {
        m_dropMark->setGeometry(rect());
    }
}

bool FileListView::eventFilter(QObject *watched, QEvent *event)
{
    // The vertical scroll bar comes and goes by itself, and the list's own width with it.
    if (watched == m_list->viewport() && event->type() == QEvent::Resize) {
        fitColumn();
    }
    return QStackedWidget::eventFilter(watched, event);
}

void FileListView::changeEvent(QEvent *event)
{
    QStackedWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        // A picture doesn't follow the palette by itself.
        if (auto *icon = findChild<QLabel *>(dropIconName)) {
            icon->setPixmap(dropIcon());
        }
    }
}

void FileListView::setDropShown(bool shown)
{
    if (shown && !m_dropMark) {
        m_dropMark = new QRubberBand(QRubberBand::Rectangle, this);
        m_dropMark->setGeometry(rect());
    }
    if (m_dropMark) {
        m_dropMark->setVisible(shown);
    }
}

void FileListView::showContextMenu(const QPoint &position)
{
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("fileListContextMenu"));
    QAction *remove = menu.addAction(tr("Delete selected file(s)"), this, &FileListView::deleteSelected);
    remove->setEnabled(m_list->selectionModel()->hasSelection());
    QMenu *byExtension = menu.addMenu(tr("Delete files with extension:"));
    connect(byExtension, &QMenu::aboutToShow, this, [this, byExtension] { fillExtensionMenu(byExtension); });
    menu.exec(m_list->viewport()->mapToGlobal(position));
}

void FileListView::fillExtensionMenu(QMenu *menu)
{
    menu->clear();
    for (const QString &extension : m_tab.fileList().extensions()) {
        QAction *entry = menu->addAction(QString(extension).replace(u'&', QStringLiteral("&&")));
        connect(entry, &QAction::triggered, &m_tab,
                [this, extension] { m_tab.filterGivenExtension(extension); });
    }
}

QList<int> FileListView::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex &index : m_list->selectionModel()->selectedRows()) {
        rows.append(index.row());
    }
    return rows;
}

void FileListView::selectAll()
{
    m_list->selectAll();
}

bool FileListView::hasSelection() const
{
    return m_list->selectionModel()->hasSelection();
}

void FileListView::selectBeside(int step)
{
    const QList<int> rows = selectedRows();
    const int count = m_tab.fileList().count();
    int row = 0;
    if (!rows.isEmpty()) {
        const auto [first, last] = std::ranges::minmax(rows);
        row = first == last ? first + step : (step > 0 ? first : last);
    }
    if (row >= 0 && row < count) {
        m_list->selectionModel()->setCurrentIndex(m_tab.fileList().index(row),
                                                  QItemSelectionModel::ClearAndSelect);
        m_list->scrollTo(m_tab.fileList().index(row));
    }
}

void FileListView::deleteSelected()
{
    const QList<int> rows = selectedRows();
    if (rows.isEmpty()) {
        return;
    }
    const int next = *std::ranges::min_element(rows);
    m_tab.deleteSelectedRows(rows);
    const int last = m_tab.fileList().count() - 1;
    m_list->selectionModel()->setCurrentIndex(m_tab.tableModel().index(std::min(next, last), 0),
                                              QItemSelectionModel::NoUpdate);
}

} // namespace kruv
