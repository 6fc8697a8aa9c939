// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/terrain/TerrainFile.h"

#include "host/project_io/base/DiskFile.h"
#include "host/project_io/base/Failure.h"

#include <fmt/format.h>

#include <dlfcn.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>

namespace OLMGis::ProjectIo {

using Utility::Refused;
using Utility::Result;

namespace {

/// In the folder of the library that contains this function.
std::string PathOfTerrainLibrary() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&OpenTerrainFile), &info) == 0 || info.dli_fname == nullptr)
        return TerrainLibraryName;
    std::error_code ignored;
    return (std::filesystem::canonical(info.dli_fname, ignored).parent_path() / TerrainLibraryName).string();
}

Result<CTerrainOpener*> LoadOpener() {
    const std::string path = PathOfTerrainLibrary();
    // Never closed: the raster library keeps global state until the process ends.
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const opener = library == nullptr ? nullptr : dlsym(library, TerrainOpenerName);
    if (opener == nullptr) {
        const char* const reason = dlerror();
        return Refused(fmt::format("{}: the reader of terrain rasters cannot be loaded: {}", path,
                                   reason == nullptr ? "unknown reason" : reason));
    }
    return reinterpret_cast<CTerrainOpener*>(opener);
}

} // namespace

Result<std::unique_ptr<ITerrainFile>> OpenTerrainFile(const std::string& path) {
    const auto good = CatchFailures<Utility::Done>(path, [&path]() -> Utility::Status {
        // The raster library would not open the file of that path but what the rest of it describes.
        if (path.starts_with("/vsi"))
            FailRefused(path + ": cannot be opened: paths that begin with /vsi are not for rasters");
        struct stat state {};
        OpenForReading(path, path, state);
        return Utility::Done{};
    });
    if (!good)
        return good.GetError();
    static const Result<CTerrainOpener*> opener = LoadOpener();
    if (!opener)
        return opener.GetError();
    Result<std::unique_ptr<ITerrainFile>> outcome = Refused(path + ": cannot be opened");
    opener.Value()(path.c_str(), outcome);
    return outcome;
}

} // namespace OLMGis::ProjectIo
