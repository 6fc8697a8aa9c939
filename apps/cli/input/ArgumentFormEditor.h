// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/FormEditor.h"
#include "reports/ParameterFile.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Cli {

using Reports::CFormValue;

/// Enters values into a form as a person would: in the order of the form, whatever the order of the values, because the
/// value of an earlier field may decide what a later one offers. A value names its field by tag or alias; of several
/// values of a field the last one counts, but tag and alias with different values in one place are refused. A number
/// that is possible but unusual goes to the log.
class CArgumentFormEditor final : public OLMGis::Topology::IFormEditor {
public:
    explicit CArgumentFormEditor(std::vector<CFormValue> values) : m_values(std::move(values)) {}

    /// 0, with the error kept, when a value has no field or the field refuses it; else 1.
    int EditForm(std::string_view title, OLMGis::Topology::CPropertiesEx& form, const COnChanged& onChanged) override;

    /// Why the form was given up: BadArguments for a value of the command line, BadInput for one of a parameter file.
    const std::optional<OLMGis::Utility::Error>& GetError() const { return m_error; }

    /// Tags that were set although the form has them out of force.
    const std::vector<std::string>& GetOutOfForce() const { return m_outOfForce; }

    /// Asked for each file that is entered as a path, which the run reads; an error gives the form up.
    void SetFileCheck(std::function<OLMGis::Utility::Status(const std::string& file)> check) {
        m_fileCheck = std::move(check);
    }

    /// The command that lists the fields of the form, for messages.
    void SetListing(std::string command) { m_listing = std::move(command); }

private:
    bool Resolve(const OLMGis::Topology::CPropertiesEx& form);
    bool EnterNext(OLMGis::Topology::CPropertiesEx& form, const COnChanged& onChanged);
    bool Enter(OLMGis::Topology::CPropertyEx& property, const CFormValue& value);
    void Fail(const CFormValue& value, std::string message);

    std::vector<CFormValue> m_values; ///< not entered yet
    std::optional<OLMGis::Utility::Error> m_error;
    std::vector<std::string> m_outOfForce;
    std::string m_listing;
    std::function<OLMGis::Utility::Status(const std::string& file)> m_fileCheck;
};

} // namespace Cli
