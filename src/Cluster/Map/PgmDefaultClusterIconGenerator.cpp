#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

#include <pelta/Cluster/PgmClusterIconGenerator.h>
#include <pelta/Platform/Log.h>
#include <pelta/Platform/UIGraphics.h>

namespace pelta {

namespace {

// Points.
constexpr double fontSize = 16;
constexpr double smallestText = 20;
constexpr double badgeMargin = 20;
constexpr double badgeGrowth = 3;  // For each bucket.

/// The number of a cluster as it is written.
struct CountText {
    explicit CountText(std::uint64_t count)
        : text(std::to_string(count)),
          attributes{UIFont::boldSystemFont(fontSize), UIColor::white(), NSTextAlignment::center},
          size(sizeOfText(text, attributes.font)) {}

    /// Draws the text in the middle of a canvas, on whole points.
    void draw(GraphicsContext& context, CGSize canvas) const {
        const CGRect middle =
            CGRect{{}, canvas}.insetBy((canvas.width - size.width) / 2, (canvas.height - size.height) / 2);
        const CGPoint topLeft{std::floor(middle.minX()), std::floor(middle.minY())};
        const CGSize room{std::ceil(middle.maxX()) - topLeft.x, std::ceil(middle.maxY()) - topLeft.y};
        context.drawText(text, {topLeft, room}, attributes);
    }

    std::string text;
    NSTextAttributes attributes;
    CGSize size;
};

std::optional<UIImage> drawBadge(const CountText& text, std::size_t bucket, UIColor color) {
    const double diameter = std::max({text.size.width, text.size.height, smallestText}) +
                            static_cast<double>(bucket) * badgeGrowth + badgeMargin;
    const CGSize canvas{diameter, diameter};
    return UIGraphicsImageRenderer(canvas).image([&](GraphicsContext& context) {
        context.fillOval({{}, canvas}, color);
        text.draw(context, canvas);
    });
}

std::optional<UIImage> drawOnPicture(const CountText& text, const UIImage& picture) {
    const CGSize canvas = picture.size();
    return UIGraphicsImageRenderer(canvas).image([&](GraphicsContext& context) {
        context.drawImage(picture, {{}, canvas});
        text.draw(context, canvas);
    });
}

}  // namespace

std::span<const UIColor> kPgmCriteriaBackgroundColors() noexcept {
    static constexpr std::array<UIColor, 5> colors{{{0.0, 0.6, 0.8, 1.0},
                                                    {0.4, 0.6, 0.0, 1.0},
                                                    {1.0, 0.5333333333333333, 0.0, 1.0},
                                                    {0.8, 0.0, 0.0, 1.0},
                                                    {0.6, 0.2, 0.8, 1.0}}};
    return colors;
}

std::shared_ptr<PgmDefaultClusterIconGenerator> PgmDefaultClusterIconGenerator::create() {
    return std::make_shared<PgmDefaultClusterIconGenerator>(Criteria{10, 50, 100, 200, 500});
}

std::shared_ptr<PgmDefaultClusterIconGenerator> PgmDefaultClusterIconGenerator::createWithColors(
    std::vector<UIColor> colors, Criteria criteria) {
    auto generator = std::make_shared<PgmDefaultClusterIconGenerator>(std::move(criteria));
    if (!colors.empty()) {
        generator->backgroundColors_ = std::move(colors);
    }
    return generator;
}

std::shared_ptr<PgmDefaultClusterIconGenerator> PgmDefaultClusterIconGenerator::createWithImages(
    std::vector<UIImage> images, Criteria criteria) {
    auto generator = std::make_shared<PgmDefaultClusterIconGenerator>(std::move(criteria));
    if (!images.empty()) {
        generator->backgroundImages_ = std::move(images);
    }
    return generator;
}

PgmDefaultClusterIconGenerator::PgmDefaultClusterIconGenerator(Criteria criteria)
    : criteria_(std::move(criteria)),
      backgroundColors_(kPgmCriteriaBackgroundColors().begin(), kPgmCriteriaBackgroundColors().end()) {
    if (criteria_.empty() || !std::is_sorted(criteria_.begin(), criteria_.end()) || criteria_.front() == 0) {
        fatalError("icon criteria must be ascending numbers above 0, at least one");
    }
}

std::size_t PgmDefaultClusterIconGenerator::indexForCount(std::uint64_t count) const {
    const std::size_t last = (backgroundImages_ ? backgroundImages_->size() : backgroundColors_.size()) - 1;
    std::size_t index = 0;
    while (index < last && index + 1 < criteria_.size() && criteria_[index + 1] <= count) {
        ++index;
    }
    return index;
}

std::optional<UIImage> PgmDefaultClusterIconGenerator::draw(std::uint64_t count) const {
    const CountText text(count);
    const std::size_t bucket = indexForCount(count);
    return backgroundImages_ ? drawOnPicture(text, (*backgroundImages_)[bucket])
                             : drawBadge(text, bucket, backgroundColors_[bucket]);
}

std::shared_ptr<PgmImage> PgmDefaultClusterIconGenerator::iconForCount(std::int64_t count) {
    if (const auto cached = iconCache_.find(count); cached != iconCache_.end()) {
        return cached->second;
    }
    if (count < 0) {
        fatalError("a cluster cannot have " + std::to_string(count) + " items");
    }
    auto picture = draw(static_cast<std::uint64_t>(count));
    auto icon = picture ? PgmImage::imageWith(*std::move(picture)) : PgmImage::markerImageRed();
    iconCache_.emplace(count, icon);
    return icon;
}

}  // namespace pelta
