/// The program's own files and facts.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace dinmala {

/// A scalar of a property list; other entries are left out.
using PropertyValue = std::variant<bool, std::int64_t, double, std::string>;
using PropertyList = std::map<std::string, PropertyValue, std::less<>>;

struct Bundle {
    /// The program's identity: the absolute path of its executable.
    std::string bundlePath;
    /// The file of a resource such as "logo", "png"; nothing when it is absent.
    std::function<std::optional<std::string>(std::string_view name, std::string_view type)> pathForResource;
    /// The information property list.
    PropertyList info;
};

}  // namespace dinmala
