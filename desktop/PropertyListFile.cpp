#include "desktop/PropertyListFile.h"

#include <plist/plist.h>

#include <cstdlib>
#include <memory>

#include "desktop/Files.h"

namespace dinmala {
namespace {

/// Lists nest, and the library frees them by recursion: short enough that even a
/// file of nothing but opening tags leaves the stack alone.
constexpr std::size_t kLimit = 1 << 16;

using Node = std::unique_ptr<void, decltype(&plist_free)>;
using Text = std::unique_ptr<char, decltype(&std::free)>;

std::optional<PropertyValue> scalar(plist_t node) {
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN: {
            std::uint8_t value = 0;
            plist_get_bool_val(node, &value);
            return value != 0;
        }
        case PLIST_UINT: {
            std::uint64_t value = 0;  // a negative number comes as its two's complement
            plist_get_uint_val(node, &value);
            return static_cast<std::int64_t>(value);
        }
        case PLIST_REAL: {
            double value = 0;
            plist_get_real_val(node, &value);
            return value;
        }
        case PLIST_STRING: {
            char* value = nullptr;
            plist_get_string_val(node, &value);
            const Text owned(value, &std::free);
            return std::string(value != nullptr ? value : "");
        }
        default:
            return std::nullopt;
    }
}

/// The library ends the program when it is asked for a text with a zero in it.
/// XML cannot have one; what does is malformed.
Node parseXml(const std::string& text) {
    plist_t root = nullptr;
    if (text.find('\0') == std::string::npos) {
        plist_from_xml(text.c_str(), static_cast<std::uint32_t>(text.size()), &root);
    }
    return {root, &plist_free};
}

Node parse(std::string_view text) {
    const std::string terminated(text);
    const auto length = static_cast<std::uint32_t>(text.size());
    if (plist_is_binary(terminated.c_str(), length) == 0) return parseXml(terminated);

    // By way of XML, which shows whether a text has a zero in it.
    plist_t parsed = nullptr;
    plist_from_bin(terminated.c_str(), length, &parsed);
    const Node binary(parsed, &plist_free);
    if (!binary) return {nullptr, &plist_free};
    char* xml = nullptr;
    std::uint32_t xmlLength = 0;
    plist_to_xml(binary.get(), &xml, &xmlLength);
    const Text owned(xml, &std::free);
    return parseXml(xml != nullptr ? std::string(xml, xmlLength) : std::string());
}

}  // namespace

std::optional<PropertyList> parsePropertyList(std::string_view text) {
    if (text.empty() || text.size() > kLimit) return std::nullopt;
    const Node root = parse(text);
    if (!root || plist_get_node_type(root.get()) != PLIST_DICT) return std::nullopt;

    PropertyList list;
    plist_dict_iter raw = nullptr;
    plist_dict_new_iter(root.get(), &raw);
    const std::unique_ptr<void, decltype(&std::free)> iterator(raw, &std::free);
    while (true) {
        char* key = nullptr;
        plist_t node = nullptr;
        plist_dict_next_item(root.get(), raw, &key, &node);
        const Text owned(key, &std::free);
        if (node == nullptr) return list;
        std::optional<PropertyValue> value = scalar(node);
        if (key != nullptr && value) list.insert_or_assign(key, *std::move(value));
    }
}

std::optional<PropertyList> readPropertyList(const std::string& path) {
    const FileText file = readFile(path, kLimit);
    return file.ok() ? parsePropertyList(file.text) : std::nullopt;
}

}  // namespace dinmala
