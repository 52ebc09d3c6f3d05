#include "foundation/PropertyList.h"

#include "foundation/BinaryPropertyList.h"
#include "foundation/Text.h"

#include <cstdlib>
#include <limits>
#include <memory>
#include <utility>

#include <plist/plist.h>

namespace corvane {

namespace {

struct FreeNode {
    void operator()(void* node) const { plist_free(node); }
};
using OwnedNode = std::unique_ptr<void, FreeNode>;

std::string takeText(char* owned) {
    auto result = text::replacingInvalidUtf8(owned ? owned : "");
    std::free(owned);
    return result;
}

PropertyList fromNode(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t flag = 0;
        plist_get_bool_val(node, &flag);
        return {flag != 0};
    }
    case PLIST_UINT: {
        std::uint64_t number = 0;
        plist_get_uint_val(node, &number);
        return {static_cast<std::int64_t>(number)};
    }
    case PLIST_REAL: {
        double number = 0;
        plist_get_real_val(node, &number);
        return {number};
    }
    case PLIST_STRING: {
        char* text = nullptr;
        plist_get_string_val(node, &text);
        return {takeText(text)};
    }
    case PLIST_DATA: {
        std::uint64_t length = 0;
        const char* bytes = plist_get_data_ptr(node, &length);
        return {Bytes(bytes, bytes + length)};
    }
    case PLIST_ARRAY: {
        PropertyList::Array array;
        const auto count = plist_array_get_size(node);
        for (std::uint32_t i = 0; i < count; ++i)
            array.push_back(fromNode(plist_array_get_item(node, i)));
        return {std::move(array)};
    }
    case PLIST_DICT: {
        PropertyList::Dictionary dictionary;
        plist_dict_iter iterator = nullptr;
        plist_dict_new_iter(node, &iterator);
        for (;;) {
            char* key = nullptr;
            plist_t item = nullptr;
            plist_dict_next_item(node, iterator, &key, &item);
            if (!key) break;
            dictionary.emplace(takeText(key), fromNode(item));
        }
        std::free(iterator);
        return {std::move(dictionary)};
    }
    default:
        return {};
    }
}

/// Ends are left out of account, so that no trick with comments gets more past the count: the
/// library takes each level of nesting from the stack.
bool hasFewContainers(std::string_view xml) {
    constexpr std::size_t most = 5'000;
    std::size_t containers = 0;
    for (const std::string_view tag : {"<array", "<dict"}) {
        for (auto at = xml.find(tag); at != std::string_view::npos; at = xml.find(tag, at + 1))
            ++containers;
    }
    return containers <= most;
}

Result<PropertyList> readXml(std::string_view xml) {
    // XML has no null character; the library ends the program over one in a text.
    const bool isText = !xml.empty() && xml.find('\0') == std::string_view::npos;
    const bool isSmall = xml.size() <= std::numeric_limits<std::uint32_t>::max();
    const Error noList{"The data isn't a property list."};
    if (!isText || !isSmall || !hasFewContainers(xml)) return noList;
    plist_t parsed = nullptr;
    plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &parsed);
    const OwnedNode node(parsed);
    if (!node) return noList;
    return fromNode(node.get());
}

} // namespace

Result<PropertyList> PropertyList::parse(std::string_view bytes) {
    return bytes.starts_with("bplist") ? binaryPropertyList::read(bytes) : readXml(bytes);
}

std::string PropertyList::toBinary() const {
    return binaryPropertyList::write(*this);
}

} // namespace corvane
