// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/PropertyEx.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Topology {

/// A heading of a form and the properties below it.
class CCategory {
public:
    void SetOrd(int ord) { m_ord = ord; }
    void SetMsgName(int message) { m_nameMessage = message; }
    void SetMsgDescription(int message) { m_descriptionMessage = message; }
    int GetOrd() const { return m_ord; }
    int GetMsgName() const { return m_nameMessage; }
    int GetMsgDescription() const { return m_descriptionMessage; }
    std::string GetName() const;

    /// Adds a property at the place that its order gives, after those of the same order; a null is kept out.
    void AddPropertyEx(const boost::shared_ptr<CPropertyEx>& property);

    /// The highest order among the properties, 0 without one.
    int GetMaxPropertyOrd() const;

    /// In ascending order; no nulls.
    const std::vector<boost::shared_ptr<CPropertyEx>>& GetProperties() const { return m_properties; }

private:
    std::vector<boost::shared_ptr<CPropertyEx>> m_properties;
    int m_ord = 0;
    int m_nameMessage = 0;
    int m_descriptionMessage = 0;
};

/// An input form: categories of properties, and the rules by which choices switch other properties on and off.
class CPropertiesEx {
public:
    /// Adds a category at the place that its order gives, after those of the same order; a null is kept out.
    void AddCategory(const boost::shared_ptr<CCategory>& category);

    /// The highest order among the categories, -1 without one: the first category has order 0.
    int GetMaxCategoryOrd() const;

    /// In ascending order; no nulls.
    const std::vector<boost::shared_ptr<CCategory>>& GetCategories() const { return m_categories; }

    /// All properties in the order of the form; no nulls.
    std::vector<boost::shared_ptr<CPropertyEx>> GetAllProperties() const;

    /// The first property of that tag in the order of the form, null for an unknown tag. Tags compare by plain
    /// characters.
    boost::shared_ptr<CPropertyEx> GetPropertyExByTag(std::string_view tag) const;

    /// The effective value of a property, or fallback when the form has no such tag. An integer read cuts fractions; an
    /// empty box reads as 0 or the empty text. The last argument is the interface's: every caller passes 1.
    double GetDblProperty(std::string_view tag, double fallback, int useHidden) const;
    int GetIntProperty(std::string_view tag, int fallback, int useHidden) const;
    std::string GetStrProperty(std::string_view tag, std::string_view fallback, int useHidden) const;

    /// Determines which properties are in force, by the dependency texts of all properties in the order of the form.
    ///
    /// A text is a sequence of clauses "choice:state:tags" separated by "$", tags separated by "#". While the property
    /// has the choice, state 1 puts the tags in force and state 0 takes them out. A choice is named by its hidden
    /// value, or by its place from 0 where no choice has such a hidden value. A tag that is not named under the present
    /// choice stays as it was. Clauses of another form, and unknown tags, have no effect.
    void ApplyDependencies();

    /// One JSON object: tag to effective value in the order of the form; null boxes as null, numbers such that they
    /// read back as themselves, numbers that are not finite as the texts "NaN", "Infinity", "-Infinity".
    std::string Serialize() const;

private:
    std::vector<boost::shared_ptr<CCategory>> m_categories;
};

} // namespace OLMGis::Topology
