// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/PropertiesEx.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <utility>
#include <vector>

namespace Rain {

using CCategoryPtr = boost::shared_ptr<OLMGis::Topology::CCategory>;
using CPropertyPtr = boost::shared_ptr<OLMGis::Topology::CPropertyEx>;

/// Adds a property whose name and description are one message.
CPropertyPtr AddField(const CCategoryPtr& category, const char* tag, OLMGis::Topology::enmPropertyEditorType editor,
                      int message, const OLMGis::Data::CDataBox& value, const OLMGis::Data::CDataBox& hidden,
                      const OLMGis::Data::CDataBox& defaultValue, const OLMGis::Data::CDataBox& defaultHidden);

/// Adds a field that a dialog of its own edits, found by the control id; hidden: its value to begin with.
CPropertyPtr AddDialogField(const CCategoryPtr& category, const char* tag, int message,
                            const OLMGis::Data::CDataBox& hidden, const char* controlId);

/// Adds a combo box with its first choice (at least one) in force; its defaults are empty.
CPropertyPtr AddChoices(const CCategoryPtr& category, const char* tag, int message,
                        const boost::shared_ptr<OLMGis::Topology::CConstraints>& choices);

void AddConstraint(OLMGis::Topology::CConstraints& constraints, const OLMGis::Data::CDataBox& value,
                   const OLMGis::Data::CDataBox& hidden);

/// Under which choices (by their stored values) a field shows.
struct CShownField {
    const char* m_tag;
    std::vector<int> m_choices;
};

/// The text that makes fields of a form depend on one with these choices: "choice:0 or 1:tag" joined by "$".
std::string MakeDependency(const std::vector<int>& choices, const std::vector<CShownField>& fields);

/// One reading of a form: the form, and what is wrong with it.
struct CFormReading {
    const OLMGis::Topology::CPropertiesEx& m_form;
    std::vector<std::string> m_errors{}; ///< names of properties that are missing or out of range, in order of reading
    std::vector<std::string> m_unread{}; ///< names of properties with invalid texts, for which the defaults apply
    std::vector<std::string> m_wrongTags{}; ///< tags of the properties of m_errors

    std::string NameOf(const char* tag) const;
    void NoteError(const char* tag) { NoteError(tag, NameOf(tag)); }
    void NoteError(const char* tag, std::string name) {
        m_errors.push_back(std::move(name));
        m_wrongTags.emplace_back(tag);
    }
    void NoteUnread(const char* tag) { m_unread.push_back(NameOf(tag)); }
};

} // namespace Rain
