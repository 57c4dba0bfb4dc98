#pragma once

#include "platform/model/Observers.h"
#include "platform/model/Table.h"

#include <QAbstractTableModel>
#include <QPointer>
#include <QString>
#include <QTreeView>
#include <QVariant>

namespace tolvane::platform {

/// A model table for Qt, which asks for a cell when it paints it. Hidden characters are written out, and very
/// long texts are cut in their middle.
class TableWidgetModel final : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Null shows nothing. The table outlives this object or is replaced by null.
    void setTable(const Table* table);

    /// To be called when the table's rows or cells have changed.
    void takeRows();
    void takeCells();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// The whole text of a cell.
    QString textAt(const QModelIndex& index) const;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    const TableRows* rows() const;

    const Table* table_ = nullptr;
    int rowCount_ = 0; ///< As Qt knows it.
};

/// Shows a table whose rows are selected as a whole. Its heads order the rows; Return and a double click open
/// one. With the property "hiddenWithoutRows" it is hidden while its table has no rows at all.
class TableWidget final : public QTreeView {
public:
    explicit TableWidget(QWidget* parent = nullptr);

    TableWidgetModel& shownModel() { return model_; }

    /// Makes the columns as wide as the table wants them.
    void fitColumns(const TableRows& rows);

    /// The selected rows in their order, a line for each with tabs between the columns. Hidden characters are
    /// written out, so that each cell stays one.
    QString selectedText() const;

    bool isHiddenWithoutRows() const { return property("hiddenWithoutRows").toBool(); }

    QSize sizeHint() const override;

private:
    TableWidgetModel model_;
};

/// Shows a table in a widget, now and after each change, and passes on what the user does. The widget gets
/// the keyboard first, unless it is hidden. This must not outlive the table; the widget may be destroyed
/// before or after it.
class TableMirror {
public:
    TableMirror(Table& table, TableWidget& widget);
    TableMirror(const TableMirror&) = delete;
    TableMirror& operator=(const TableMirror&) = delete;
    ~TableMirror();

private:
    void takeRows();
    void showSelection();

    Table& table_;
    QPointer<TableWidget> widget_;
    const TableRows* fitted_ = nullptr;
    bool isTaking_ = false;
    Subscription rows_;
    Subscription cells_;
    Subscription selection_;
    QMetaObject::Connection selecting_;
    QMetaObject::Connection opening_;
};

} // namespace tolvane::platform
