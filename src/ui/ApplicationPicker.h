#pragma once

#include "foundation/Published.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

class Applications;

/// The panel in which one of the installed applications is picked: those whose names contain what
/// was typed, one of them selected. Main thread.
class ApplicationPicker {
public:
    struct Entry {
        std::string name;
        /// Of the bundle.
        std::string path;

        bool operator==(const Entry&) const = default;
    };

    /// Asks once what is installed.
    explicit ApplicationPicker(const Applications& applications);

    /// Fires before anything read here changes.
    ChangeSignal objectWillChange;

    /// In the user's order of names.
    const std::vector<Entry>& entries() const { return entries_; }
    /// What stands in the place of the entries where there are none.
    std::string emptyText() const;
    const std::string& searchText() const { return searchText_; }
    /// Selects the first entry that is left, or none where nothing is typed.
    void setSearchText(std::string typed);

    std::optional<std::size_t> selected() const { return selected_; }
    void select(std::size_t entry);
    /// Selects the entry so many places further, or the last one on the way there.
    void moveSelection(int by);
    /// The path of the selected entry.
    std::optional<std::string> chosen() const;

private:
    std::vector<Entry> installed_;
    std::vector<Entry> entries_;
    Published<std::string> searchText_{objectWillChange};
    std::optional<std::size_t> selected_;
};

} // namespace corvane
