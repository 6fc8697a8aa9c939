// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace OLMGis::ProjectIo {

/// How messages name the place of a feature: here, by its number in one exchange file. Sources that turn other files
/// into features name their own places.
class CFeaturePlaces {
public:
    explicit CFeaturePlaces(std::string fileName) : m_fileName(std::move(fileName)) {}
    virtual ~CFeaturePlaces() = default;
    CFeaturePlaces(const CFeaturePlaces&) = delete;
    CFeaturePlaces& operator=(const CFeaturePlaces&) = delete;

    /// For messages about the whole source.
    const std::string& GetFileName() const { return m_fileName; }

    /// A feature inside a sentence; label: that of LabelOfFeature.
    virtual std::string Label(std::size_t feature, std::string_view label) const;

    /// A whole message. key: the value that is bad, empty where it is not one value. text: "found ..., expected ...".
    virtual std::string Fault(std::size_t feature, std::string_view label, std::string_view key,
                              std::string_view text) const;

    /// A line of a list of faults. text names the entity.
    virtual std::string Listed(std::size_t feature, std::string_view key, std::string_view text) const;

    /// Whether the reading goes on after a bad feature, to list all of them.
    virtual bool ListsAll() const { return false; }

private:
    std::string m_fileName;
};

} // namespace OLMGis::ProjectIo
