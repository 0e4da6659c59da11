#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/FeatureBuilder.h"
#include "data/JsonReader.h"
#include "data/MapData.h"

namespace pelta::viewer {

/// Turns what is read of a JSON text into features.
///
/// A stack of at most 128 frames says what each open object or array is. What lies deeper than that rules out
/// the feature that it belongs to and is counted only, so that the features after it are still read.
class GeoJsonEvents final : public JsonHandler {
 public:
    /// What is said of a feature that has more levels than there are frames.
    static constexpr const char* tooDeep = "it is nested deeper than 128 levels";

    explicit GeoJsonEvents(MapData& data) : data_(data), feature_(data) {}

    bool startObject() override;
    bool endObject() override;
    bool startArray() override;
    bool endArray() override;
    bool key(std::string_view name) override;
    bool scalar(const ScalarValue& value) override;
    void textIsNotUtf8(std::size_t position) override;

    /// The feature that is being read, if the text has got into one.
    [[nodiscard]] std::optional<std::size_t> openFeature() const;
    /// True while what is being read lies deeper than it may.
    [[nodiscard]] bool isTooDeep() const { return levelsBeyond_ > 0; }
    /// Where a text is not UTF-8 that belongs to no feature, but to the collection.
    [[nodiscard]] std::optional<std::size_t> textFault() const { return textFault_; }

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

    void member(Frame& frame, const ScalarValue& value);
    bool push(Role role);
    [[nodiscard]] Role objectRole(Frame& parent);
    [[nodiscard]] Role arrayRole(Frame& parent);
    void beginFeature();
    void finishFeature(const Frame& frame);
    void finishGeometry(const Frame& frame);
    void finishDocument(const Frame& frame);
    bool refuseDocument(const std::string& reason);

    MapData& data_;
    FeatureBuilder feature_;
    std::vector<Frame> frames_;
    std::size_t levelsBeyond_ = 0;  ///< Open objects and arrays that have no frame.
    std::size_t featureIndex_ = 0;  ///< Of the next feature.
    std::string key_;
    std::optional<std::size_t> textFault_;
};

}  // namespace pelta::viewer
