#include "ui/ApplicationPicker.h"

#include "foundation/Text.h"
#include "platform/Applications.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

std::vector<ApplicationPicker::Entry> sortedForUser(const std::vector<Url>& bundles) {
    std::vector<std::string> names;
    for (const auto& bundle : bundles)
        names.push_back(path::stem(bundle.path()));
    const auto keys = text::localizedSortKeys(names);
    std::vector<std::pair<std::string, std::size_t>> order;
    for (std::size_t i = 0; i < keys.size(); ++i)
        order.emplace_back(keys[i], i);
    std::ranges::sort(order);
    std::vector<ApplicationPicker::Entry> entries;
    for (const auto& [key, i] : order)
        entries.push_back({names[i], bundles[i].path()});
    return entries;
}

} // namespace

ApplicationPicker::ApplicationPicker(const Applications& applications)
    : installed_(sortedForUser(applications.urlsForApplications(""))), entries_(installed_) {}

std::string ApplicationPicker::emptyText() const {
    return installed_.empty() ? "There are no applications." : "No application has this name.";
}

void ApplicationPicker::setSearchText(std::string typed) {
    searchText_ = std::move(typed);
    entries_ = installed_;
    const auto& wanted = searchText_.get();
    if (!wanted.empty()) {
        std::erase_if(entries_, [&](const Entry& entry) {
            return !text::containsIgnoringCaseAndDiacritics(entry.name, wanted);
        });
    }
    selected_.reset();
    if (!wanted.empty() && !entries_.empty()) selected_ = 0;
}

void ApplicationPicker::select(std::size_t entry) {
    if (entry >= entries_.size()) return;
    objectWillChange.fire();
    selected_ = entry;
}

void ApplicationPicker::moveSelection(int by) {
    if (entries_.empty()) return;
    const int last = static_cast<int>(entries_.size()) - 1;
    const int from = selected_ ? static_cast<int>(*selected_) : by > 0 ? -1 : last + 1;
    select(static_cast<std::size_t>(std::clamp(from + by, 0, last)));
}

std::optional<std::string> ApplicationPicker::chosen() const {
    return selected_ ? std::optional(entries_[*selected_].path) : std::nullopt;
}

} // namespace corvane
