#include <regex>

#include "View/MapFixture.h"

namespace pelta {
namespace {

class ImageTest : public MapFixture {
 protected:
    static UIImage picture() { return *UIImage::fromPixels(2, 1, 1, {1, 2, 3, 4, 5, 6, 7, 8}); }
};

/// A bundle with one picture.
struct OnePictureBundle : Bundle {
    explicit OnePictureBundle(UIImage image) : image(std::move(image)) {}
    std::optional<UIImage> imageNamed(std::string_view name) const override {
        return name == "pin" ? std::optional(image) : std::nullopt;
    }
    UIImage image;
};

TEST_F(ImageTest, NamesComeFromTheCallerOrFromACounter) {
    (void)PgmMarker::create();  // Whose built-in image takes a number when it is the first.
    const auto first = PgmImage::imageWith(picture());
    (void)PgmImage::imageWith(picture(), "own");
    (void)PgmMarker::create();
    const auto second = PgmImage::imageWith(picture());
    const auto numberOf = [](const PgmImage& image) {
        EXPECT_EQ(image.reuseIdentifier().substr(0, 2), "I:");
        return std::stoul(image.reuseIdentifier().substr(2));
    };
    EXPECT_EQ(numberOf(*second), numberOf(*first) + 1);
    EXPECT_EQ(PgmImage::imageWith(picture(), "own")->reuseIdentifier(), "own");
    EXPECT_EQ(first->image().pixelWidth(), 2);
    EXPECT_TRUE(first->isEnabled());
    EXPECT_EQ(first->styleIconIdentifier(), std::nullopt);
}

TEST_F(ImageTest, EveryWriteOfIsEnabledIsTold) {
    struct Counter : PgmImageDelegate {
        void annotationImageNeedsRedisplay(PgmImage& image) override { told.push_back(image.isEnabled()); }
        std::vector<bool> told;
    };
    const auto image = PgmImage::imageWith(picture());
    auto counter = std::make_shared<Counter>();
    image->setDelegate(counter);
    image->setIsEnabled(true);
    image->setIsEnabled(false);
    EXPECT_EQ(counter->told, (std::vector{true, false}));
    counter.reset();
    image->setIsEnabled(true);
    EXPECT_TRUE(image->isEnabled());
    EXPECT_EQ(image->delegate(), nullptr);
}

}  // namespace
}  // namespace pelta
