// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// Parameter files: any bytes give values for forms or a message.
#include "reports/ParameterFile.h"
#include "tests/fuzz/FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = Reports::CParameterFile::Parse(AsText(data, size), "fuzz.json",
                                                     {"01_WASTE_PERCENT", "001_RAIN_ITP"}, {"0004_MIN_SLOPE"});
    if (!file)
        RequireTelling(file.GetError(), "fuzz.json");
    return 0;
}
