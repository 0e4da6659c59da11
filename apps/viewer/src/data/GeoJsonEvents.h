#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/FeatureBuilder.h"
#include "data/MapData.h"

namespace pelta::viewer {

/// Turns the parsing events of a JSON text into features.
///
/// A stack of at most 128 frames says what each open object or array is. What lies deeper than that rules out
/// the feature that it belongs to and is counted only, so that the features after it are still read.
class GeoJsonEvents final : public nlohmann::json_sax<nlohmann::json> {
 public:
    explicit GeoJsonEvents(MapData& data) : data_(data), feature_(data) {}

    bool null() override { return scalar({}); }
    bool boolean(bool) override { return scalar({ScalarValue::Kind::boolean, 0, {}}); }
    bool number_integer(std::int64_t value) override { return number(static_cast<double>(value)); }
    bool number_unsigned(std::uint64_t value) override { return number(static_cast<double>(value)); }
    bool number_float(double value, const std::string&) override { return number(value); }
    bool string(std::string& value) override { return scalar({ScalarValue::Kind::text, 0, value}); }
    bool binary(nlohmann::json::binary_t&) override { return false; }
    bool start_object(std::size_t) override;
    bool key(std::string& name) override;
    bool end_object() override;
    bool start_array(std::size_t) override;
    bool end_array() override;
    bool parse_error(std::size_t position, const std::string& token,
                     const nlohmann::detail::exception& error) override;

    /// Where the text stopped being JSON, if it did.
    struct SyntaxFault {
        std::size_t position = 0;            ///< Bytes read.
        std::string reason;                  ///< As the parser gives it.
        std::optional<std::size_t> feature;  ///< The feature that was being read.
    };
    [[nodiscard]] const std::optional<SyntaxFault>& syntaxFault() const { return syntaxFault_; }

 private:
    /// What an open object or array is.
    enum class Role : std::uint8_t {
        document,
        features,
        feature,
        geometry,
        geometries,
        coordinates,
        properties,
        skipped
    };
    struct Frame {
        Role role = Role::skipped;
        std::string type;  ///< Of a document, feature or geometry, once read.
        bool hasFeatures = false;
        bool hasGeometry = false;
        bool hasGeometries = false;
        bool hasCoordinates = false;
    };

    bool number(double value) { return scalar({ScalarValue::Kind::number, value, {}}); }
    bool scalar(const ScalarValue& value);
    void member(Frame& frame, const ScalarValue& value);
    bool push(Role role);
    [[nodiscard]] Role objectRole(Frame& parent);
    [[nodiscard]] Role arrayRole(Frame& parent);
    void beginFeature();
    void finishFeature(const Frame& frame);
    void finishGeometry(const Frame& frame);
    void finishDocument(const Frame& frame);
    bool refuseDocument(const std::string& reason);
    [[nodiscard]] std::optional<std::size_t> openFeature() const;

    MapData& data_;
    FeatureBuilder feature_;
    std::vector<Frame> frames_;
    std::size_t levelsBeyond_ = 0;  ///< Open objects and arrays that have no frame.
    std::size_t featureIndex_ = 0;  ///< Of the next feature.
    std::string key_;
    std::optional<SyntaxFault> syntaxFault_;
};

}  // namespace pelta::viewer
