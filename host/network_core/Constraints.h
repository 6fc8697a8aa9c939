// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"

#include <boost/shared_ptr.hpp>

#include <vector>

namespace OLMGis::Topology {

/// One choice of a property: what is shown and what is stored.
class CConstraint {
public:
    void SetValue(const Data::CDataBox& value) { m_value = value; }
    void SetHiddenValue(const Data::CDataBox& value) { m_hiddenValue = value; }
    const Data::CDataBox& GetValue() const { return m_value; }
    const Data::CDataBox& GetHiddenValue() const { return m_hiddenValue; }

    /// Place among the choices, from 1; 0 before it was added to a list.
    int GetOrd() const { return m_ord; }

private:
    friend class CConstraints;

    Data::CDataBox m_value;
    Data::CDataBox m_hiddenValue;
    int m_ord = 0;
};

/// The choices of a property, in order.
class CConstraints {
public:
    /// Adds a choice after the others; a null is kept out.
    void AddConstraint(const boost::shared_ptr<CConstraint>& constraint) {
        if (!constraint)
            return;
        constraint->m_ord = GetMaxConstraintOrd() + 1;
        m_constraints.push_back(constraint);
    }

    /// Order of the last choice, which is their number; 0 without one.
    int GetMaxConstraintOrd() const { return static_cast<int>(m_constraints.size()); }

    /// The choice of an order from 1, null outside.
    boost::shared_ptr<CConstraint> GetConstraintByOrd(int ord) const {
        return ord < 1 || ord > GetMaxConstraintOrd() ? nullptr : m_constraints[static_cast<std::size_t>(ord) - 1];
    }

    /// No nulls.
    const std::vector<boost::shared_ptr<CConstraint>>& GetConstraints() const { return m_constraints; }

private:
    std::vector<boost::shared_ptr<CConstraint>> m_constraints;
};

} // namespace OLMGis::Topology
