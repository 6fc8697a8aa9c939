// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/exchange/ExchangeParser.h"

#include "host/gis_core/Utility.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/base/ValueLimit.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <optional>
#include <vector>

namespace OLMGis::ProjectIo {

using Utility::BadInput;
using Utility::Done;
using Utility::Error;
using Utility::Status;

namespace {

/// Bytes of the longest value: of features, and of members of the collection, some of which are whole tables.
constexpr std::size_t LongestValue = std::size_t{1} << 20;
constexpr std::size_t LongestMember = std::size_t{1} << 27;

/// What the innermost open list or object is.
enum class enmPlace : std::uint8_t {
    Collection,
    Crs,
    CrsProperties,
    Features,
    Feature,
    Properties,
    PropertyList,
    PropertyObject,
    Geometry,
    Coordinates,
    Skipped, ///< nothing in it is kept
};

/// The parser's message without its own number, on one line and without control characters.
std::string Clean(std::string_view what) {
    constexpr std::size_t longest = 300;
    if (const std::size_t end = what.find("] "); what.starts_with('[') && end != std::string_view::npos)
        what.remove_prefix(end + 2);
    std::string clean;
    for (const char c : what.substr(0, longest))
        clean += static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) >= 0x7F ? '?' : c;
    return clean;
}

/// Receives the text token by token, collects one feature and passes it to the sink. The parser calls the operations
/// with lower-case names; false from one of them ends the reading.
class CExchangeHandler {
public:
    using CJson = nlohmann::json;

    CExchangeHandler(std::string name, IExchangeSink& sink, CValueLimit& limit)
        : m_name(std::move(name)), m_sink(sink), m_limit(limit) {}

    bool null() { return TakeScalar({}); }
    bool boolean(bool value) { return TakeNumber(enmJsonKind::Boolean, value ? 1.0 : 0.0); }
    bool number_integer(CJson::number_integer_t value) {
        return TakeNumber(enmJsonKind::Number, static_cast<double>(value));
    }
    bool number_unsigned(CJson::number_unsigned_t value) {
        return TakeNumber(enmJsonKind::Number, static_cast<double>(value));
    }
    bool number_float(CJson::number_float_t value, const std::string& /*text*/) {
        return TakeNumber(enmJsonKind::Number, value);
    }
    bool string(std::string& text) {
        CJsonValue value;
        value.m_kind = enmJsonKind::Text;
        value.m_text.swap(text);
        return TakeScalar(std::move(value));
    }
    bool binary(CJson::binary_t& /*bytes*/) { return Fail("found bytes, expected text"); }
    bool key(std::string& key) {
        m_limit.NoteValue();
        m_key.swap(key);
        return true;
    }
    bool start_object(std::size_t /*size*/) { return Open(PlaceOfObject()); }
    bool start_array(std::size_t /*size*/) { return Open(PlaceOfList()); }
    bool end_object() { return Close(); }
    bool end_array() { return Close(); }
    bool parse_error(std::size_t position, const std::string& /*token*/, const CJson::exception& error) {
        if (m_limit.IsExceeded())
            return Fail(fmt::format("found a value of more than {} bytes, expected a shorter one (is a quotation mark "
                                    "left open?)",
                                    m_limit.GetLongest()));
        const std::string what = Clean(error.what());
        // Faults of the text contain line and column already; a number out of range does not.
        const std::string place = what.starts_with("parse error") ? "" : fmt::format("byte {}: ", position);
        return Fail(fmt::format("found no valid JSON: {}{}", place, what));
    }

    Status GetStatus() const {
        if (m_error)
            return *m_error;
        return Done();
    }

private:
    bool Fail(std::string_view text) {
        if (m_error)
            return false;
        if (m_isInFeatures && m_featureCount > 0)
            m_error = BadInput(fmt::format("{}: feature {}: {}", m_name, m_featureCount, text));
        else
            m_error = BadInput(fmt::format("{}: {}", m_name, text));
        return false;
    }

