// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/Benchmarks.h"
#include "bench/Network.h"
#include "host/gis_core/DataRW.h"

#include <benchmark/benchmark.h>

namespace Bench {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Topology::CSection;
using OLMGis::Utility::BadInput;

namespace {

using CSections = std::vector<boost::shared_ptr<CSection>>;

/// Passes over all sections and keys sum what they read, so that nothing of it can be left out.
template <class Key>
using CPass = double (*)(const CSections&, const std::vector<Key>&);

template <class Key>
double ReadByRows(const CSections& sections, const std::vector<Key>& keys) {
    CDataBox box;
    double sum = 0.0;
    for (const auto& section : sections)
        for (const Key& key : keys)
            if (CDataRW::Read(key, section, box, 0, nullptr) != 0)
                sum += box.AsDouble();
    return sum;
}

template <class Key>
double ReadByColumns(const CSections& sections, const std::vector<Key>& keys) {
    CDataBox box;
    double sum = 0.0;
    for (const Key& key : keys)
        for (const auto& section : sections)
            if (CDataRW::Read(key, section, box, 0, nullptr) != 0)
                sum += box.AsDouble();
    return sum;
}

std::vector<std::string> Ids(const std::vector<const CDataDefinition*>& keys) {
    std::vector<std::string> ids;
    for (const CDataDefinition* key : keys)
        ids.push_back(key->m_id);
    return ids;
}

template <class Key>
CSubjectMaker Reading(const std::vector<Key>& keys, CPass<Key> pass) {
    return [keys, pass](const CSize& size) -> Result<CSubject> {
        const auto project = MakeFilledNetwork(size);
        if (!project)
            return project.GetError();
        CSubject subject;
        const CSections& sections = project.Value()->Topology().GetSections();
        subject.m_operations = static_cast<double>(sections.size() * keys.size());
        subject.m_pass = [project = project.Value(), &sections, keys, pass]() -> Status {
            const double sum = pass(sections, keys);
            benchmark::DoNotOptimize(sum);
            return sum > 0.0 ? Status(Done{}) : Status(BadInput("nothing was read"));
        };
        return subject;
    };
}

/// The first pass makes the columns, all later ones write over them.
Result<CSubject> Writing(const CSize& size) {
    const auto project = MakeBareNetwork(size);
    if (!project)
        return project.GetError();
    CSubject subject;
    const auto keys = TwentyKeys();
    const CSections& sections = project.Value()->Topology().GetSections();
    subject.m_operations = static_cast<double>(sections.size() * keys.size());
    subject.m_pass = [project = project.Value(), keys, &sections]() -> Status {
        CDataBox box;
        int refused = 0;
        double value = 0.0;
        for (const auto& section : sections)
            for (const CDataDefinition* key : keys) {
                box.SetDouble(value += 0.5);
                refused += CDataRW::Write(key, section, box, nullptr) == 0 ? 1 : 0;
            }
        return refused == 0 ? Status(Done{}) : Status(BadInput("a write was refused"));
    };
    return subject;
}

} // namespace

void RegisterAttributes() {
    const auto keys = TwentyKeys();
    RegisterOnNetworks("attributes/read_by_definition", enmPace::Quick, Reading(keys, &ReadByRows));
    RegisterOnNetworks("attributes/read_one_key_a_pass", enmPace::Quick, Reading(keys, &ReadByColumns));
    RegisterOnNetworks("attributes/read_by_id", enmPace::Quick, Reading(Ids(keys), &ReadByRows));
    RegisterOnNetworks("attributes/write_by_definition", enmPace::Quick, Writing);
}

} // namespace Bench
