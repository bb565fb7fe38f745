#include "desktop/InstalledBundle.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <utility>

#include "desktop/PropertyListFile.h"

namespace dinmala {
namespace {

/// The value of an environment variable; empty when it is not set.
std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// The path of the running executable. A program that was replaced while it runs
/// (an upgrade) still goes by its path.
std::string ownExecutable() {
    std::error_code error;
    std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
    constexpr std::string_view kReplaced = " (deleted)";
    if (path.ends_with(kReplaced) && !std::filesystem::exists(path, error)) path.resize(path.size() - kReplaced.size());
    return path;
}

std::string resourcesFolder(const std::filesystem::path& executable) {
    if (const std::string folder = environment("DINMALA_RESOURCES"); !folder.empty()) {
        return std::filesystem::absolute(folder).string();
    }
    const std::filesystem::path beside = executable.parent_path() / "resources";
    std::error_code error;
    if (std::filesystem::is_directory(beside, error)) return beside.string();
    return (executable.parent_path() / "../share/dinmala").lexically_normal().string();
}

}  // namespace

std::string fetchHelper(const std::string& executable) {
    const std::filesystem::path folder = std::filesystem::path{executable}.parent_path();
    std::error_code error;
    if (const auto beside = folder / "dinmala-fetch"; std::filesystem::exists(beside, error)) return beside.string();
    return (folder / "../libexec/dinmala/dinmala-fetch").lexically_normal().string();
}

std::string windowProgram(const std::string& executable) {
    const std::filesystem::path folder = std::filesystem::path{executable}.parent_path();
    for (const char* place : {"dinmala-window", "../../bin/dinmala-window"}) {
        const std::filesystem::path path = (folder / place).lexically_normal();
        if (access(path.c_str(), X_OK) == 0) return path.string();
    }
    return {};
}

Bundle makeBundle() {
    const std::string executable = ownExecutable();
    Bundle bundle = makeBundle(executable, resourcesFolder(executable));
    if (std::string host = environment("DINMALA_SITE_HOST"); !host.empty()) {
        bundle.info.insert_or_assign("DinmalaSiteHost", std::move(host));
    }
    return bundle;
}

Bundle makeBundle(std::string executable, std::string resources) {
    Bundle bundle;
    bundle.bundlePath = std::move(executable);
    bundle.pathForResource = [folder = std::move(resources)](std::string_view name,
                                                             std::string_view type) -> std::optional<std::string> {
        std::string file(name);
        if (!type.empty()) file.append(".").append(type);
        if (file.find('/') != std::string::npos) return std::nullopt;
        std::string path = folder + "/" + file;
        struct stat status {};
        if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
        if (access(path.c_str(), R_OK) != 0) return std::nullopt;
        return path;
    };
    if (const auto path = bundle.pathForResource("Info", "plist")) {
        bundle.info = readPropertyList(*path).value_or(PropertyList{});
    }
    return bundle;
}

}  // namespace dinmala
