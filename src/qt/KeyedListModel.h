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
        removeRowsNotIn(next);
        insertAndMoveTo(next);
        for (std::size_t i = 0; i < next.size(); ++i) {
            if (rows_[i] == next[i]) continue;
            rows_[i] = next[i];
            emit dataChanged(index(int(i)), index(int(i)));
        }
    }

private:
    static auto keysOf(const std::vector<Row>& rows) {
        std::set<decltype(rows.front().key())> keys;
        for (const auto& row : rows)
            keys.insert(row.key());
        return keys;
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
