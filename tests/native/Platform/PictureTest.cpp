#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <vector>

#include <pelta/Platform/Bundle.h>
#include <pelta/headless/HeadlessPort.h>

namespace pelta {
namespace {

/// A PNG of 2 × 1 pixels, red and half-transparent green.
std::vector<std::uint8_t> smallPng() {
    return {0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 0x49, 0x48, 0x44,
            0x52, 0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x01, 0x08, 0x06, 0x00, 0x00, 0x00, 0xF4,
            0x22, 0x7F, 0x8A, 0x00, 0x00, 0x00, 0x0F, 0x49, 0x44, 0x41, 0x54, 0x78, 0xDA, 0x63, 0xF8,
            0xCF, 0xC0, 0xF0, 0x1F, 0x08, 0x1B, 0x00, 0x10, 0x79, 0x03, 0x7E, 0xC4, 0x18, 0x72, 0x90,
            0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82};
}

class PictureTest : public ::testing::Test {
 protected:
    HeadlessPort port_{2};
};

TEST_F(PictureTest, ReadsPngAndNothingElse) {
    const auto png = smallPng();
    const UIImage image = UIImage::fromEncoded(png, 2).value();
    EXPECT_EQ(image.size(), (CGSize{1, 0.5}));
    const std::vector<std::uint8_t> pixels(image.pixels().begin(), image.pixels().end());
    EXPECT_EQ(pixels, (std::vector<std::uint8_t>{255, 0, 0, 255, 0, 255, 0, 128}));

    EXPECT_FALSE(UIImage::fromEncoded(png, 0));
    EXPECT_FALSE(UIImage::fromEncoded({}, 1));
    // Cut anywhere before the end of its pixels, it is no picture.
    for (std::size_t length = 1; length < png.size() - 16; ++length) {
        EXPECT_FALSE(UIImage::fromEncoded(std::span(png).first(length), 1)) << length;
    }
    for (std::size_t index = 0; index < png.size(); ++index) {
        for (const int bit : {1, 64, 128}) {
            auto damaged = png;
            damaged[index] = static_cast<std::uint8_t>(damaged[index] ^ bit);
            const auto result = UIImage::fromEncoded(damaged, 1);  // Must not crash, whatever it answers.
            EXPECT_TRUE(!result || result->pixelWidth() > 0);
        }
    }
    auto huge = png;
    huge[18] = 0x7F;  // 32514 pixels wide.
    EXPECT_FALSE(UIImage::fromEncoded(huge, 1));
    const std::string gif = "GIF89a, which is another kind of picture";
    EXPECT_FALSE(UIImage::fromEncoded(std::vector<std::uint8_t>(gif.begin(), gif.end()), 1));
}

TEST_F(PictureTest, BundlesGiveTheVersionForTheScreen) {
    const auto folder = std::filesystem::path(::testing::TempDir()) / "pelta-pictures";
    std::filesystem::create_directories(folder);
    const auto png = smallPng();
    const auto write = [&](const char* name, std::size_t length) {
        std::ofstream(folder / name, std::ios::binary)
            .write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(length));
    };
    write("dot.png", png.size());
    write("dot@3x.png", png.size());
    write("broken.png", 20);
    port_.setResourceFolder(folder);
    struct Case {
        double screenScale;
        double libraryVersion;  ///< Of 1, 2 and 3.
        double folderVersion;   ///< Of 1 and 3.
    };
    for (const Case& c :
         {Case{0.5, 1, 1}, Case{1, 1, 1}, Case{1.5, 2, 3}, Case{2, 2, 3}, Case{3, 3, 3}, Case{4, 3, 3}}) {
        port_.setScreenScale(c.screenScale);
        const UIImage own = Bundle::library().imageNamed("peltamap_default_marker_icon_red").value();
        EXPECT_EQ(own.scale(), c.libraryVersion) << c.screenScale;
        EXPECT_EQ(own.pixelWidth(), own.size().width * c.libraryVersion);
        EXPECT_EQ(Bundle::main().imageNamed("dot").value().scale(), c.folderVersion) << c.screenScale;
    }
    for (const char* missing : {"none", "", "broken", "peltamap_", "../dot"}) {
        EXPECT_FALSE(Bundle::main().imageNamed(missing)) << missing;
        EXPECT_FALSE(Bundle::library().imageNamed(missing)) << missing;
    }
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace pelta
