// A list model over value rows that receives a whole new list and announces only the differences.
#pragma once

#include "views/models/ListDiff.h"

#include <QAbstractListModel>
#include <QList>

#include <variant>

namespace kelpa {

/// A `Row` is a value with `==` and a hashable `key()` that is unique in the list. Rows with the
/// same key are one row for views: its delegate stays, whatever else of it changes.
template <class Row>
class RowListModel : public QAbstractListModel
{
public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }

    const QList<Row>& rows() const { return m_rows; }

protected:
    void setRows(const QList<Row>& rows)
    {
        if (rows == m_rows)
            return;
        for (const ListStep& step : listSteps(keys(m_rows), keys(rows)))
            std::visit([&](const auto& concrete) { apply(concrete, rows); }, step);
        announceChangedRows(rows);
    }

private:
    static auto keys(const QList<Row>& rows)
    {
        QList<decltype(rows.front().key())> result;
        result.reserve(rows.size());
        for (const Row& row : rows)
            result.append(row.key());
        return result;
    }

    void apply(const RemoveRows& step, const QList<Row>& /*rows*/)
    {
        beginRemoveRows({}, step.first, step.first + step.count - 1);
        m_rows.remove(step.first, step.count);
        endRemoveRows();
    }

    void apply(const MoveRow& step, const QList<Row>& /*rows*/)
    {
        // The item model expects the destination in the list from which nothing is taken out yet.
        beginMoveRows({}, step.from, step.from, {}, step.to > step.from ? step.to + 1 : step.to);
        m_rows.move(step.from, step.to);
        endMoveRows();
    }

    void apply(const InsertRows& step, const QList<Row>& rows)
    {
        beginInsertRows({}, step.first, step.first + step.count - 1);
        for (int row = step.first; row < step.first + step.count; ++row)
            m_rows.insert(row, rows.at(row));
        endInsertRows();
    }

    /// One signal for each run of neighbouring rows that differ.
    void announceChangedRows(const QList<Row>& rows)
    {
        const int count = static_cast<int>(rows.size());
        int first = 0;
        while (first < count) {
            int end = first;
            for (; end < count && m_rows.at(end) != rows.at(end); ++end)
                m_rows[end] = rows.at(end);
            if (end > first)
                Q_EMIT this->dataChanged(this->index(first), this->index(end - 1));
            first = end + 1;
        }
    }

    QList<Row> m_rows;
};

} // namespace kelpa
