// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/variations/ForecastText.h"

#include "host/gis_core/AvailableResources.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ShortName.h"
#include "host/gis_core/Utility.h"
#include "rain/variations/VariationTable.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <optional>

using OLMGis::System::AvailableResources;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Msg;

namespace Rain {

namespace {

// Messages.
constexpr int SearchCosts = 70141;
constexpr int SearchCostsAtLeast = 70142;
constexpr int SearchNeverEnds = 70143;
constexpr int SearchMemory = 70144;
constexpr int SearchNumbers = 70146;
constexpr int ChainMemory = 70147;

/// A whole number, beyond 15 digits by its magnitude.
std::string ShowCount(double count) {
    constexpr double LongestPlain = 1.0e15;
    if (!std::isfinite(count))
        return ">1e+308";
    return count < LongestPlain ? fmt::format("{:.0f}", count) : fmt::format("{:.3g}", count);
}

std::string ShowBytes(double bytes) {
    constexpr std::array Units{"B", "kB", "MB", "GB", "TB", "PB"};
    if (!std::isfinite(bytes))
        return ShowCount(bytes) + " B";
    std::size_t unit = 0;
    for (; bytes >= 1000.0 && unit + 1 < Units.size(); ++unit)
        bytes /= 1000.0;
    return fmt::format("{:.{}f} {}", bytes, unit == 0 || bytes >= 100.0 ? 0 : 1, Units[unit]);
}

std::string NameOf(const CVariationNetwork& network, std::uint32_t section) {
    return section == CVariationNetwork::None
               ? std::string()
               : OLMGis::Utility::ShortName(network.GetNetwork().GetSection(section)->GetName());
}

/// Whether something needs more than there is; an unknown amount counts as enough.
bool IsTooMuch(double needed, const std::optional<double>& available) {
    return available && needed > *available;
}

} // namespace

std::string WhySearchIsRefused(const CVariationNetwork& network, const CVariationForecast& forecast) {
    if (forecast.m_endless != CVariationNetwork::None)
        return CUtility::Format(Msg(SearchNeverEnds), NameOf(network, forecast.m_endless));
    if (forecast.m_greatest == CVariationNetwork::None)
        return {};
    constexpr auto Most = static_cast<double>(CVariationTable::MostCombinations);
    const auto memory = AvailableResources().GetFreeMemory();
    if (IsTooMuch(forecast.m_memory, memory) && std::isfinite(forecast.m_memory))
        return CUtility::Format(Msg(SearchMemory), ShowBytes(forecast.m_memory), ShowCount(forecast.m_total),
                                ShowBytes(*memory));
    if (!(forecast.m_mostOfSection <= Most))
        return CUtility::Format(Msg(SearchNumbers), NameOf(network, forecast.m_greatest),
                                ShowCount(forecast.m_mostOfSection), ShowCount(Most));
    return {};
}

std::string WhyChainsAreRefused(const CVariationNetwork& network, const CVariationForecast& forecast) {
    const auto memory = AvailableResources().GetFreeMemory();
    if (!IsTooMuch(forecast.m_memory, memory))
        return {};
    return CUtility::Format(Msg(ChainMemory), ShowCount(forecast.m_total), ShowCount(forecast.m_mostOfSection),
                            NameOf(network, forecast.m_greatest), ShowBytes(forecast.m_memory), ShowBytes(*memory));
}

std::string ShowForecast(const CVariationNetwork& network, const CVariationForecast& forecast) {
    if (forecast.m_greatest == CVariationNetwork::None)
        return {};
    return CUtility::Format(Msg(forecast.m_isAtLeast ? SearchCostsAtLeast : SearchCosts), ShowCount(forecast.m_total),
                            ShowCount(forecast.m_mostOfSection), NameOf(network, forecast.m_greatest),
                            ShowBytes(forecast.m_memory));
}

} // namespace Rain
