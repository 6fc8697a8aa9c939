// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/exchange/ExchangeExport.h"
#include "host/project_io/exchange/ExchangeImport.h"
#include "tests/project_io/ProjectFileFixture.h"
#include "tests/support/TestProject.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>

/// An exchange file with these features, which are given as JSON separated by commas.
inline std::string Collection(std::string_view features) {
    return "{\"type\":\"FeatureCollection\",\"features\":[" + std::string(features) + "]}";
}

/// A feature with these properties (inside the braces) and geometry.
inline std::string Feature(std::string_view properties, std::string_view geometry = "null") {
    return "{\"type\":\"Feature\",\"properties\":{" + std::string(properties) +
           "},\"geometry\":" + std::string(geometry) + "}";
}

inline std::string NodeFeature(std::string_view name, std::string_view x, std::string_view y,
                               std::string_view further = "") {
    return Feature("\"layer\":\"node\",\"name\":\"" + std::string(name) + "\"" + std::string(further),
                   "{\"type\":\"Point\",\"coordinates\":[" + std::string(x) + "," + std::string(y) + "]}");
}

/// A section without a line, 50 m long where nothing else is given.
inline std::string SectionFeature(std::string_view name, std::string_view from, std::string_view to,
                                  std::string_view further = "") {
    const std::string length = further.find("\"length\"") == std::string_view::npos ? ",\"length\":50" : "";
    return Feature("\"layer\":\"section\",\"name\":\"" + std::string(name) + "\",\"from\":\"" + std::string(from) +
                   "\",\"to\":\"" + std::string(to) + "\"" + length + std::string(further));
}

inline OLMGis::Utility::Result<OLMGis::ProjectIo::CImportSummary> ImportText(const std::string& text) {
    std::istringstream stream(text);
    return OLMGis::ProjectIo::ImportExchange(stream, "net.geojson");
}

/// Imports a text that must be good; otherwise the test fails with the message.
inline OLMGis::ProjectIo::CImportSummary ImportGood(const std::string& text) {
    auto summary = ImportText(text);
    EXPECT_TRUE(summary) << (summary ? "" : summary.GetError().message);
    return summary ? summary.Value() : OLMGis::ProjectIo::CImportSummary();
}

inline std::string ExportText() {
    std::ostringstream stream;
    const auto status = OLMGis::ProjectIo::ExportExchange(stream);
    EXPECT_TRUE(status) << (status ? "" : status.GetError().message);
    return stream.str();
}
