// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/ColumnMap.h"

#include "apps/cli/input/InputFile.h"

namespace Cli {

using OLMGis::ProjectIo::CColumnMap;
using OLMGis::Utility::Result;

Result<std::optional<CColumnMap>> ReadColumnMap(const std::string& path) {
    if (path.empty())
        return std::optional<CColumnMap>();
    auto file = CInputFile::Open(path);
    if (!file)
        return file.GetError();
    auto map = CColumnMap::Read(file->GetStream(), file->GetName());
    if (!map)
        return map.GetError();
    return std::optional<CColumnMap>(std::move(map.Value()));
}

} // namespace Cli
