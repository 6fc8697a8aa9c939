// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/InputNotes.h"
#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/ResultOrigins.h"
#include "host/network_core/Section.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Data {
class CJournal;
}

namespace OLMGis::Sewage {

/// Where the hydraulics of the pipes are concerned, in place of the key of a calculator.
inline constexpr std::string_view HydraulicsOrigin = "hydraulics";

/// A stored result that no longer fits its inputs.
struct COutdatedResult {
    const Data::CDataDefinition* m_result = nullptr; ///< never null
    std::string m_calculator;                        ///< whose run made it and would renew it

    /// What changed since, each once, in this order: keys of attributes in the order of the definitions, then names of
    /// Data::Inputs. Never empty. The key of another result is named when its values changed or it is outdated itself.
    std::vector<std::string> m_changed;

    /// Keys of the calculators to run again, in this order: those whose outdated results it comes from, then its own.
    std::vector<std::string> m_renewal;
};

/// Values of an earlier run that a run left behind: it stored the keys on other sections.
struct CFormerResults {
    std::vector<const Data::CDataDefinition*> m_keys;  ///< never null; in the order of the definitions
    std::vector<const Topology::CSection*> m_sections; ///< with a value of one of them, each once, in network order
};

/// Results of the active project that are outdated, by calculator and key. A file that can't be read now counts as
/// unchanged: whoever received a project without its curves has the results of the curves that were there. Cost: linear
/// in the network for each input that changed since the last call, else constant.
std::vector<COutdatedResult> FindOutdatedResults();

/// Those of them whose values a run or another reader read, by its notes; without those of the calculator itself.
std::vector<COutdatedResult> SelectRead(const std::vector<COutdatedResult>& outdated, const Data::CInputNotes& notes,
                                        std::string_view calculator = {});

/// Notes what one run reads, from its making to Stop, and keeps it as the origin of what the run stored.
class COriginRecorder {
public:
    COriginRecorder();

    void Stop() { m_scope.reset(); }
    const Data::CInputNotes& GetNotes() const { return m_notes; }

    /// Stops, and takes the results from the journal of the run: numbers of sections. (The texts that runs store are
    /// their parameters and PIPE_REF, which is an input once it is stored.) Inputs are hashed as they are now, after
    /// the run.
    ///
    /// Where values remain that this run did not write, as after a run of some sections, what was outdated stays so: an
    /// input keeps its former hash. Returns these. Linear in the journal and the inputs.
    CFormerResults Keep(std::string_view calculator, const Data::CJournal& journal);

private:
    Data::CInputNotes m_notes;
    std::optional<Data::CInputNotesScope> m_scope;
};

} // namespace OLMGis::Sewage
