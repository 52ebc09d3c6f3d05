#include "ui/ResourceDrops.h"

#include "ui/ResourceManagement.h"

#include <charconv>

namespace corvane {

void ResourceDropDelegate::dropEntered(const DropInfo& info) {
    if (info.hasFileURL()) list_.isAddResourceDropTarget = true;
}

void ResourceDropDelegate::dropExited() {
    list_.isAddResourceDropTarget = false;
}

bool ResourceDropDelegate::performDrop(const DropInfo& info) {
    if (!info.hasFileURL()) return false;
    for (const auto& bytes : info.fileUrls) {
        list_.later([&list = list_, bytes] {
            if (const auto url = Url::parse(bytes); url && url->isFile()) list.addFile(*url);
        });
    }
    return true;
}

void ResourceReorderDelegate::dropEntered(const DropInfo& info) {
    if (!isReorder(info)) return;
    list_.dropTargetIndexes.mutate([&](auto& indexes) { indexes.insert(targetIndex_); });
}

void ResourceReorderDelegate::dropExited() {
    list_.dropTargetIndexes.mutate([&](auto& indexes) { indexes.erase(targetIndex_); });
}

bool ResourceReorderDelegate::performDrop(const DropInfo& info) {
    if (!isReorder(info)) return false;
    const auto from = decimalInteger(*info.text);
    // Any program can drop a text. One that isn't the index of a row changes nothing.
    if (!from || *from < 0) return true;
    list_.later([delegate = *this, from = static_cast<std::size_t>(*from)]() mutable {
        delegate.dropExited();
        delegate.list_.moveRow(from, delegate.targetIndex_);
    });
    return true;
}

std::optional<long long> decimalInteger(const std::string& text) {
    const char* begin = text.data();
    const char* const end = begin + text.size();
    // from_chars knows no "+".
    if (begin != end && *begin == '+' && begin + 1 != end && begin[1] != '-') ++begin;
    long long value = 0;
    const auto [stop, error] = std::from_chars(begin, end, value);
    if (error != std::errc() || stop != end) return std::nullopt;
    return value;
}

} // namespace corvane
