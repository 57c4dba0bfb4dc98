#include "platform/qt/windows/TableWidget.h"

#include "platform/qt/text/VisibleText.h"

#include <QFont>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QStringList>

#include <algorithm>
#include <limits>

namespace tolvane::platform {

namespace {

/// More than any column shows.
constexpr qsizetype longestCell = 1'000;
constexpr qsizetype longestToolTip = 4'000;
constexpr qsizetype mostToolTipLines = 30;

QString cellText(const TableRows& rows, const QModelIndex& index) {
    return visibleText(
        rows.text(static_cast<std::size_t>(index.row()), static_cast<std::size_t>(index.column())));
}

int asInt(std::size_t number) {
    return static_cast<int>(std::min<std::size_t>(number, std::numeric_limits<int>::max()));
}

QVariant alignmentOf(const TableColumn& column) {
    return QVariant::fromValue((column.isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

} // namespace

void TableWidgetModel::setTable(const Table* table) {
    beginResetModel();
    table_ = table;
    rowCount_ = rows() != nullptr ? asInt(rows()->rowCount()) : 0;
    endResetModel();
}

void TableWidgetModel::takeRows() {
    setTable(table_);
}

void TableWidgetModel::takeCells() {
    if (rowCount_ > 0) {
        emit dataChanged(index(0, 0), index(rowCount_ - 1, columnCount() - 1));
    }
}

const TableRows* TableWidgetModel::rows() const {
    return table_ != nullptr ? table_->rows() : nullptr;
}

int TableWidgetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rowCount_;
}

int TableWidgetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || rows() == nullptr ? 0 : asInt(rows()->columns().size());
}

QVariant TableWidgetModel::data(const QModelIndex& index, int role) const {
    if (rows() == nullptr || !index.isValid()) {
        return {};
    }
    const auto column = static_cast<std::size_t>(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return cutInMiddle(cellText(*rows(), index), longestCell);
    case Qt::ToolTipRole: {
        const QString text = cellText(*rows(), index);
        return text.isEmpty() ? QVariant()
                              : plainToolTip(boundedText(text, longestToolTip, mostToolTipLines));
    }
    case Qt::TextAlignmentRole:
        return alignmentOf(rows()->columns()[column]);
    case Qt::FontRole:
        if (rows()->isMarked(static_cast<std::size_t>(index.row()), column)) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        return {};
    default:
        return {};
    }
}

QString TableWidgetModel::textAt(const QModelIndex& index) const {
    return rows() != nullptr && index.isValid() ? cellText(*rows(), index) : QString();
}

QVariant TableWidgetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (rows() == nullptr || orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    const TableColumn& column = rows()->columns()[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole) {
        return QString::fromStdString(column.title);
    }
    if (role == Qt::TextAlignmentRole) {
        return alignmentOf(column);
    }
    return {};
}

void TableWidgetModel::sort(int column, Qt::SortOrder order) {
    if (table_ != nullptr && column >= 0) {
        table_->requestOrder({static_cast<std::size_t>(column), order == Qt::AscendingOrder});
    }
}

TableWidget::TableWidget(QWidget* parent) : QTreeView(parent) {
    setModel(&model_);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(SingleSelection);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setSortIndicator(0, Qt::AscendingOrder);
    header()->setStretchLastSection(false);
    setSortingEnabled(true);
}

void TableWidget::fitColumns(const TableRows& rows) {
    const int character = fontMetrics().horizontalAdvance(u'0');
    for (std::size_t i = 0; i < rows.columns().size(); ++i) {
        // One more for what is around the text.
        const int wanted = asInt(rows.columns()[i].width + 1) * character;
        const int column = static_cast<int>(i);
        setColumnWidth(column, std::max(wanted, header()->sectionSizeHint(column)));
    }
}

QString TableWidget::selectedText() const {
    QModelIndexList selected = selectionModel()->selectedRows();
    std::ranges::sort(selected, {}, &QModelIndex::row);
    QStringList lines;
    for (const QModelIndex& row : selected) {
        QStringList cells;
        for (int column = 0; column < model_.columnCount(); ++column) {
            cells += model_.textAt(row.siblingAtColumn(column));
        }
        lines += cells.join(u'\t');
    }
    return lines.join(u'\n');
}

QSize TableWidget::sizeHint() const {
    return minimumSizeHint().expandedTo(minimumSize());
}

TableMirror::TableMirror(Table& table, TableWidget& widget) : table_(table), widget_(&widget) {
    if (widget.isVisibleTo(widget.window())) {
        // A table that is shown from the start is what its window is for.
        widget.setFocus(Qt::OtherFocusReason);
    }
    widget.shownModel().setTable(&table);
    takeRows();
    rows_ = table.observeRows([this] { takeRows(); });
    cells_ = table.observeCells([this] {
        if (widget_) {
            widget_->shownModel().takeCells();
        }
    });
    selection_ = table.observeSelection([this] { showSelection(); });
    selecting_ = QObject::connect(
        widget.selectionModel(), &QItemSelectionModel::currentRowChanged, &widget,
        [this](const QModelIndex& current) {
            if (!isTaking_) {
                table_.selectRow(
                    current.isValid() ? std::optional(static_cast<std::size_t>(current.row()))
                                      : std::nullopt);
            }
        });
    opening_ = QObject::connect(&widget, &QTreeView::activated, &widget, [this](const QModelIndex& index) {
        table_.openRow(static_cast<std::size_t>(index.row()));
    });
}

TableMirror::~TableMirror() {
    QObject::disconnect(selecting_);
    QObject::disconnect(opening_);
    if (widget_) {
        widget_->shownModel().setTable(nullptr);
    }
}

void TableMirror::takeRows() {
    if (!widget_) {
        return;
    }
    // Qt forgets the selection meanwhile.
    isTaking_ = true;
    widget_->shownModel().takeRows();
    isTaking_ = false;
    if (widget_->isHiddenWithoutRows()) {
        widget_->setVisible(table_.rows() != nullptr);
    }
    if (table_.rows() != nullptr && fitted_ != table_.rows()) {
        fitted_ = table_.rows();
        widget_->fitColumns(*fitted_);
    }
    showSelection();
}

void TableMirror::showSelection() {
    if (!widget_) {
        return;
    }
    const auto row = table_.selectedRow();
    const QModelIndex current = widget_->currentIndex();
    const int wanted = row ? asInt(*row) : -1;
    if (current.row() != wanted) {
        // The column stays where the keyboard is.
        const QModelIndex index =
            row ? widget_->shownModel().index(wanted, std::max(current.column(), 0)) : QModelIndex();
        widget_->setCurrentIndex(index);
    }
}

} // namespace tolvane::platform
