#pragma once

#include "platform/model/Controls.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::platform {

/// One column of a table.
struct TableColumn {
    std::string title;
    std::size_t width = 0; ///< In characters, at first.
    bool isNumber = false; ///< Numbers end at the right edge.
};

/// The order in which a table's rows are to be.
struct TableOrder {
    std::size_t column = 0;
    bool isAscending = true;

    friend bool operator==(const TableOrder&, const TableOrder&) = default;
};

/// What a table shows. Cells are requested when they come into sight, so there may be any number of rows.
class TableRows {
public:
    TableRows() = default;
    TableRows(const TableRows&) = delete;
    TableRows& operator=(const TableRows&) = delete;
    virtual ~TableRows() = default;

    virtual const std::vector<TableColumn>& columns() const = 0;
    virtual std::size_t rowCount() const = 0;

    /// The text of a cell, in bytes that need not be UTF-8.
    virtual std::string text(std::size_t row, std::size_t column) const = 0;

    /// True for cells that are to be noticed.
    virtual bool isMarked(std::size_t row, std::size_t column) const = 0;
};

/// A table of which one row can be selected. The owner of the rows has to announce their changes.
class Table final : public Control {
public:
    /// Null at first.
    const TableRows* rows() const { return rows_.get(); }

    /// Replaces all rows and columns. Nothing is selected then.
    void setRows(std::shared_ptr<const TableRows> rows) {
        rows_ = std::move(rows);
        selectedRow_.reset();
        rowObservers_.notify();
    }

    /// To be called when the number of rows or their order has changed; `selected` is the row that is
    /// selected now.
    void rowsChanged(std::optional<std::size_t> selected) {
        selectedRow_ = selected;
        rowObservers_.notify();
    }

    /// To be called when texts or marks have changed, and nothing else.
    void cellsChanged() { cellObservers_.notify(); }

    /// The index of the selected row, if any.
    std::optional<std::size_t> selectedRow() const { return selectedRow_; }

    /// Notifies the observers if another row becomes selected.
    void selectRow(std::optional<std::size_t> row) {
        if (std::exchange(selectedRow_, row) != row) {
            selectionObservers_.notify();
        }
    }

    /// Sets what is called when the user wants another order or opens a row; initially nothing is.
    void setOrderHandler(std::function<void(TableOrder)> handler) { orderHandler_ = std::move(handler); }
    void setOpenHandler(std::function<void(std::size_t row)> handler) { openHandler_ = std::move(handler); }

    /// Both are for the front end.
    void requestOrder(TableOrder order) const {
        if (orderHandler_) {
            orderHandler_(order);
        }
    }
    void openRow(std::size_t row) const {
        if (openHandler_) {
            openHandler_(row);
        }
    }

    /// Called when rows came, went or moved, also if the selection changed with them.
    [[nodiscard]] Subscription observeRows(Observers::Function observer) {
        return rowObservers_.add(std::move(observer));
    }
    [[nodiscard]] Subscription observeCells(Observers::Function observer) {
        return cellObservers_.add(std::move(observer));
    }
    /// Called when another row was selected.
    [[nodiscard]] Subscription observeSelection(Observers::Function observer) {
        return selectionObservers_.add(std::move(observer));
    }

private:
    std::shared_ptr<const TableRows> rows_;
    std::optional<std::size_t> selectedRow_;
    std::function<void(TableOrder)> orderHandler_;
    std::function<void(std::size_t)> openHandler_;
    Observers rowObservers_;
    Observers cellObservers_;
    Observers selectionObservers_;
};

} // namespace tolvane::platform
