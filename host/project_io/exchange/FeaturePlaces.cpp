// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/exchange/FeaturePlaces.h"

#include <fmt/format.h>

namespace OLMGis::ProjectIo {

std::string CFeaturePlaces::Label(std::size_t /*feature*/, std::string_view label) const {
    return std::string(label);
}

std::string CFeaturePlaces::Fault(std::size_t /*feature*/, std::string_view label, std::string_view key,
                                  std::string_view text) const {
    return fmt::format("{}: {}: {}{}{}", m_fileName, label, key, key.empty() ? "" : ": ", text);
}

std::string CFeaturePlaces::Listed(std::size_t feature, std::string_view /*key*/, std::string_view text) const {
    return fmt::format("{} (feature {})", text, feature);
}

} // namespace OLMGis::ProjectIo
