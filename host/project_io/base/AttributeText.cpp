// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/AttributeText.h"

#include "host/gis_core/Utility.h"
#include "host/network_core/Catchment.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <limits>

namespace OLMGis::ProjectIo {

using Data::CDataBox;
using Data::CDataDefinition;
using Data::enmDataType;
using Utility::BadInput;
using Utility::CUtility;
using Utility::Result;
using Utility::Status;

namespace {

struct CKindName {
    std::string_view m_name;
    int m_kind;
};
constexpr std::array KindNames = {CKindName{"rain", Topology::CatchmentRain},
                                  CKindName{"household", Topology::CatchmentHousehold},
                                  CKindName{"industrial", Topology::CatchmentIndustrial}};
constexpr int AllKinds = Topology::CatchmentRain | Topology::CatchmentHousehold | Topology::CatchmentIndustrial;

/// Codes are explained by more than their range.
struct CMeaning {
    std::string_view m_id;
    std::string_view m_expected;
};
constexpr std::array Meanings = {
    CMeaning{"kinds", "a sum of 1 (rain), 2 (household) and 4 (industrial)"},
    CMeaning{"LEVEL_LINE_POSITION", "0 inside bottom, 1 axis, 2 inside top, 3 outside bottom or 4 outside top"},
};

Utility::Error NotA(const CDataDefinition& definition, std::string_view text, std::string_view expected) {
    return BadInput(fmt::format("{}: found {}, expected {}", definition.m_id, Quote(text), expected));
}

Result<CDataBox> Parse(const CDataDefinition& definition, std::string_view text) {
    switch (definition.m_type) {
    case enmDataType::Text:
        return CDataBox(text);
    case enmDataType::Int:
        if (definition.m_id == "kinds") {
            if (const auto kinds = KindsOfText(text))
                return CDataBox(*kinds);
            return NotA(definition, text, "rain, household, industrial or several of them joined by +");
        }
        if (const auto number = CUtility::ParseInt(text))
            return CDataBox(*number);
        return NotA(definition, text, "a whole number");
    case enmDataType::Double:
        if (const auto number = CUtility::ParseDouble(text))
            return CDataBox(*number);
        if (const auto number = NonFiniteOfText(CUtility::Trim(text)))
            return CDataBox(*number);
        return NotA(definition, text, "a number");
    }
    return CDataBox();
}

} // namespace

std::string_view TextOfNonFinite(double value) {
    if (std::isnan(value))
        return TextOfNaN;
    if (std::isinf(value))
        return value > 0.0 ? TextOfInfinity : TextOfMinusInfinity;
    return {};
}

std::optional<double> NonFiniteOfText(std::string_view text) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (text == TextOfNaN)
        return std::numeric_limits<double>::quiet_NaN();
    if (text == TextOfInfinity)
        return infinity;
    if (text == TextOfMinusInfinity)
        return -infinity;
    return std::nullopt;
}

std::string TextOfAttribute(const CDataBox& box) {
    if (box.GetKind() == CDataBox::enmKind::Double)
        if (const std::string_view text = TextOfNonFinite(box.AsDouble()); !text.empty())
            return std::string(text);
    return box.AsText();
}

Result<CDataBox> ParseAttribute(const CDataDefinition& definition, std::string_view text) {
    if (text.empty() || (definition.m_type != enmDataType::Text && CUtility::Trim(text).empty()))
        return CDataBox();
    return Parse(definition, text);
}

Result<CDataBox> AttributeOfText(const CDataDefinition& definition, std::string_view text) {
    auto box = ParseAttribute(definition, text);
    if (box)
        if (const Status sensible = CheckAttribute(definition, box.Value()); !sensible)
            return sensible.GetError();
    return box;
}

Status CheckAttribute(const CDataDefinition& definition, const CDataBox& box) {
    if (!box.IsNotNull() || definition.m_type == enmDataType::Text ||
        Data::Judge(definition.m_range, box.AsDouble()) != Data::enmJudgement::Impossible)
        return Utility::Done();
    for (const CMeaning& meaning : Meanings)
        if (definition.m_id == meaning.m_id)
            return BadInput(
                fmt::format("{}: found {}, expected {}", definition.m_id, TextOfAttribute(box), meaning.m_expected));
    return BadInput(fmt::format("{}: {}", definition.m_id,
                                Data::ExplainJudgement(definition.m_range, box.AsDouble(), definition.m_unit)));
}

std::optional<int> KindOfName(std::string_view name) {
    for (const CKindName& kind : KindNames)
        if (name == kind.m_name)
            return kind.m_kind;
    return std::nullopt;
}

std::optional<int> KindsOfText(std::string_view text) {
    if (const auto sum = CUtility::ParseInt(text))
        return *sum >= 0 && *sum <= AllKinds ? sum : std::nullopt;
    constexpr std::string_view separators = "+|, \t";
    int kinds = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        if (end > 0) {
            const auto kind = KindOfName(text.substr(0, end));
            if (!kind)
                return std::nullopt;
            kinds |= *kind;
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return kinds == 0 ? std::nullopt : std::optional<int>(kinds);
}

std::string TextOfKinds(int kinds, std::string_view separator) {
    std::string text;
    for (const CKindName& kind : KindNames) {
        if ((kinds & kind.m_kind) == 0)
            continue;
        if (!text.empty())
            text += separator;
        text += kind.m_name;
    }
    return text;
}

std::string Quote(std::string_view text) {
    constexpr std::size_t longest = 60;
    std::string quoted = "\"";
    std::size_t characters = 0;
    while (!text.empty() && characters < longest) {
        std::size_t length = 1;
        while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
            ++length;
        const std::string_view character = text.substr(0, length);
        const bool isShown =
            static_cast<unsigned char>(text[0]) >= 0x20 && text[0] != 0x7F && CUtility::IsUtf8(character);
        quoted += isShown ? character : std::string_view("?");
        text.remove_prefix(length);
        ++characters;
    }
    quoted += text.empty() ? "\"" : "...\"";
    return quoted;
}

} // namespace OLMGis::ProjectIo
