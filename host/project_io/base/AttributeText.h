// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/Result.h"

#include <optional>
#include <string>
#include <string_view>

namespace OLMGis::ProjectIo {

/// Values of attributes as texts of tables and exchange files. Results that are not finite are written as these texts.
inline constexpr std::string_view TextOfNaN = "NaN";
inline constexpr std::string_view TextOfInfinity = "Infinity";
inline constexpr std::string_view TextOfMinusInfinity = "-Infinity";

/// One of the three texts for a value that is not finite; empty for a finite one.
std::string_view TextOfNonFinite(double value);

/// The value of one of the three texts; nothing for any other text.
std::optional<double> NonFiniteOfText(std::string_view text);

/// Text of a value: empty for null, the shortest text that reads back as the same number, a text as it is.
std::string TextOfAttribute(const Data::CDataBox& box);

/// Value of an attribute from its text; the empty text is null. The kinds of a catchment may be names (see
/// KindsOfText). BadInput, naming the key, what was found and what was expected, for a text that is not a value of the
/// attribute and for a value that CheckAttribute refuses.
Utility::Result<Data::CDataBox> AttributeOfText(const Data::CDataDefinition& definition, std::string_view text);

/// The same without CheckAttribute, for readers that list all impossible values.
Utility::Result<Data::CDataBox> ParseAttribute(const Data::CDataDefinition& definition, std::string_view text);

/// BadInput for a value that is impossible by the range of its definition, see Data::Judge. A null is accepted.
Utility::Status CheckAttribute(const Data::CDataDefinition& definition, const Data::CDataBox& box);

/// Kinds of a catchment as a sum of bits (see Topology::enmCatchmentKind), from their names joined by "+", "|", ","
/// or blanks in any order, or from the sum itself; nothing for any other text.
std::optional<int> KindsOfText(std::string_view text);

/// The kind of that name: rain 1, household 2, industrial 4; nothing for another text.
std::optional<int> KindOfName(std::string_view name);

/// Names of the kinds joined by a separator, rain first: "rain+household". Empty for none; other bits are left out.
std::string TextOfKinds(int kinds, std::string_view separator);

/// A text of a file as a message shows it: in quotation marks, cut after 60 characters; malformed UTF-8 and control
/// characters are replaced.
std::string Quote(std::string_view text);

} // namespace OLMGis::ProjectIo
