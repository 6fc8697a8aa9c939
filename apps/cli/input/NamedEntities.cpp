// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/NamedEntities.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::Utility::Error;
using OLMGis::Utility::Result;

namespace {

template <class Value>
Result<Value> WithOption(std::string_view option, Result<Value> chosen) {
    if (!chosen)
        return Error{chosen.GetError().kind, fmt::format("{}: {}", option, chosen.GetError().message)};
    return chosen;
}

} // namespace

Result<Reports::CEntityList> ChooseOrAll(OLMGis::Data::enmEntityKind kind, const std::vector<std::string>& names) {
    if (names.empty())
        return Reports::GetAllEntities(kind);
    return WithOption("--names", Reports::ChooseEntities(kind, names));
}

Result<std::vector<boost::shared_ptr<OLMGis::Topology::CSection>>>
ChooseSections(std::string_view option, const std::vector<std::string>& names) {
    return WithOption(option, Reports::ChooseSections(names));
}

} // namespace Cli
