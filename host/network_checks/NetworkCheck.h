// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/network_core/FindingList.h"
#include "host/network_core/IAttributeReader.h"
#include "host/network_core/IFunctionalAnalysisItem.h"

#include <initializer_list>

namespace OLMGis::NetworkChecks {

/// What our own checks have in common. All are for sewage networks and have no state.
class CNetworkCheck : public Topology::IFunctionalAnalysisItem, public Topology::IAttributeReader {
public:
    std::string GetItemKey() final { return m_key; }
    std::string GetItemName() final;
    int IsAvailableForSystemFunction(int systemFunction) final;
    int GetItemFlagA() final { return 1; }
    std::string GetAnalysisTag() final { return m_tag; }
    boost::shared_ptr<Topology::CPropertiesEx> CreateProperties() final;

    /// Without properties the check runs with the values of a new form.
    void RunAnalysis(boost::shared_ptr<Topology::CPropertiesEx> properties, Topology::CAnalysedNetwork* network,
                     std::vector<boost::shared_ptr<Topology::CFAMsg>>& findings) final;

    /// None by default: the connections of the network are no attribute.
    std::vector<std::string> GetReadKeys() const override { return {}; }

protected:
    /// A field of the form: a number, or a check box for a whole number 0 or 1.
    struct CField {
        const char* m_tag;
        int m_message;
        Data::CDataBox m_value;
    };

    /// nameMessage is also the form's category. The texts are constants.
    CNetworkCheck(const char* key, int nameMessage, const char* tag)
        : m_key(key), m_tag(tag), m_nameMessage(nameMessage) {}
    ~CNetworkCheck() = default;

private:
    /// The fields of the form, none by default.
    virtual std::vector<CField> GetFields() const { return {}; }

    /// The check, on a network that is not null, with its caption shown as progress. Linear in the network; stops where
    /// it is when the user cancels.
    virtual void Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
                     Topology::CFindingList& findings) = 0;

    const char* m_key;
    const char* m_tag;
    int m_nameMessage;
};

} // namespace OLMGis::NetworkChecks