    bool Pass(const Status& status) {
        if (!status)
            m_error = status.GetError();
        return !m_error;
    }

    bool TakeNumber(enmJsonKind kind, double number) {
        m_limit.NoteValue();
        // First, because most numbers of a file are coordinates.
        if (kind == enmJsonKind::Number && !m_places.empty() && m_places.back() == enmPlace::Coordinates) {
            m_feature.GetGeometry().AddNumber(number);
            return true;
        }
        return TakeScalar({kind, number, {}});
    }

    bool TakeScalar(CJsonValue value);
    bool TakeCollectionMember(const CJsonValue& value);
    bool TakeGeometryMember(const CJsonValue& value);
    void TakeFeatureMember(const CJsonValue& value);
    bool TakeCrs(const CJsonValue& value);

    /// The place of a list or object that opens now; notes an error where it is not allowed. Nothing after an error.
    std::optional<enmPlace> PlaceOfObject();
    std::optional<enmPlace> PlaceOfList();
    std::optional<enmPlace> PlaceIn(enmJsonKind kind);
    std::optional<enmPlace> PlaceInCollection(enmJsonKind kind);
    enmPlace PlaceInFeature(enmJsonKind kind);
    bool Open(std::optional<enmPlace> place);
    bool Close();

    std::string m_name;
    IExchangeSink& m_sink;
    CValueLimit& m_limit;
    std::vector<enmPlace> m_places;
    std::string m_key; ///< of the member that is read now
    CExchangeFeature m_feature;
    std::size_t m_featureCount = 0;
    std::size_t m_featureBytes = 0; ///< of the keys and texts of the present feature
    bool m_isInFeatures = false;
    bool m_hasType = false;
    bool m_hasFeatures = false;
    bool m_hasCrsName = false;
    bool m_isFeatureTyped = false;
    bool m_hasProperties = false;
    std::optional<Error> m_error;
};

bool CExchangeHandler::TakeScalar(CJsonValue value) {
    m_limit.NoteValue();
    m_featureBytes += value.m_text.size() + m_key.size();
    if (m_isInFeatures && m_featureBytes > CExchangeFeature::LongestTexts)
        return Fail(fmt::format("found texts of more than {} bytes, expected fewer", CExchangeFeature::LongestTexts));
    if (m_places.empty())
        return Fail(fmt::format("found {}, expected an object of the type FeatureCollection", value.Describe()));
    switch (m_places.back()) {
    case enmPlace::Collection:
        return TakeCollectionMember(value);
    case enmPlace::CrsProperties:
        if (m_key != "name")
            return true;
        m_hasCrsName = true;
        return TakeCrs(value);
    case enmPlace::Features:
        ++m_featureCount;
        return Fail(fmt::format("found {}, expected an object of the type Feature", value.Describe()));
    case enmPlace::Feature:
        TakeFeatureMember(value);
        return true;
    case enmPlace::Properties:
        if (value.m_text.find('\0') != std::string::npos)
            m_feature.SetFault(fmt::format("{}: found a text with a character of code 0, expected none", m_key));
        m_feature.AddProperty(m_key).m_value = std::move(value);
        return true;
    case enmPlace::PropertyList:
    case enmPlace::PropertyObject: {
        auto& items = m_feature.GetLastProperty().m_items;
        if (items.size() < CExchangeFeature::MostProperties)
            items.push_back({m_key, std::move(value)});
        else
            m_feature.SetFault(fmt::format("found a list of more than {} values, expected fewer", items.size()));
        return true;
    }
    case enmPlace::Geometry:
        return TakeGeometryMember(value);
    case enmPlace::Coordinates:
        m_feature.GetGeometry().SetFault(
            fmt::format("found {} among the coordinates, expected numbers", value.Describe()));
        return true;
    case enmPlace::Crs:
    case enmPlace::Skipped:
        return true;
    }
    return true;
}

bool CExchangeHandler::TakeCollectionMember(const CJsonValue& value) {
    if (m_key == "type") {
        m_hasType = true;
        return value.m_text == "FeatureCollection" ||
               Fail(fmt::format("found {} as its type, expected \"FeatureCollection\"", value.Describe()));
    }
    if (m_key == "features")
        return Fail(fmt::format("found {} as its features, expected a list", value.Describe()));
    if (m_key == "crs" && value.m_kind != enmJsonKind::Null)
        return TakeCrs(value);
    if ((m_key == PipeCatalogMember || m_key == ManholeCatalogMember) && value.m_kind == enmJsonKind::Text)
        return Pass(m_sink.TakeCatalog(m_key == PipeCatalogMember ? enmCatalogTable::Pipe : enmCatalogTable::Manhole,
                                       value.m_text));
    return true;
}

bool CExchangeHandler::TakeCrs(const CJsonValue& value) {
    if (value.m_kind != enmJsonKind::Text)
        return Fail(fmt::format("crs: found {}, expected a name such as \"EPSG:3765\"", value.Describe()));
    return Pass(m_sink.TakeCrs(value.m_text));
}

void CExchangeHandler::TakeFeatureMember(const CJsonValue& value) {
    if (m_key == "type") {
        m_isFeatureTyped = value.m_text == "Feature";
        if (!m_isFeatureTyped)
            m_feature.SetFault(fmt::format("found {} as its type, expected \"Feature\"", value.Describe()));
    } else if (m_key == "properties") {
        m_feature.SetFault(fmt::format("found {} as its properties, expected an object", value.Describe()));
    } else if (m_key == "geometry" && value.m_kind != enmJsonKind::Null) {
        m_feature.SetFault(fmt::format("found {} as its geometry, expected an object or null", value.Describe()));
    }
}

bool CExchangeHandler::TakeGeometryMember(const CJsonValue& value) {
    CExchangeGeometry& geometry = m_feature.GetGeometry();
    if (m_key == "type" && value.m_kind == enmJsonKind::Text)
        geometry.SetType(value.m_text);
    else if (m_key == "coordinates")
        geometry.SetFault(fmt::format("found {} as coordinates, expected a list", value.Describe()));
    return true;
}

std::optional<enmPlace> CExchangeHandler::PlaceOfObject() {
    return PlaceIn(enmJsonKind::Object);
}

std::optional<enmPlace> CExchangeHandler::PlaceOfList() {
    return PlaceIn(enmJsonKind::List);
}

std::optional<enmPlace> CExchangeHandler::PlaceIn(enmJsonKind kind) {
    const bool isObject = kind == enmJsonKind::Object;
    if (m_places.empty()) {
        if (isObject)
            return enmPlace::Collection;
        Fail("found a list, expected an object of the type FeatureCollection");
        return std::nullopt;
    }
    switch (m_places.back()) {
    case enmPlace::Collection:
        return PlaceInCollection(kind);
    case enmPlace::Crs:
        return isObject && m_key == "properties" ? enmPlace::CrsProperties : enmPlace::Skipped;
    case enmPlace::Features:
        m_feature.Begin(++m_featureCount);
        m_featureBytes = 0;
        m_isFeatureTyped = m_hasProperties = false;
        if (isObject)
            return enmPlace::Feature;
        Fail("found a list, expected an object of the type Feature");
        return std::nullopt;
    case enmPlace::Feature:
        return PlaceInFeature(kind);
    case enmPlace::Properties:
        m_feature.AddProperty(m_key).m_value = {kind, 0.0, {}};
        return isObject ? enmPlace::PropertyObject : enmPlace::PropertyList;
    case enmPlace::PropertyList:
    case enmPlace::PropertyObject:
        TakeScalar({kind, 0.0, {}});
        return enmPlace::Skipped;
    case enmPlace::Geometry:
        if (m_key == "coordinates" && !isObject) {
            m_feature.GetGeometry().OpenList();
            return enmPlace::Coordinates;
        }
        TakeGeometryMember({kind, 0.0, {}});
        return enmPlace::Skipped;
    case enmPlace::Coordinates:
        if (!isObject) {
            m_feature.GetGeometry().OpenList();
            return enmPlace::Coordinates;
        }
        TakeScalar({kind, 0.0, {}});
        return enmPlace::Skipped;
    case enmPlace::CrsProperties:
    case enmPlace::Skipped:
        break;
    }
    return enmPlace::Skipped;
}

std::optional<enmPlace> CExchangeHandler::PlaceInCollection(enmJsonKind kind) {
    if (m_key == "crs" && kind == enmJsonKind::Object)
        return enmPlace::Crs;
    if (m_key != "features" || (kind == enmJsonKind::List && !m_hasFeatures)) {
        m_isInFeatures = m_key == "features";
        m_limit.SetLongest(m_isInFeatures ? LongestValue : LongestMember);
        m_hasFeatures = m_hasFeatures || m_isInFeatures;
        return m_isInFeatures ? enmPlace::Features : enmPlace::Skipped;
    }
    Fail(m_hasFeatures ? "found a second list of features, expected one"
                       : "found an object as its features, expected a list");
    return std::nullopt;
}

enmPlace CExchangeHandler::PlaceInFeature(enmJsonKind kind) {
    const bool isObject = kind == enmJsonKind::Object;
    if (m_key == "properties" && isObject && !m_hasProperties) {
        m_hasProperties = true;
        return enmPlace::Properties;
    }
    if (m_key == "geometry" && isObject && !m_feature.GetGeometry().IsGiven()) {
        m_feature.GetGeometry().SetGiven();
        return enmPlace::Geometry;
    }
    if (m_key == "properties" || m_key == "geometry" || m_key == "type")
        m_feature.SetFault(fmt::format("found {} twice or as a list, expected it once, as an object", m_key));
    return enmPlace::Skipped;
}

bool CExchangeHandler::Open(std::optional<enmPlace> place) {
    m_limit.NoteValue();
    if (!place)
        return false;
    if (m_places.size() == MostExchangeDepth)
        return Fail(fmt::format("found lists and objects nested more than {} deep, expected fewer", MostExchangeDepth));
    m_places.push_back(*place);
    return true;
}

bool CExchangeHandler::Close() {
    const enmPlace place = m_places.back();
    m_places.pop_back();
    if (place == enmPlace::Coordinates)
        m_feature.GetGeometry().CloseList();
    if (place == enmPlace::Features) {
        m_isInFeatures = false;
        m_limit.SetLongest(LongestMember);
    }
    if (place == enmPlace::Crs && !m_hasCrsName)
        return Fail("crs: found no name, expected one such as \"EPSG:3765\"");
    if (place == enmPlace::Collection && !m_hasType)
        return Fail("found an object without a type, expected the type FeatureCollection");
    if (place == enmPlace::Collection && !m_hasFeatures)
        return Fail("found no list of features, expected one");
    if (place != enmPlace::Feature)
        return true;
    if (!m_isFeatureTyped)
        m_feature.SetFault("found no type, expected \"Feature\"");
    if (!m_hasProperties)
        m_feature.SetFault("found no properties, expected some");
    return Pass(m_sink.TakeFeature(m_feature));
}

} // namespace

Status ParseExchange(std::istream& stream, const std::string& name, IExchangeSink& sink) {
    try {
        if (stream.peek() == std::istream::traits_type::eof())
            return stream.bad() ? Utility::Refused(name + ": cannot be read")
                                : BadInput(name + ": the file is empty, expected a GeoJSON FeatureCollection");
        CValueLimit limit(*stream.rdbuf(), LongestMember);
        std::istream limited(&limit);
        CExchangeHandler handler(name, sink, limit);
        nlohmann::json::sax_parse(limited, &handler);
        return handler.GetStatus();
    } catch (const std::exception& error) {
        return ReadError(name, error);
    }
}

} // namespace OLMGis::ProjectIo
