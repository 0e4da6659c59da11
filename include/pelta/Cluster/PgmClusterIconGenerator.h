#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include <pelta/Annotations/PgmImage.h>
#include <pelta/Platform/UIColor.h>
#include <pelta/Platform/UIImage.h>

/// @file
/// The icons of clusters.

namespace pelta {

/// Makes the icon of a cluster of many items. Main thread only.
class PgmClusterIconGenerator {
 public:
    virtual ~PgmClusterIconGenerator() = default;

    /// The icon for a number of items. The map keeps every different image that it has shown, so answer the
    /// same image for the same number.
    /// @return null stands for `PgmImage::markerImageRed()`.
    [[nodiscard]] virtual std::shared_ptr<PgmImage> iconForCount(std::int64_t count) = 0;
};

/// The five colours of the buckets, opaque: blue, green, orange, red, violet.
[[nodiscard]] std::span<const UIColor> kPgmCriteriaBackgroundColors() noexcept;

/// Writes the number in white on a round badge, or on pictures of the application's own.
///
/// Counts fall into buckets, each with its own colour or picture. The criteria are the lowest counts of the
/// buckets: bucket i takes counts below criterion i + 1, so the first criterion separates nothing, and the
/// last bucket takes all others. With the defaults these are 2 to 49, to 99, to 199, to 499, and 500 or more.
/// There are never more buckets than colours (or pictures), nor than criteria. A badge is 20 points plus 3
/// for each bucket wider than its number.
///
/// An icon is drawn at the screen's scale when its count is first asked for and kept as long as the
/// generator. Main thread only.
class PgmDefaultClusterIconGenerator final : public PgmClusterIconGenerator {
 public:
    /// Ascending counts above 0.
    using Criteria = std::vector<std::uint64_t>;

    /// Criteria 10, 50, 100, 200, 500 and `kPgmCriteriaBackgroundColors()`.
    [[nodiscard]] static std::shared_ptr<PgmDefaultClusterIconGenerator> create();
    /// Badges of these colours.
    ///
    /// @param colors    of the buckets; an empty list stands for `kPgmCriteriaBackgroundColors()`.
    /// @param criteria  an empty list, one that does not ascend or that holds a 0 is a programming error that
    ///                  stops the process.
    [[nodiscard]] static std::shared_ptr<PgmDefaultClusterIconGenerator> createWithColors(
        std::vector<UIColor> colors, Criteria criteria);
    /// Numbers on these pictures, each icon as large as its picture.
    ///
    /// @param images    of the buckets; an empty list stands for badges in the default colours.
    /// @param criteria  as for `createWithColors`.
    [[nodiscard]] static std::shared_ptr<PgmDefaultClusterIconGenerator> createWithImages(
        std::vector<UIImage> images, Criteria criteria);
    /// For the factories.
    explicit PgmDefaultClusterIconGenerator(Criteria criteria);

    /// Lowest counts of the buckets; the first one separates nothing.
    [[nodiscard]] const Criteria& criteria() const noexcept { return criteria_; }
    /// Colours of the buckets; not used where there are pictures.
    [[nodiscard]] const std::vector<UIColor>& backgroundColors() const noexcept { return backgroundColors_; }
    /// Pictures of the buckets; absent where badges are drawn.
    [[nodiscard]] const std::optional<std::vector<UIImage>>& backgroundImages() const noexcept {
        return backgroundImages_;
    }

    /// The same image for the same count. A negative count is a programming error that stops the process. A
    /// picture too large to be drawn at the screen's scale gives `PgmImage::markerImageRed()`.
    [[nodiscard]] std::shared_ptr<PgmImage> iconForCount(std::int64_t count) override;

 private:
    [[nodiscard]] std::size_t indexForCount(std::uint64_t count) const;
    [[nodiscard]] std::optional<UIImage> draw(std::uint64_t count) const;

    std::unordered_map<std::int64_t, std::shared_ptr<PgmImage>> iconCache_;
    Criteria criteria_;
    std::vector<UIColor> backgroundColors_;
    std::optional<std::vector<UIImage>> backgroundImages_;
};

}  // namespace pelta
