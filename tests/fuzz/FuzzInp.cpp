// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// The reader of storm-water networks: any bytes are read or refused with a message.
#include "host/project_io/inp/InpImport.h"
#include "tests/fuzz/FuzzSupport.h"
#include "tests/support/TestProject.h"

#include <sstream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CTestProject project;
    std::istringstream stream{std::string(AsText(data, size))};
    if (const auto summary = OLMGis::ProjectIo::ImportInp(stream, "fuzz.inp"); !summary)
        RequireTelling(summary.GetError(), "fuzz.inp");
    return 0;
}
