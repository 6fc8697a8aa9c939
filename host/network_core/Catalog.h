// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/formulas/SectionGeometry.h"
#include "host/gis_core/Result.h"
#include "host/gis_core/Utility.h"

#include <boost/enable_shared_from_this.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <absl/container/flat_hash_map.h>
#include <absl/container/flat_hash_set.h>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace OLMGis::Topology {

/// Inside shape of a pipe.
using enmPipeShape = Formulas::enmSectionShape;

/// One point of a table shape: inside width (mm) at a height above the invert (mm).
struct CShapePoint {
    double m_height = 0.0;
    double m_width = 0.0;
    friend bool operator==(const CShapePoint&, const CShapePoint&) = default;
};

/// What a catalogue knows of a pipe; all lengths in mm.
struct CPipeData {
    enmPipeShape m_shape = enmPipeShape::Circle;
    double m_innerWidth = 0.0;        ///< greatest inside width; the inner diameter of a circle
    double m_innerHeight = 0.0;       ///< inside height
    double m_wall = 0.0;              ///< wall thickness, 0 where unknown
    double m_roughness = 0.0;         ///< equivalent sand roughness k
    std::string m_type;               ///< pipe type, for rules of the catalogue
    double m_minDiameter = 0.0;       ///< least diameter that the type allows, 0 for none
    std::vector<CShapePoint> m_table; ///< of a table shape, heights ascending
    friend bool operator==(const CPipeData&, const CPipeData&) = default;
};

/// What a catalogue knows of a manhole; all lengths in m.
struct CManholeData {
    double m_innerDiameter = 0.0;
    double m_h1 = 0.0;     ///< cover and adjusting rings
    double m_h2 = 0.0;     ///< from terrain down to the lower edge of the cone or slab
    double m_height = 0.0; ///< whole height
    friend bool operator==(const CManholeData&, const CManholeData&) = default;
};

/// One entry of a catalogue: a group of a material and series, or a pipe or manhole in it. Groups do not nest.
class CCatalogItem : public boost::enable_shared_from_this<CCatalogItem> {
public:
    CCatalogItem(std::string guid, std::string name) : m_guid(std::move(guid)), m_name(std::move(name)) {}

    const std::string& GetGUID() const { return m_guid; }
    const std::string& GetName() const { return m_name; }
    bool IsGroup() const { return m_isGroup; }

    /// Whether the entry comes with the installation. Such entries are not saved with a project.
    bool IsBuiltIn() const { return m_isBuiltIn; }

    /// The standard of a built-in group, empty for other entries.
    const std::string& GetStandard() const { return m_standard; }

    /// The group of an item; null for a group.
    boost::shared_ptr<CCatalogItem> GetParentItem() const { return m_parent.lock(); }

    /// The items of a group in the order of the catalogue; empty for an item. No nulls.
    const std::vector<boost::shared_ptr<CCatalogItem>>& GetSubItems() const { return m_subItems; }

    /// Null for a group and for an item of the other catalogue.
    const CPipeData* GetPipeData() const { return m_pipe.get(); }
    const CManholeData* GetManholeData() const { return m_manhole.get(); }

    /// Of the pipes of a group the one with the smallest inside width not below width (mm), an equal one included; of
    /// equal pipes the first. Null when there is none, and for not-a-number. A binary search; the first one after new
    /// pipes also sorts these in.
    boost::shared_ptr<CCatalogItem> FindPipeByInnerWidth(double width) const;

private:
    friend class CCatalog;

    struct CWidthEntry {
        double m_width;
        std::uint32_t m_place; ///< among the sub-items
    };

