// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/FormEditor.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// One value for a form.
struct CFormWord {
    std::string m_tag;
    std::string m_text;
    std::string m_origin; ///< how messages call the place of the value in a parameter file; empty on the command line
    std::string m_folder; ///< of the parameter file, for relative paths; empty on the command line
};

/// Types words into a form as a person would: in the order of the form, whatever the order of the words, because what
/// an earlier field holds may decide what a later one offers. Of several words of a tag the last one counts.
class CWordFormEditor final : public OLMGis::Topology::IFormEditor {
public:
    explicit CWordFormEditor(std::vector<CFormWord> words);

    /// 0, with the error kept, when a word has no field or the field does not take it; else 1.
    int EditForm(std::string_view title, OLMGis::Topology::CPropertiesEx& form, const COnChanged& onChanged) override;

    /// Why the form was given up: BadWords for a word of the command line, BadInput for one of a parameter file.
    const std::optional<OLMGis::Utility::Error>& GetError() const { return m_error; }

    /// Tags that words set although the form has them out of force.
    const std::vector<std::string>& GetOutOfForce() const { return m_outOfForce; }

private:
    bool ActNext(OLMGis::Topology::CPropertiesEx& form, const COnChanged& onChanged);
    bool Act(OLMGis::Topology::CPropertyEx& property, const CFormWord& word);
    void Fail(const CFormWord& word, std::string message);

    std::vector<CFormWord> m_words; ///< those that have not acted yet
    std::optional<OLMGis::Utility::Error> m_error;
    std::vector<std::string> m_outOfForce;
};

} // namespace Cli
