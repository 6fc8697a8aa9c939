// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/gis_core/Result.h"
#include "host/network_core/PropertyEx.h"

#include <optional>
#include <string>
#include <string_view>

namespace OLMGis::Topology {

/// Sets a property as a person would in the form, from text. BadArguments, and nothing changed, for a text that the
/// editor would not take:
/// - a plain field takes any finite number that is possible for it and sets both boxes; what was a whole number stays
/// one when the text is one;
/// - a check box takes 0 or 1;
/// - a choice is named by its hidden value (numbers compare as numbers), else by its text; a text that several choices
///   show is refused; where no choices are offered any number is taken;
/// - a custom dialog takes its stored text, a file path any text;
/// - a catalogue picker takes GUIDs or names of groups (or items, where it is not for groups only), several separated
///   by ";" unless it takes a single one, and stores the GUIDs; an empty text picks nothing.
Utility::Status SetPropertyText(CPropertyEx& property, std::string_view text);

/// How messages name a field: its tag, with the alias in brackets if it has one.
std::string NameField(const CPropertyEx& property);

/// A warning when the number of a plain field is possible but unusual; nothing for the default.
std::optional<std::string> WarnOfUnusual(const CPropertyEx& property);

/// The choice of a property whose hidden value equals a value, null when there is none.
boost::shared_ptr<CConstraint> FindChoice(const CPropertyEx& property, const Data::CDataBox& hiddenValue);

} // namespace OLMGis::Topology