    std::string m_guid;
    std::string m_name;
    std::string m_standard;
    boost::weak_ptr<CCatalogItem> m_parent;
    std::vector<boost::shared_ptr<CCatalogItem>> m_subItems;
    std::unique_ptr<CPipeData> m_pipe;
    std::unique_ptr<CManholeData> m_manhole;
    mutable std::vector<CWidthEntry> m_byWidth; ///< pipes of a group; ascending up to m_sortedCount
    mutable std::size_t m_sortedCount = 0;
    bool m_isGroup = false;
    bool m_isBuiltIn = false;
};

struct CBuiltInGroup;

/// A tree of groups and items: the groups that come with the installation, then the project's own. Names of groups are
/// unique over both, GUIDs of all entries too (case and braces ignored); items of one group have different names.
class CCatalog {
public:
    explicit CCatalog(std::string id) : m_id(std::move(id)) {}

    const std::string& GetId() const { return m_id; }

    /// All groups, built-in ones first, then in the order of entering; no nulls.
    const std::vector<boost::shared_ptr<CCatalogItem>>& GetGroups() const { return m_groups; }

    /// The project's own groups, those that are saved with it. No nulls; valid until the next group is added.
    std::span<const boost::shared_ptr<CCatalogItem>> GetOwnGroups() const {
        return std::span(m_groups).subspan(m_builtInCount);
    }

    /// An entry by GUID, a group by name; null when there is none. One hash look-up.
    boost::shared_ptr<CCatalogItem> GetItembyGuid(std::string_view guid) const;
    boost::shared_ptr<CCatalogItem> GetGroupByName(std::string_view name) const;

    /// The items of a name over all groups; a name may occur once in each group.
    std::vector<boost::shared_ptr<CCatalogItem>> GetItemsByName(std::string_view name) const;

    /// The least diameter (mm) that the catalogue states for a pipe type in any group; 0 for a type without one and for
    /// the empty type. One hash look-up.
    double GetMinDiameterOfType(std::string_view type) const;

    /// Enters what comes with the installation. Only into an empty catalogue, whose entries are consistent in
    /// themselves (see ParseBuiltInCatalog).
    void AddBuiltIn(const std::vector<CBuiltInGroup>& groups);

    /// New entries of the project, last in their order. BadInput for a repeated GUID or name, naming both entries, and
    /// for an item of a built-in group.
    Utility::Result<boost::shared_ptr<CCatalogItem>> AddGroup(std::string guid, std::string name);
    Utility::Result<boost::shared_ptr<CCatalogItem>> AddPipe(CCatalogItem& group, std::string guid, std::string name,
                                                             CPipeData data);
    Utility::Result<boost::shared_ptr<CCatalogItem>> AddManhole(CCatalogItem& group, std::string guid, std::string name,
                                                                CManholeData data);

private:
    using CNameInGroup = std::pair<const CCatalogItem*, std::string_view>;

    Utility::Result<boost::shared_ptr<CCatalogItem>> AddItem(CCatalogItem& group, std::string guid, std::string name);
    boost::shared_ptr<CCatalogItem> EnterGroup(std::string guid, std::string name);
    boost::shared_ptr<CCatalogItem> EnterItem(CCatalogItem& group, std::string guid, std::string name);
    void EnterPipe(CCatalogItem& group, CCatalogItem& pipe, CPipeData data);

    std::string m_id;
    std::size_t m_builtInCount = 0; ///< of the groups, at their beginning
    std::vector<boost::shared_ptr<CCatalogItem>> m_groups;
    absl::flat_hash_map<std::string, boost::shared_ptr<CCatalogItem>, Utility::GuidHash, Utility::GuidEqual> m_byGuid;
    absl::flat_hash_map<std::string_view, boost::shared_ptr<CCatalogItem>> m_groupsByName;
    absl::flat_hash_map<std::string_view, std::vector<boost::shared_ptr<CCatalogItem>>> m_itemsByName;
    absl::flat_hash_set<CNameInGroup> m_namesInGroups;
    absl::flat_hash_map<std::string_view, double> m_minDiameters; ///< by pipe type, of types that state one
};

} // namespace OLMGis::Topology
