#include "foundation/PropertyList.h"

#include "foundation/PropertyListLimits.h"
#include "foundation/Text.h"

#include <cstdlib>
#include <limits>
#include <memory>

#include <plist/plist.h>

namespace corvane {

namespace {

struct FreeNode {
    void operator()(void* node) const { plist_free(node); }
};
using OwnedNode = std::unique_ptr<void, FreeNode>;

std::string takeText(char* text) {
    std::string result = text ? text : "";
    std::free(text);
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

struct NodeMaker {
    plist_t operator()(const PropertyList::Other&) const { return plist_new_string(""); }
    plist_t operator()(bool flag) const { return plist_new_bool(flag ? 1 : 0); }
    plist_t operator()(std::int64_t number) const {
        return plist_new_uint(static_cast<std::uint64_t>(number));
    }
    plist_t operator()(double number) const { return plist_new_real(number); }
    plist_t operator()(const std::string& text) const { return plist_new_string(text.c_str()); }
    plist_t operator()(const Bytes& bytes) const {
        return plist_new_data(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    plist_t operator()(const PropertyList::Array& array) const {
        const plist_t node = plist_new_array();
        for (const auto& item : array)
            plist_array_append_item(node, std::visit(*this, item.value));
        return node;
    }
    plist_t operator()(const PropertyList::Dictionary& dictionary) const {
        const plist_t node = plist_new_dict();
        for (const auto& [key, item] : dictionary) {
            // The format's keys are C strings of text: another key would take a third one's place.
            const bool isKey = key.find('\0') == std::string::npos && text::isValidUtf8(key);
            if (!isKey || item.as<PropertyList::Other>()) continue;
            plist_dict_set_item(node, key.c_str(), std::visit(*this, item.value));
        }
        return node;
    }
};

} // namespace

Result<PropertyList> PropertyList::parse(std::string_view bytes) {
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max())
        return Error{"The property list is too large."};
    plist_t parsed = nullptr;
    if (!bytes.empty() && isWithinPropertyListLimits(bytes))
        plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &parsed);
    const OwnedNode node(parsed);
    if (!node) return Error{"The data isn't a property list."};
    return fromNode(node.get());
}

std::string PropertyList::toBinary() const {
    const OwnedNode node(std::visit(NodeMaker{}, value));
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node.get(), &bytes, &length);
    std::string result(bytes, length);
    plist_to_bin_free(bytes);
    return result;
}

} // namespace corvane
