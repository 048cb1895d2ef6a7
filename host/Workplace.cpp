// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Workplace.h"

#include <sys/auxv.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "Error.h"
#include "Folder.h"
#include "MachinePaths.h"

namespace QZ {

namespace fs = std::filesystem;

namespace {

std::string _absolute(const std::string& path) {
    return path.empty() ? path : fs::absolute(path).lexically_normal().string();
}

bool _isSet(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

// Whether there is one of those that the module looks for: others are of no use to it.
bool _hasOurLibraries(const fs::path& folder) {
    std::error_code error;
    return fs::exists(folder / "libtav_shrdevice.so", error) ||
           fs::exists(folder / "libtavxenprobe.so", error);
}

void _setEnvironment(const char* name, const std::string& value) {
    if (!value.empty() && setenv(name, value.c_str(), 1) != 0) {
        throwSystemError("Cannot set", name, errno);
    }
}

}  // namespace

std::string executableFolder() {
    // The kernel's note of what it was told to run: the caller may have named us anything.
    // NOLINTNEXTLINE(performance-no-int-to-ptr): that is how the kernel hands pointers over
    const auto* path = reinterpret_cast<const char*>(getauxval(AT_EXECFN));
    std::error_code error;
    const fs::path resolved = fs::canonical(path ? path : "", error);
    if (error) {
        throwSystemError("Cannot find", path ? path : "this program", error.value());
    }
    return resolved.parent_path().string();
}

Workplace findWorkplace(const Request& request, const std::string& binFolder) {
    const fs::path prefix = fs::path(binFolder).parent_path();
    Workplace place;
    place.root = _absolute(request.root);
    place.dataFolder = _absolute(request.dataFolder);
    place.moduleFile = _absolute(request.moduleFile);
    place.libraryFolder = (prefix / "lib").string();
    place.schemaFolder = request.schemaFolder.empty()
                             ? (prefix / "share" / "tavqz" / "schema").string()
                             : _absolute(request.schemaFolder);
    place.runFolder = binFolder;
    if (place.root.empty()) {
        return place;
    }
    const fs::path root = place.root;
    if (!isFolder(root)) {
        throw UsageError("Cannot use the root " + place.root + ": not a folder");
    }
    if (place.dataFolder.empty()) {
        place.dataFolder = (root / "var" / "lib" / "tavqz").string();
    }
    // A machine that brings libraries is asked from beside them. Without a "run" folder "lib"
    // itself does as well: "../lib" leads back to it.
    if (_isSet(HOST_LIBRARIES) && isFolder(root / "lib")) {
        place.runFolder = (root / (isFolder(root / "run") ? "run" : "lib")).string();
        return place;
    }
    if (_hasOurLibraries(root / "lib")) {
        place.note = "The libraries in " + (root / "lib").string() + " are not loaded; with " +
                     HOST_LIBRARIES + "=1, which trusts them, they are.";
    }
    if (std::error_code error;
        fs::exists(MachinePaths::simulatedServiceProcessors(place.root), error)) {
        const fs::path simulated = prefix / "lib" / "simulated" / "lib";
        place.runFolder = isFolder(simulated) ? simulated.string() : binFolder;
    }
    return place;
}

void enterWorkplace(const Workplace& place, const std::function<void(const std::string&)>& say) {
    if (!place.note.empty()) {
        say(place.note);
    }
    _setEnvironment("TAVQZ_HOST_ROOT", place.root);
    _setEnvironment("TAVQZ_DATA_DIR", place.dataFolder);
    if (chdir(place.runFolder.c_str()) != 0) {
        throwSystemError("Cannot change into", place.runFolder, errno);
    }
}

}  // namespace QZ
