// A list model over value rows that receives a whole new list and announces only the differences.
#pragma once

#include "views/models/ListDiff.h"

#include <QAbstractListModel>
#include <QList>

#include <algorithm>
#include <variant>
#include <vector>

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
    /// Shares `rows`. Announces the least steps. Where these would take longer than a frame, only
    /// rows to which persistent indexes refer stay; all others are taken out and come in again.
    void setRows(const QList<Row>& rows)
    {
        if (rows == m_rows)
            return;
        std::vector<ListStep> steps = listSteps(m_rows, rows, &Row::key);
        if (areUsersKnown() && !areFollowed(steps, std::max(m_rows.size(), rows.size()))) {
            const QList<Row> inUse = rowsInUse();
            follow(listSteps(m_rows, inUse, &Row::key), inUse);
            steps = listSteps(m_rows, rows, &Row::key);
        }
        follow(steps, rows);
    }

    /// Whether each view of the model itself has persistent indexes of the rows that must stay.
    virtual bool areUsersKnown() const { return true; }

private:
    struct RowRun
    {
        int first = 0;
        int last = 0;
    };

    QList<Row> rowsInUse() const
    {
        std::vector<int> places;
        const QModelIndexList indexes = this->persistentIndexList();
        places.reserve(static_cast<std::size_t>(indexes.size()));
        for (const QModelIndex& index : indexes)
            places.push_back(index.row());
        std::ranges::sort(places);
        places.erase(std::unique(places.begin(), places.end()), places.end());
        QList<Row> inUse;
        inUse.reserve(static_cast<qsizetype>(places.size()));
        for (const int place : places)
            inUse.append(m_rows.at(place));
        return inUse;
    }

    /// The steps lead to `rows`.
    void follow(const std::vector<ListStep>& steps, const QList<Row>& rows)
    {
        std::vector<InsertRows> insertions;
        for (const ListStep& step : steps) {
            if (const auto* const insertion = std::get_if<InsertRows>(&step))
                insertions.push_back(*insertion);
            else if (const auto* const removal = std::get_if<RemoveRows>(&step))
                remove(*removal);
            else
                move(std::get<MoveRow>(step));
        }
        const std::vector<RowRun> changed = changedRuns(rows, insertions);
        for (const InsertRows& insertion : insertions) {
            beginInsertRows({}, insertion.first, insertion.first + insertion.count - 1);
            // Nothing but the inserted rows may change now. Where they are all that is left, no row
            // has to be copied.
            if (changed.empty() && m_rows.size() + insertion.count == rows.size())
                m_rows = rows;
            else
                insertCopies(insertion, rows);
            endInsertRows();
        }
        m_rows = rows;
        for (const RowRun& run : changed)
            Q_EMIT this->dataChanged(this->index(run.first), this->index(run.last));
    }

    /// Each step shifts the rows behind it, and its views follow it by itself.
    static bool areFollowed(const std::vector<ListStep>& steps, qsizetype rowCount)
    {
        constexpr qsizetype alwaysFollowed = 32;
        constexpr qsizetype mostShiftedRows = 1'000'000;
        const auto stepCount = static_cast<qsizetype>(steps.size());
        return stepCount <= alwaysFollowed || stepCount * rowCount <= mostShiftedRows;
    }

    void remove(const RemoveRows& step)
    {
        beginRemoveRows({}, step.first, step.first + step.count - 1);
        m_rows.remove(step.first, step.count);
        endRemoveRows();
    }

    void move(const MoveRow& step)
    {
        // The item model expects the destination in the list from which nothing is taken out yet.
        beginMoveRows({}, step.from, step.from, {}, step.to > step.from ? step.to + 1 : step.to);
        m_rows.move(step.from, step.to);
        endMoveRows();
    }

    void insertCopies(const InsertRows& step, const QList<Row>& rows)
    {
        m_rows.insert(step.first, step.count, rows.at(step.first));
        std::copy_n(rows.begin() + step.first, step.count, m_rows.begin() + step.first);
    }

    /// The runs of neighbouring rows of the new list that are there already and differ. The present
    /// rows are those of the new list that `insertions` do not insert, in order.
    std::vector<RowRun> changedRuns(const QList<Row>& rows,
                                    const std::vector<InsertRows>& insertions) const
    {
        std::vector<RowRun> runs;
        auto insertion = insertions.begin();
        int row = 0;
        for (const Row& present : m_rows) {
            for (; insertion != insertions.end() && insertion->first == row; ++insertion)
                row += insertion->count;
            if (present != rows.at(row)) {
                if (!runs.empty() && runs.back().last == row - 1)
                    runs.back().last = row;
                else
                    runs.push_back({row, row});
            }
            ++row;
        }
        return runs;
    }

    QList<Row> m_rows;
};

} // namespace kelpa
