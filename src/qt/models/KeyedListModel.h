#pragma once

#include <QAbstractListModel>
#include <algorithm>
#include <set>
#include <vector>

namespace corvane {

/// A list model whose rows keep their identity when the list around them changes: `Row` has a
/// member `key()` that is ordered and no other row's, and can be compared.
template <typename Row>
class KeyedListModel : public QAbstractListModel {
public:
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : int(rows_.size());
    }

protected:
    explicit KeyedListModel(std::vector<Row> rows) : rows_(std::move(rows)) {}

    const std::vector<Row>& rows() const { return rows_; }
    /// Null where there is no such row.
    const Row* rowAt(int row) const {
        return row >= 0 && row < rowCount() ? &rows_[std::size_t(row)] : nullptr;
    }

    /// Removes, inserts, moves and updates rows until they are these.
    void show(const std::vector<Row>& next) {
        if (!std::ranges::equal(rows_, next, {}, &Row::key, &Row::key)) {
            removeRowsNotIn(next);
            insertAndMoveTo(next);
        }
        update(next);
    }

    /// Gives what stands at each place other content, and adds or removes only at the end: for
    /// another list, rather than the same list after a change. What views made for a row stays for
    /// the row that takes its place.
    void showOther(const std::vector<Row>& next) {
        if (next.size() < rows_.size()) {
            beginRemoveRows({}, int(next.size()), rowCount() - 1);
            rows_.resize(next.size());
            endRemoveRows();
        }
        update(next);
        if (next.size() > rows_.size()) {
            beginInsertRows({}, rowCount(), int(next.size()) - 1);
            rows_.insert(rows_.end(), next.begin() + std::ptrdiff_t(rows_.size()), next.end());
            endInsertRows();
        }
    }

private:
    static auto keysOf(const std::vector<Row>& rows) {
        std::set<decltype(rows.front().key())> keys;
        for (const auto& row : rows)
            keys.insert(row.key());
        return keys;
    }

    /// Changes the rows that differ from those at their place; each run of them is told of once.
    void update(const std::vector<Row>& next) {
        const auto isOther = [&](std::size_t i) { return !(rows_[i] == next[i]); };
        for (std::size_t begin = 0; begin < rows_.size(); ++begin) {
            std::size_t end = begin;
            for (; end < rows_.size() && isOther(end); ++end)
                rows_[end] = next[end];
            if (end > begin) emit dataChanged(index(int(begin)), index(int(end - 1)));
            begin = end;
        }
    }

    void removeRowsNotIn(const std::vector<Row>& next) {
        const auto staying = keysOf(next);
        for (std::size_t end = rows_.size(); end > 0;) {
            std::size_t begin = end;
            while (begin > 0 && !staying.contains(rows_[begin - 1].key()))
                --begin;
            if (begin == end) {
                --end;
                continue;
            }
            beginRemoveRows({}, int(begin), int(end - 1));
            rows_.erase(rows_.begin() + std::ptrdiff_t(begin), rows_.begin() + std::ptrdiff_t(end));
            endRemoveRows();
            end = begin;
        }
    }

    void insertAndMoveTo(const std::vector<Row>& next) {
        const auto known = keysOf(rows_);
        for (std::size_t i = 0; i < next.size();) {
            if (i < rows_.size() && rows_[i].key() == next[i].key()) {
                ++i;
                continue;
            }
            const auto at = rows_.begin() + std::ptrdiff_t(i);
            if (known.contains(next[i].key())) {
                const auto from = std::find_if(
                    at, rows_.end(), [&](const Row& row) { return row.key() == next[i].key(); });
                const int source = int(from - rows_.begin());
                beginMoveRows({}, source, source, {}, int(i));
                std::rotate(at, from, from + 1);
                endMoveRows();
                ++i;
                continue;
            }
            std::size_t end = i;
            while (end < next.size() && !known.contains(next[end].key()))
                ++end;
            beginInsertRows({}, int(i), int(end - 1));
            rows_.insert(at, next.begin() + std::ptrdiff_t(i), next.begin() + std::ptrdiff_t(end));
            endInsertRows();
            i = end;
        }
    }

    std::vector<Row> rows_;
};

} // namespace corvane
