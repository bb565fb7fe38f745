/// The facts that are kept beside the source tree.
#pragma once

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace dinmala::panchanga {

/// The cells of a line of comma-separated values; quotes are not looked at.
inline std::vector<std::string> cells(const std::string& line) {
    std::vector<std::string> found;
    std::istringstream text{line};
    for (std::string cell; std::getline(text, cell, ',');) found.push_back(cell);
    return found;
}

/// A file's lines without its head; none where it is not.
inline std::vector<std::string> truth(const std::string& name, std::size_t head) {
    std::ifstream file{SOURCE_DIR "/../../shared/truth/" + name};
    if (!file.is_open()) file.open(SOURCE_DIR "/../shared/truth/" + name);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(std::min(head, lines.size())));
    return lines;
}

}  // namespace dinmala::panchanga
